// Repositories that came from elsewhere and name programs wherever git would run one. Each trap is shown to
// be live with plain git, after the guarded calls have left it alone.
#include "git/GitCommitChanges.h"
#include "git/GitDiff.h"
#include "git/GitStatusReader.h"
#include "Repository.h"
#include "support/TestRegistry.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QtTest>

#include <sys/stat.h>

#include <functional>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;

namespace
{

/** A repository, and a program that leaves a mark when it is run. */
struct Trap {
    Repository repository;
    QString marker = repository.folder() + u"/ran"_s;
    QString program = repository.folder() + u"/program"_s;

    Trap()
    {
        writeScript(program, ": > '" + QFile::encodeName(marker) + "'\nexit 1");
        repository.write(u"a.txt"_s, "one\n");
        repository.write(u"b.txt"_s, "one\n");
        repository.commit(u"base"_s);
        repository.write(u"b.txt"_s, "two\n");
    }

    void set(const QString &key, const QString &value, const QString &folder = {}) const
    {
        repository.git({u"config"_s, key, value}, folder);
    }
    void append(const QString &file, const QByteArray &text) const
    {
        QFile handle(file);
        QVERIFY(handle.open(QIODevice::Append));
        handle.write(text);
    }
    QByteArray programBytes() const { return QFile::encodeName(program); }

    /** Makes git compare the content of a file that it believes to be unchanged. */
    void filterEverything(const QString &folder = {}) const
    {
        append((folder.isEmpty() ? repository.path() : folder) + u"/.gitattributes"_s, "* filter=x diff=x\n");
        touch(folder);
    }
    void touch(const QString &folder = {}) const
    {
        QFile file((folder.isEmpty() ? repository.path() : folder) + u"/a.txt"_s);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFileDevice::FileModificationTime);
    }

    /** Another repository with a file, to be put inside. */
    void other(const QString &folder) const
    {
        QVERIFY(QDir().mkpath(folder));
        repository.git({u"init"_s, u"-q"_s}, folder);
        append(folder + u"/a.txt"_s, "one\n");
        repository.git({u"add"_s, u"-A"_s}, folder);
        repository.git({u"commit"_s, u"-q"_s, u"-m"_s, u"inside"_s}, folder);
    }
    QString submodule() const
    {
        other(repository.folder() + u"/other"_s);
        repository.git({u"submodule"_s, u"--quiet"_s, u"add"_s, repository.folder() + u"/other"_s, u"sub"_s});
        repository.git({u"commit"_s, u"-q"_s, u"-m"_s, u"sub"_s});
        return repository.path(u"sub"_s);
    }

    /** A partial clone without the content of b.txt: whoever wants it has to fetch it. */
    void loseAnObject() const
    {
        const QString blob = repository.git({u"rev-parse"_s, u"HEAD:b.txt"_s});
        QVERIFY(QFile::remove(repository.path(u".git/objects/"_s + blob.left(2) + u'/' + blob.mid(2))));
        set(u"core.repositoryFormatVersion"_s, u"1"_s);
        set(u"extensions.partialClone"_s, u"origin"_s);
        set(u"remote.origin.promisor"_s, u"true"_s);
        set(u"remote.origin.url"_s, repository.path());
    }

    void commitWithSignature() const
    {
        repository.write(
            u"commit"_s,
            "tree " + repository.git({u"rev-parse"_s, u"HEAD^{tree}"_s}).toUtf8()
                + "\nauthor a <a@b> 1 +0000\ncommitter a <a@b> 1 +0000\ngpgsig -----BEGIN PGP SIGNATURE-----\n"
                  " \n x\n -----END PGP SIGNATURE-----\n\nsigned\n");
        const QString hash = repository.git({u"hash-object"_s, u"-t"_s, u"commit"_s, u"-w"_s, u"commit"_s});
        repository.git({u"update-ref"_s, u"HEAD"_s, hash});
    }
};

using Plant = std::function<void(const Trap &)>;

/** All that a window would read, to the last file of the last commit. */
void readEverything(const GitSetting &setting, const QString &folder)
{
    const auto status = GitStatusReader::read(setting, folder, 20);
    if (!status)
        return;
    for (const auto &change : status->changes)
        (void)GitDiff::read(setting, change, status->root);
    for (const auto &row : status->graphRows) {
        GitCommitChanges::Target target {.hash = row.commit.hash};
        if (!row.commit.parents.isEmpty())
            target.parent = row.commit.parents.first();
        for (const auto &change : GitCommitChanges::read(setting, target, status->root).changes)
            (void)GitDiff::read(setting, change, status->root, target);
    }
}

