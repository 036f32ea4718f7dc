// Looking at a repository of 100,000 commits, against git alone doing the same.
#include "bench/Rounds.h"
#include "git/GitDiff.h"
#include "git/GitStatusReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <malloc.h>

#include <cstdio>

namespace
{

using namespace Vesk;

constexpr int commitCount = 100'000;
constexpr int fileCount = 2000;
constexpr int window = 500;

QString inWorkTree(const QString &folder, const QString &name)
{
    return folder + QStringLiteral("/tree/") + name;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/** A shell's commands in the work tree, where only the settings of this run count. */
int shell(const QString &folder, const QString &script, const QByteArray &input = {})
{
    QProcess process;
    process.setWorkingDirectory(folder + QStringLiteral("/tree"));
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(-1);
    return process.exitCode();
}

void appendCommit(QByteArray &stream, const char *ref, int mark, int from, int merged)
{
    const QByteArray number = QByteArray::number(mark);
    const QByteArray time = QByteArray::number(1'500'000'000 + mark * 60);
    const QByteArray subject = "결제 웹훅: 변경 " + number;
    const QByteArray content = "line one\nline " + number + "\n";
    stream += QByteArray("commit ") + ref + "\nmark :" + number + "\nauthor 김개발 <dev@example.org> " + time
        + " +0900\ncommitter dev <dev@example.org> " + time + " +0900\ndata "
        + QByteArray::number(subject.size()) + '\n' + subject + '\n';
    if (from > 0)
        stream += "from :" + QByteArray::number(from) + '\n';
    if (merged > 0)
        stream += "merge :" + QByteArray::number(merged) + '\n';
    stream += "M 644 inline src/f" + QByteArray::number(mark % fileCount) + ".txt\ndata "
        + QByteArray::number(content.size()) + '\n' + content + '\n';
}

/** A main line, and every twenty commits a branch of five that is merged again. */
QByteArray historyStream()
{
    QByteArray stream;
    int main = 0;
    int side = 0;
    for (int mark = 1; mark <= commitCount; ++mark) {
        const int step = mark % 20;
        const bool isSide = step >= 8 && step < 18 && step % 2 == 0;
        if (isSide) {
            appendCommit(stream, "refs/heads/side", mark, side > 0 ? side : main, 0);
            side = mark;
        } else {
            appendCommit(stream, "refs/heads/main", mark, main, step == 19 ? side : 0);
            main = mark;
            if (step == 19)
                side = 0;
        }
    }
    return stream;
}

bool makeRepository(const QString &folder)
{
    QDir().mkpath(folder + QStringLiteral("/tree"));
    if (shell(folder, QStringLiteral("git init -q -b main && git fast-import --quiet --force"),
              historyStream())
            != 0
        || shell(folder,
                 QStringLiteral("git reset -q --hard && git remote add origin ../none"
                                " && git update-ref refs/remotes/origin/main main~3"
                                " && git branch -q --set-upstream-to=origin/main"))
            != 0)
        return false;
    bool isWritten = true;
    for (int i = 0; i < 30; ++i) {
        isWritten &= write(inWorkTree(folder, QStringLiteral("src/f%1.txt").arg(i)), "changed\n");
        isWritten &= write(inWorkTree(folder, QStringLiteral("new%1.txt").arg(i)), "new\n");
    }
    return isWritten;
}

const QString snapshotCommands = QStringLiteral(R"(
log='--pretty=format:%H%x1f%P%x1f%D%x1f%ct%x00%an%x00%ae%x00%s%x1e'
git rev-parse --show-toplevel >../out1
git rev-parse --abbrev-ref HEAD >../out2
git log --parents -n 501 "$log" >../head.log
git log --exclude=refs/stash '--exclude=refs/notes/*' --all --date-order --parents -n 501 "$log" >../all.log
git status --porcelain=v1 -z >../status
git branch '--format=%(refname:short)' >../out3
git remote >../out4
git rev-parse --abbrev-ref --symbolic-full-name '@{upstream}' >../out5
git rev-list --left-right --count '@{upstream}...HEAD' >../out6
)");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

double millisecondsOf(const std::function<void()> &work)
{
    std::vector<double> times;
    for (int round = 0; round < 7; ++round) {
        const double start = Bench::now();
        work();
        times.push_back((Bench::now() - start) * 1000);
    }
    return Bench::median(times);
}

bool benchSnapshot(const QString &folder, const GitSetting &setting)
{
    bool complete = true;
    const auto snapshot = [&] {
        const auto status = GitStatusReader::read(setting, folder + QStringLiteral("/tree"), window);
        complete &= status && status->rows.size() == window && status->graphRows.size() == window
            && status->changes.size() == 60 && status->ahead > 3 && status->truncated;
    };
    bool met = Bench::compare("snapshot", "the same commands in a shell", 7, 1.1, snapshot,
                              [&] { complete &= shell(folder, snapshotCommands) == 0; });
    const QByteArray head = contentOf(folder + QStringLiteral("/head.log"));
    const QByteArray all = contentOf(folder + QStringLiteral("/all.log"));
    const QByteArray status = contentOf(folder + QStringLiteral("/status"));
    const double whole = millisecondsOf(snapshot);
    const double ours = millisecondsOf([&] {
        complete &= GitStatusReader::history(head, all, window).rows.size() == window;
        complete &= GitWorkingTree::parseStatus(status).size() == 60;
    });
    met &= Bench::report("parsing and lanes, share of a snapshot", ours / whole, "x", 0.05);
    if (!complete)
        std::printf("the snapshot is not the repository's\n");
    return met && complete;
}

bool benchLanes(const QString &folder)
{
    if (shell(folder,
              QStringLiteral("git log --all --date-order --pretty=format:"
                             "'%H%x1f%P%x1f%D%x1f%ct%x00%an%x00%ae%x00%s%x1e' >../whole.log"))
        != 0)
        return false;
    const auto commits = GitStatusReader::parseLog(contentOf(folder + QStringLiteral("/whole.log")));
    qsizetype rows = 0;
    const bool met = Bench::compare(
        "lanes of the whole history", "git log --graph --oneline", 5, 0.1,
        [&] { rows = GitStatusReader::layout(commits).size(); },
        [&] { shell(folder, QStringLiteral("git log --graph --oneline --all >/dev/null")); });
    return met && rows == commitCount;
}

bool benchDiff(const QString &folder)
{
    QByteArray old;
    QByteArray changed;
    for (int line = 0; line < 400'000; ++line) {
        const QByteArray text = "    result += computeSomething(" + QByteArray::number(line) + ");\n";
        old += text;
        changed += line % 4 == 0 ? "    // 바뀐 줄 " + QByteArray::number(line) + "\n" : text;
    }
    if (!write(folder + QStringLiteral("/old"), old) || !write(folder + QStringLiteral("/changed"), changed))
        return false;
    const QString produce = QStringLiteral("git diff --no-index --no-color ../old ../changed >../diff");
    shell(folder, produce);
    const QByteArray text = contentOf(folder + QStringLiteral("/diff"));
    int added = 0;
    std::printf("%lld bytes of diff\n", static_cast<long long>(text.size()));
    const bool met = Bench::compare(
        "parsing a diff, every line kept", "git diff", 5, 1.0,
        [&] { added = GitDiff::parse(text, text.size()).added; }, [&] { shell(folder, produce); });
    return met && added == 100'000;
}

/** Mebibytes by which the most memory ever used grows meanwhile. */
double growth(const std::function<void()> &work)
{
    const auto field = [](const char *name) {
        for (const QByteArray &line : contentOf(QStringLiteral("/proc/self/status")).split('\n')) {
            if (line.startsWith(name))
                return line.mid(static_cast<qsizetype>(qstrlen(name)))
                           .simplified()
                           .split(' ')
                           .first()
                           .toDouble()
                    / 1024;
        }
        return 0.0;
    };
    malloc_trim(0); // what was freed before must not hide what is used now
    write(QStringLiteral("/proc/self/clear_refs"), "5"); // the peak starts anew
    const double before = field("VmRSS:");
    work();
    return field("VmHWM:") - before;
}

bool benchMemory(const QString &folder, const GitSetting &setting)
{
    const QString root = folder + QStringLiteral("/tree");
    bool complete = true;
    QByteArray large;
    for (int line = 0; line < 2'500'000; ++line)
        large += "line " + QByteArray::number(line) + " of a file that is large\n";
    complete &= write(inWorkTree(folder, QStringLiteral("large.txt")), large);
    const auto largeSize = large.size();
    large = {};
    QFile sparse(inWorkTree(folder, QStringLiteral("sparse")));
    complete &= sparse.open(QIODevice::WriteOnly) && sparse.resize(qint64 {2} << 30);
    sparse.close();

    const GitWorkingTree::Change untracked {
        .path = QStringLiteral("large.txt"), .index = u'?', .worktree = u'?'};
    GitWorkingTree::Change hole = untracked;
    hole.path = QStringLiteral("sparse");
    bool met = Bench::report("a diff of 100 MB, memory", growth([&] {
                                 const auto diff = GitDiff::read(setting, untracked, root);
                                 complete &= diff.totalBytes > largeSize
                                     && diff.content.lines.size() == GitDiff::maxLines;
                             }),
                             "MiB", 4);
    met &= Bench::report("a sparse file of 2 GB, memory", growth([&] {
                             complete &= GitDiff::read(setting, hole, root).content.kind
                                 == GitDiff::Content::Kind::Binary;
                         }),
                         "MiB", 1);

    complete &=
        shell(folder,
              QStringLiteral("rm sparse large.txt; mkdir many; cd many; i=0; while [ $i -lt 50000 ]; do :"
                             " >a-file-with-some-name-$i; i=$((i+1)); done; git add -N ."))
        == 0;
    met &= Bench::report("50,000 changed files, memory", growth([&] {
                             const auto status = GitStatusReader::read(setting, root, window);
                             complete &= status && status->changes.size() > 50'000;
                         }),
                         "MiB", 40);
    if (!complete)
        std::printf("not everything was read\n");
    return met && complete;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    for (const auto &[name, value] :
         QList<QPair<const char *, QByteArray>> {{"HOME", QFile::encodeName(folder.path())},
                                                 {"GIT_CONFIG_GLOBAL", "/dev/null"},
                                                 {"GIT_CONFIG_NOSYSTEM", "1"},
                                                 {"GIT_OPTIONAL_LOCKS", "0"}})
        qputenv(name, value);
    const GitSetting setting = GitSetting::ofCaller().located();
    if (setting.git.isEmpty() || !makeRepository(folder.path())) {
        std::printf("cannot make the repository\n");
        return 1;
    }
    bool met = benchSnapshot(folder.path(), setting);
    met &= benchLanes(folder.path());
    met &= benchDiff(folder.path());
    met &= benchMemory(folder.path(), setting);
    return met ? 0 : 1;
}