/** Every file below a folder: its time, size and content. Git renews the time of a shared index whenever it
   is read, so that it is not thrown away. */
QStringList stateOf(const QString &folder)
{
    QStringList state;
    QDirIterator files(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        struct stat info {
        };
        QCryptographicHash hash(QCryptographicHash::Sha1);
        QFile file(path);
        if (::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISREG(info.st_mode)
            && file.open(QIODevice::ReadOnly))
            hash.addData(&file);
        const bool isTimeless = path.contains(u"/sharedindex."_s);
        state << u"%1 %2 %3.%4 %5"_s.arg(path)
                     .arg(info.st_size)
                     .arg(isTimeless ? 0 : info.st_mtim.tv_sec)
                     .arg(isTimeless ? 0 : info.st_mtim.tv_nsec)
                     .arg(QString::fromLatin1(hash.result().toHex()));
    }
    state.sort();
    return state;
}

} // namespace

Q_DECLARE_METATYPE(Plant)

class HostileRepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readingRunsNothing_data()
    {
        QTest::addColumn<Plant>("plant");
        QTest::addColumn<QStringList>(
            "control"); // plain git, for which the trap springs; empty where none can
        const auto row = [](const char *name, const Plant &plant, const QStringList &control) {
            QTest::newRow(name) << plant << control;
        };
        const QStringList status {u"status"_s};
        const QStringList diff {u"diff"_s, u"HEAD"_s};
        const QStringList log {u"log"_s};

        for (const char *name : {"clean", "process"}) {
            row(
                name,
                [name](const Trap &trap) {
                    trap.set(u"filter.x."_s + QLatin1StringView(name), trap.program);
                    trap.set(u"filter.x.required"_s, u"true"_s);
                    trap.filterEverything();
                },
                status);
        }
        row("filter of an untracked file",
            [](const Trap &trap) {
                trap.set(u"filter.x.clean"_s, trap.program);
                trap.append(trap.repository.path(u".git/info/attributes"_s), "new filter=x\n");
                trap.repository.write(u"new"_s, "x\n");
            },
            {u"diff"_s, u"--no-index"_s, u"--"_s, u"/dev/null"_s, u"new"_s});
        row(
            "filter of an odd name",
            [](const Trap &trap) {
                trap.append(trap.repository.path(u".git/config"_s),
                            "[filter \"A.b=\xff\"]\n\tclean = " + trap.programBytes() + "\n");
                trap.append(trap.repository.path(u".gitattributes"_s), "* filter=A.b=\xff\n");
                trap.touch();
            },
            status);
        row(
            "filter of an empty name",
            [](const Trap &trap) {
                trap.append(trap.repository.path(u".git/config"_s),
                            "[filter \"\"]\n\tclean = " + trap.programBytes() + "\n");
                trap.append(trap.repository.path(u".gitattributes"_s), "* filter=\n");
                trap.touch();
            },
            status);
        row(
            "filter of an included file",
            [](const Trap &trap) {
                trap.append(trap.repository.path(u"settings"_s),
                            "[filter \"x\"]\n\tclean = " + trap.programBytes() + "\n");
                trap.set(u"include.path"_s, u"../settings"_s);
                trap.filterEverything();
            },
            status);
        row(
            "filter of a worktree's own settings",
            [](const Trap &trap) {
                trap.set(u"extensions.worktreeConfig"_s, u"true"_s);
                trap.repository.git({u"config"_s, u"--worktree"_s, u"filter.x.clean"_s, trap.program});
                trap.filterEverything();
            },
            status);
        row(
            "filter of a submodule",
            [](const Trap &trap) {
                const QString inside = trap.submodule();
                trap.set(u"filter.x.clean"_s, trap.program, inside);
                trap.filterEverything(inside);
            },
            status);
        row(
            "filter of a submodule that is to be looked into",
            [](const Trap &trap) {
                const QString inside = trap.submodule();
                trap.append(trap.repository.path(u".gitmodules"_s), "\tignore = none\n");
                trap.set(u"diff.ignoreSubmodules"_s, u"all"_s);
                trap.set(u"filter.x.process"_s, trap.program, inside);
                trap.filterEverything(inside);
            },
            status);
        for (const char *version : {"2", "4"}) {
            row(
                QByteArray("filter of an embedded repository, index ").append(version).constData(),
                [version](const Trap &trap) {
                    const QString inside = trap.repository.path(u"deep/embedded"_s);
                    trap.other(inside);
                    trap.repository.git({u"add"_s, u"deep/embedded"_s});
                    trap.repository.git(
                        {u"update-index"_s, u"--index-version"_s, QLatin1StringView(version)});
                    trap.set(u"filter.x.clean"_s, trap.program, inside);
                    trap.filterEverything(inside);
                },
                status);
        }
        row(
            "filter of a submodule, split index",
            [](const Trap &trap) {
                const QString inside = trap.submodule();
                trap.repository.git({u"update-index"_s, u"--split-index"_s});
                trap.set(u"filter.x.clean"_s, trap.program, inside);
                trap.filterEverything(inside);
            },
            status);
        row(
            "filter of a submodule's submodule",
            [](const Trap &trap) {
                const QString inside = trap.submodule();
                trap.other(inside + u"/더 깊이"_s);
                trap.repository.git({u"add"_s, u"-A"_s}, inside);
                trap.set(u"filter.x.clean"_s, trap.program, inside + u"/더 깊이"_s);
                trap.filterEverything(inside + u"/더 깊이"_s);
            },
            status);
        row(
            "filter of a submodule, data elsewhere",
            [](const Trap &trap) {
                // .git is no repository here: git finds the one above, which claims this folder for its own
                const QString inside = trap.submodule();
                trap.set(u"filter.x.clean"_s, trap.program, inside);
                trap.filterEverything(inside);
                QVERIFY(
                    QDir().rename(trap.repository.path(u".git"_s), trap.repository.folder() + u"/.git"_s));
                QVERIFY(QDir().mkpath(trap.repository.path(u".git"_s)));
                trap.repository.git({u"config"_s, u"core.worktree"_s, u"../work"_s},
                                    trap.repository.folder());
                QFile link(inside + u"/.git"_s);
                QVERIFY(link.open(QIODevice::WriteOnly | QIODevice::Truncate));
                link.write("gitdir: ../../.git/modules/sub\n");
                link.close();
                trap.repository.git({u"config"_s, u"-f"_s, u".git/modules/sub/config"_s, u"core.worktree"_s,
                                     u"../../../work/sub"_s},
                                    trap.repository.folder());
            },
            status);
        row("diffs inside a submodule",
            [](const Trap &trap) {
                const QString inside = trap.submodule();
                trap.append(inside + u"/a.txt"_s, "two\n");
                trap.repository.git({u"commit"_s, u"-q"_s, u"-a"_s, u"-m"_s, u"more"_s}, inside);
                trap.set(u"diff.submodule"_s, u"diff"_s);
                trap.set(u"diff.external"_s, trap.program, inside);
            },
            {u"diff"_s, u"--no-ext-diff"_s, u"--no-textconv"_s, u"HEAD"_s});
        row(
            "external diff", [](const Trap &trap) { trap.set(u"diff.external"_s, trap.program); }, diff);
        for (const char *name : {"command", "textconv"}) {
            row(
                name,
                [name](const Trap &trap) {
                    trap.set(u"diff.x."_s + QLatin1StringView(name), trap.program);
                    trap.filterEverything();
                },
                diff);
        }
        row(
            "shown signature",
            [](const Trap &trap) {
                trap.set(u"log.showSignature"_s, u"true"_s);
                trap.set(u"gpg.program"_s, trap.program);
                trap.commitWithSignature();
            },
            log);
        row(
            "monitor of files", [](const Trap &trap) { trap.set(u"core.fsmonitor"_s, trap.program); },
            status);
        row(
            "hook",
            [](const Trap &trap) {
                trap.touch();
                QFile::link(trap.program, trap.repository.path(u".git/hooks/post-index-change"_s));
            },
            status);
        row(
            "hook of a refreshed index",
            [](const Trap &trap) {
                QVERIFY(QDir().mkpath(trap.repository.path(u"hooks"_s)));
                QFile::link(trap.program, trap.repository.path(u"hooks/post-index-change"_s));
                trap.set(u"core.hooksPath"_s, u"hooks"_s);
                trap.touch();
            },
            diff);
        row("pager",
            [](const Trap &trap) {
                trap.set(u"core.pager"_s, trap.program);
                trap.set(u"pager.log"_s, trap.program);
            },
            {});
        row("alias",
            [](const Trap &trap) {
                for (const QString &name : {u"status"_s, u"log"_s, u"diff"_s, u"rev-parse"_s})
                    trap.set(u"alias."_s + name, u'!' + trap.program);
                trap.set(u"alias.x"_s, u'!' + trap.program);
            },
            {u"x"_s});
        row(
            "missing object, local",
            [](const Trap &trap) {
                trap.loseAnObject();
                trap.set(u"remote.origin.uploadpack"_s, trap.program);
            },
            diff);
        row(
            "missing object, command",
            [](const Trap &trap) {
                trap.loseAnObject();
                trap.set(u"protocol.allow"_s, u"always"_s);
                trap.set(u"protocol.ext.allow"_s, u"always"_s);
                trap.set(u"remote.origin.url"_s, u"ext::"_s + trap.program);
            },
            diff);
        row(
            "missing object, helper",
            [](const Trap &trap) {
                trap.loseAnObject();
                trap.set(u"protocol.ext.allow"_s, u"always"_s);
                trap.set(u"remote.origin.vcs"_s, u"ext"_s);
                trap.set(u"remote.origin.url"_s, trap.program);
            },
            diff);
        row(
            "missing object, ssh",
            [](const Trap &trap) {
                trap.loseAnObject();
                trap.set(u"core.sshCommand"_s, trap.program);
                trap.set(u"remote.origin.url"_s, u"ssh://nowhere.invalid/x"_s);
            },
            diff);
        row("refs of another repository",
            [](const Trap &trap) {
                trap.other(trap.repository.folder() + u"/other"_s);
                trap.append(trap.repository.path(u".git/objects/info/alternates"_s),
                            QFile::encodeName(trap.repository.folder()) + "/other/.git/objects\n");
                trap.set(u"core.alternateRefsCommand"_s, trap.program);
            },
            {u"rev-list"_s, u"--alternate-refs"_s});
    }

    void readingRunsNothing()
    {
        QFETCH(Plant, plant);
        QFETCH(QStringList, control);
        const Trap trap;
        plant(trap);
        if (QTest::currentTestFailed())
            return;
        QFile::remove(trap.marker);
        const QStringList before = stateOf(trap.repository.folder());

        readEverything(trap.repository.setting(), trap.repository.path());
        QVERIFY(!QFile::exists(trap.marker));
        QCOMPARE(stateOf(trap.repository.folder()), before);
        QVERIFY(GitStatusReader::read(trap.repository.setting(), trap.repository.path(), 5).has_value());

        if (control.isEmpty())
            return;
        trap.repository.tryGit(control);
        QVERIFY2(QFile::exists(trap.marker), "the trap is not live");
    }

    void aBareRepositoryInsideIsNone()
    {
        const Trap trap;
        const QString bare = trap.repository.path(u"fixtures/x"_s);
        trap.repository.git({u"init"_s, u"-q"_s, u"--bare"_s, bare});
        trap.set(u"core.bare"_s, u"false"_s, bare);
        trap.set(u"core.worktree"_s, trap.repository.path(), bare);
        trap.set(u"core.fsmonitor"_s, trap.program, bare);
        QFile::remove(trap.marker);
        QVERIFY(!GitStatusReader::read(trap.repository.setting(), bare, 5));
        QVERIFY(!QFile::exists(trap.marker));
        trap.repository.tryGit({u"status"_s}, bare);
        QVERIFY2(QFile::exists(trap.marker), "the trap is not live");
    }

    // What the person set for all repositories is theirs, also where a repository sets the same.
    void theFilterOfThePersonStays()
    {
        const Trap trap;
        const QString own = trap.repository.folder() + u"/own"_s;
        writeScript(own, ": > '" + QFile::encodeName(own) + ".ran'\nexec cat");
        trap.repository.git({u"config"_s, u"--global"_s, u"filter.x.clean"_s, own});
        trap.set(u"filter.x.clean"_s, trap.program);
        trap.filterEverything();
        QFile::remove(trap.marker);
        readEverything(trap.repository.setting(), trap.repository.path());
        QVERIFY(QFile::exists(own + u".ran"_s));
        QVERIFY(!QFile::exists(trap.marker));
    }
};

VESK_TEST(HostileRepositoryTest)
#include "HostileRepositoryTest.moc"
