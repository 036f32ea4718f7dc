#include "git/GitPath.h"
#include "git/GitStatusReader.h"
#include "git/GitWorkingTree.h"
#include "git/RepositoryFault.h"
#include "Repository.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <rapidcheck.h>

#include <algorithm>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;
using namespace Vesk::GitStatusReader;
using GitWorkingTree::Change;

using CommitTable = QList<QPair<QString, QStringList>>;

namespace
{

QList<GitCommit> commitsOf(const CommitTable &table)
{
    QList<GitCommit> commits;
    for (const auto &[hash, parents] : table)
        commits.append({.hash = hash, .parents = parents});
    return commits;
}

// "hash@lane>parent lanes/count" a row
QString drawn(const QList<GraphRow> &rows)
{
    QStringList lines;
    for (const GraphRow &row : rows) {
        QStringList parents;
        for (const int lane : row.parentLanes)
            parents << QString::number(lane);
        lines
            << u"%1@%2>%3/%4"_s.arg(row.commit.hash).arg(row.lane).arg(parents.join(u',')).arg(row.laneCount);
    }
    return lines.join(u' ');
}

QStringList subjects(const QList<GraphRow> &rows)
{
    QStringList all;
    for (const GraphRow &row : rows)
        all << row.commit.subject;
    return all;
}

RepoStatus readOrFail(const Repository &repository, int window = 500)
{
    const auto status = GitStatusReader::read(repository.setting(), repository.path(), window);
    if (!status)
        QTest::qFail(qPrintable(status.error().text), __FILE__, __LINE__);
    return status.value_or(RepoStatus());
}

} // namespace

class GitStatusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kinds_data()
    {
        QTest::addColumn<QString>("letters");
        QTest::addColumn<QString>("badge");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("stage");
        const auto row = [](const QString &letters, const QString &badge, const QString &label,
                            const QString &stage) {
            QTest::addRow("%s", qPrintable(letters)) << letters << badge << label << stage;
        };
        row(u"M "_s, u"M"_s, u"수정됨"_s, u"staged"_s);
        row(u"MM"_s, u"M"_s, u"수정됨"_s, u"staged + unstaged"_s);
        row(u"A "_s, u"A"_s, u"새로 추가됨"_s, u"staged"_s);
        row(u"AM"_s, u"A"_s, u"새로 추가됨"_s, u"staged + unstaged"_s);
        row(u" A"_s, u"A"_s, u"상태  A"_s, u"unstaged"_s);
        row(u"AD"_s, u"A"_s, u"새로 추가됨"_s, u"staged + unstaged"_s);
        row(u" D"_s, u"D"_s, u"삭제됨"_s, u"unstaged"_s);
        row(u"RM"_s, u"R"_s, u"이름 바뀜"_s, u"staged + unstaged"_s);
        row(u" C"_s, u"C"_s, u"복사됨"_s, u"unstaged"_s);
        row(u" T"_s, u"T"_s, u"종류 바뀜(파일↔링크)"_s, u"unstaged"_s);
        row(u"??"_s, u"?"_s, u"추적 안 하는 새 파일"_s, u"untracked"_s);
        row(u"UU"_s, u"U"_s, u"충돌"_s, u"병합 충돌"_s);
        row(u"DU"_s, u"U"_s, u"충돌"_s, u"병합 충돌"_s);
        row(u"AA"_s, u"U"_s, u"충돌"_s, u"병합 충돌"_s);
        row(u"!!"_s, u"!"_s, u"상태 !!"_s, QString());
        row(u" X"_s, u"X"_s, u"상태  X"_s, u"unstaged"_s);
    }

    void kinds()
    {
        QFETCH(QString, letters);
        const auto changes = GitWorkingTree::parseStatus((letters + u" a/b.txt"_s).toUtf8());
        QCOMPARE(changes.size(), 1);
        QTEST(changes[0].badge(), "badge");
        QTEST(changes[0].kindLabel(), "label");
        QTEST(changes[0].stageSummary(), "stage");
    }

    void recordsOfTheStatus()
    {
        const QByteArray text =
            QByteArray("R  new@old@R  lone@@?? dir/sub/@ M @x@??x@ C y@").replace('@', '\0');
        const auto changes = GitWorkingTree::parseStatus(text);
        QCOMPARE(changes.size(), 4);
        QCOMPARE(changes[0].path, u"new"_s);
        QCOMPARE(changes[0].originalPath, u"old"_s);
        QVERIFY(!changes[1].originalPath);
        QVERIFY(changes[2].isFolder());
        QCOMPARE(changes[2].kindLabel(), u"추적 안 하는 새 폴더"_s);
        QCOMPARE(changes[2].fileName(), u"sub"_s);
        QCOMPARE(changes[2].directory(), u"dir"_s);
        QVERIFY(!changes[3].originalPath);
        QCOMPARE(changes[3].directory(), QString());
    }

    void recordsOfTheLog()
    {
        // "@" stands for a NUL here, "|" for the end of a field, "$" for that of a record.
        const QByteArray text =
            QByteArray("\nh1|p1 p2|HEAD -> main, tag: v1, origin/main|1700000000@a b@m@s, t\t -> %$\n"
                       "broken$h9|||1@three@parts$\n|||@@@x$h2|||x@@@$")
                .replace('@', '\0')
                .replace('|', '\x1f')
                .replace('$', '\x1e');
        const auto commits = parseLog(text);
        QCOMPARE(commits.size(), 2);
        QCOMPARE(commits[0],
                 GitCommit({u"h1"_s,
                            {u"p1"_s, u"p2"_s},
                            u"s, t\t -> %"_s,
                            {u"HEAD"_s, u"main"_s, u"v1"_s, u"origin/main"_s},
                            1'700'000'000,
                            u"a b"_s,
                            u"m"_s}));
        QCOMPARE(commits[1].timestamp, 0);
        QCOMPARE(parseRefs(u" , a -> b,, tag: x,"_s), QStringList({u"a"_s, u"b"_s, u"x"_s}));
        QCOMPARE(parseBranches(u"  b \nmain\n\n\ta\n"_s, u"main"_s), QStringList({u"b"_s, u"a"_s}));
        QCOMPARE(parseAheadBehind(u"2\t5\n"_s), AheadBehind({.ahead = 5, .behind = 2}));
        QCOMPARE(parseAheadBehind(u"x 3"_s), AheadBehind());
    }

    void lanes_data()
    {
        QTest::addColumn<CommitTable>("commits");
        QTest::addColumn<QString>("graph");
        QTest::newRow("line") << CommitTable {{u"c"_s, {u"b"_s}}, {u"b"_s, {u"a"_s}}, {u"a"_s, {}}}
                              << u"c@0>0/1 b@0>0/1 a@0>/1"_s;
        QTest::newRow("merge") << CommitTable {{u"m"_s, {u"a"_s, u"b"_s}},
                                               {u"b"_s, {u"r"_s}},
                                               {u"a"_s, {u"r"_s}},
                                               {u"r"_s, {}}}
                               << u"m@0>0,1/2 b@1>1/2 a@0>1/2 r@1>/2"_s;
        QTest::newRow("two tips") << CommitTable {{u"x"_s, {u"r"_s}},
                                                  {u"y"_s, {u"r"_s}},
                                                  {u"r"_s, {u"q"_s}},
                                                  {u"q"_s, {}}}
                                  << u"x@0>0/1 y@1>0/2 r@0>0/1 q@0>/1"_s;
        QTest::newRow("octopus") << CommitTable {{u"o"_s, {u"a"_s, u"b"_s, u"c"_s}},
                                                 {u"n"_s, {u"b"_s}},
                                                 {u"c"_s, {}},
                                                 {u"z"_s, {u"w"_s}}}
                                 << u"o@0>0,1,2/3 n@3>1/4 c@2>/3 z@2>2/3"_s;
        QTest::newRow("same parent twice")
            << CommitTable {{u"m"_s, {u"a"_s, u"a"_s}}, {u"a"_s, {}}} << u"m@0>0,0/1 a@0>/1"_s;
    }

    void lanes()
    {
        QFETCH(CommitTable, commits);
        QTEST(drawn(layout(commitsOf(commits))), "graph");
    }

    // A lane waits for one commit from the row that opens it to that commit's own row.
    void lanesKeepTheirWord()
    {
        QVERIFY(rc::check([] {
            const int count = *rc::gen::inRange(0, 40);
            QList<GitCommit> commits;
            for (int i = 0; i < count; ++i) {
                const auto steps =
                    *rc::gen::resize(4, rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 8)));
                QStringList parents;
                for (const int step : steps)
                    parents << QString::number(i + step);
                commits.append({.hash = QString::number(i), .parents = parents});
            }
            const auto rows = layout(commits);
            RC_ASSERT(rows.size() == commits.size());
            QHash<int, QString> waiting;
            for (const GraphRow &row : rows) {
                const QList<int> lanes = waiting.keys(row.commit.hash);
                RC_ASSERT(lanes.size() <= 1);
                if (lanes.isEmpty())
                    RC_ASSERT(!waiting.contains(row.lane));
                else
                    RC_ASSERT(lanes.first() == row.lane);
                waiting.remove(row.lane);
                RC_ASSERT(row.parentLanes.size() == row.commit.parents.size());
                for (qsizetype i = 0; i < row.parentLanes.size(); ++i) {
                    const int lane = row.parentLanes[i];
                    const QString &parent = row.commit.parents[i];
                    const bool isKnown = waiting.values().contains(parent);
                    RC_ASSERT(waiting.value(lane, parent) == parent);
                    if (i == 0 && !isKnown)
                        RC_ASSERT(lane == row.lane); // the main line is straight
                    waiting.insert(lane, parent);
                    RC_ASSERT(lane < row.laneCount);
                }
                RC_ASSERT(row.lane < row.laneCount);
                for (const int lane : waiting.keys())
                    RC_ASSERT(lane < row.laneCount);
            }
        }));
    }

    void anyNameComesThroughTheStatus()
    {
        QVERIFY(rc::check([](const std::vector<std::string> &names) {
            QByteArray text;
            QList<QByteArray> kept;
            for (const std::string &name : names) {
                const QByteArray path = QByteArray::fromStdString(name).replace('\0', '\n');
                if (path.isEmpty())
                    continue;
                kept << path;
                text += " M " + path + '\0';
            }
            const auto changes = GitWorkingTree::parseStatus(text);
            RC_ASSERT(changes.size() == kept.size());
            for (qsizetype i = 0; i < kept.size(); ++i)
                RC_ASSERT(GitPath::encode(changes[i].path) == kept[i]);
        }));
    }

    void aWholeRepository()
    {
        const Repository repository;
        repository.write(u"a.txt"_s, "one\n");
        const QString first = repository.commit(u"처음, \t -> \"quoted\""_s);
        repository.git({u"checkout"_s, u"-q"_s, u"-b"_s, u"기능"_s});
        repository.write(u"b.txt"_s, "two\n");
        repository.commit(u"second"_s);
        repository.git({u"checkout"_s, u"-q"_s, u"main"_s});
        repository.commit(u"third"_s);
        repository.git({u"stash"_s, u"list"_s});
        repository.write(QByteArray("new\nline \"q\""), "x");
        repository.write(QByteArray("caf\xe9"), "x");
        repository.git({u"mv"_s, u"a.txt"_s, u"renamed.txt"_s});
        repository.write(u"folder/inside.txt"_s, "x");
        // What a person may have set must not change the form of what is read.
        for (const auto &[key, value] :
             QList<QPair<QString, QString>> {{u"log.decorate"_s, u"full"_s},
                                             {u"column.ui"_s, u"always"_s},
                                             {u"color.ui"_s, u"always"_s},
                                             {u"log.showSignature"_s, u"true"_s},
                                             {u"i18n.logOutputEncoding"_s, u"EUC-KR"_s},
                                             {u"status.branch"_s, u"true"_s}})
            repository.git({u"config"_s, u"--global"_s, key, value});

        const RepoStatus status = readOrFail(repository);
        QCOMPARE(status.root, repository.path());
        QCOMPARE(status.branch, u"main"_s);
        QCOMPARE(status.branches, QStringList({u"기능"_s}));
        QCOMPARE(subjects(status.rows), QStringList({u"third"_s, u"처음, \t -> \"quoted\""_s}));
        QCOMPARE(status.graphRows.size(), 3);
        QCOMPARE(status.rows.last().commit.hash, first);
        QCOMPARE(status.rows.last().commit.author, u"김개발"_s);
        QCOMPARE(status.rows.first().commit.refs, QStringList({u"HEAD"_s, u"main"_s}));
        QVERIFY(!status.hasAnyRemote && !status.hasRemote && !status.truncated && !status.changesTruncated);
        QHash<QByteArray, Change> changes;
        for (const Change &change : status.changes)
            changes.insert(GitPath::encode(change.path), change);
        QCOMPARE(changes.size(), 4);
        QCOMPARE(changes.value("renamed.txt").originalPath, u"a.txt"_s);
        QCOMPARE(changes.value("new\nline \"q\"").kind(), Change::Kind::Untracked);
        QCOMPARE(changes.value("caf\xe9").fileName(), u"caf\uFFFD"_s);
        QVERIFY(changes.contains("folder/"));

        QCOMPARE(readOrFail(repository), status); // and again
        const RepoStatus one = readOrFail(repository, 1);
        QVERIFY(one.truncated && one.graphTruncated);
        QCOMPARE(subjects(one.rows), QStringList({u"third"_s}));
        QVERIFY(!readOrFail(repository, 2).truncated);
    }

    void aheadAndBehind()
    {
        const Repository repository;
        repository.commit(u"shared"_s);
        repository.git(
            {u"clone"_s, u"-q"_s, u"--bare"_s, repository.path(), repository.folder() + u"/remote"_s});
        repository.git({u"remote"_s, u"add"_s, u"origin"_s, repository.folder() + u"/remote"_s});
        QVERIFY(readOrFail(repository).hasAnyRemote && !readOrFail(repository).hasRemote);
        repository.commit(u"theirs"_s);
        repository.git({u"push"_s, u"-q"_s, u"-u"_s, u"origin"_s, u"main"_s});
        repository.git({u"reset"_s, u"-q"_s, u"--hard"_s, u"HEAD~1"_s});
        repository.commit(u"ours"_s);
        repository.commit(u"ours too"_s);
        const RepoStatus status = readOrFail(repository);
        QVERIFY(status.hasRemote);
        QCOMPARE(status.ahead, 2);
        QCOMPARE(status.behind, 1);
    }

    void aDetachedHead()
    {
        const Repository repository;
        repository.commit(u"base"_s);
        repository.git({u"checkout"_s, u"-q"_s, u"--detach"_s});
        RepoStatus status = readOrFail(repository);
        QCOMPARE(status.branch, QString());
        QCOMPARE(status.branches, QStringList({u"main"_s}));
        QVERIFY(!headOutsideGraph(status.rows, status.graphRows));
        repository.commit(u"lost"_s);
        status = readOrFail(repository);
        QVERIFY(headOutsideGraph(status.rows, status.graphRows.mid(1)));
        QVERIFY(!headOutsideGraph({}, status.graphRows) && !headOutsideGraph(status.rows, {}));
    }

    void repositoriesThatAreNone()
    {
        const Repository repository;
        const auto kindOf = [&](const QString &folder) {
            const auto status = GitStatusReader::read(repository.setting(), folder, 10);
            return status ? QString() : status.error().text;
        };
        const auto none = GitStatusReader::read(repository.settingWithoutGit(), repository.path(), 10);
        QVERIFY(!none);
        QCOMPARE(none.error().kind, ErrorKind::Unavailable);
        QCOMPARE(none.error().text, u"git을 찾을 수 없습니다"_s);
        QVERIFY(kindOf(repository.folder()).contains(u"not a git repository"_s));
        QVERIFY(kindOf(repository.folder() + u"/gone"_s).contains(u"/gone: "_s));
        repository.git({u"init"_s, u"-q"_s, u"--bare"_s, repository.folder() + u"/bare"_s});
        QVERIFY(kindOf(repository.folder() + u"/bare"_s).contains(u"(bare)"_s));
        QVERIFY(kindOf(repository.path(u".git"_s)).contains(u"(bare)"_s));
        // a work tree whose repository has gone
        repository.commit(u"base"_s);
        repository.git({u"worktree"_s, u"add"_s, u"-q"_s, u"../tree"_s, u"-b"_s, u"side"_s});
        QCOMPARE(kindOf(repository.folder() + u"/tree"_s), QString());
        QVERIFY(QDir(repository.path(u".git"_s)).removeRecursively());
        QVERIFY(kindOf(repository.folder() + u"/tree"_s)
                    .startsWith(u"이 작업 트리의 원래 저장소가 없습니다: "_s));

        using GitStatusReader::read;
        QDir(repository.folder()).mkdir(u"plain"_s);
        QCOMPARE(read(repository.setting(), repository.folder() + u"/plain"_s, 10).error().kind,
                 ErrorKind::NotFound);
        QCOMPARE(read(repository.setting(), repository.folder() + u"/tree"_s, 10).error().kind,
                 ErrorKind::Unreadable);
    }

    void repositoriesInTrouble()
    {
        const Repository repository;
        repository.write(u"a"_s, "1");
        RepoStatus status = readOrFail(repository); // nothing committed yet
        QVERIFY(status.rows.isEmpty() && status.branch.isEmpty());
        QCOMPARE(status.changes.size(), 1);
        QVERIFY(status.historyFailure.isEmpty() && status.changesFailure.isEmpty());

        const QString hash = repository.commit(u"base"_s);
        repository.write(u".git/index.lock"_s, "");
        repository.write(u"a"_s, "2");
        status = readOrFail(repository);
        QCOMPARE(status.changes.size(), 1);
        QVERIFY(QFile::exists(repository.path(u".git/index.lock"_s)));
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        QCOMPARE(leftBehindLock(status.root, now), QString()); // a git may be at work
        QVERIFY(leftBehindLock(status.root, now + 100).endsWith(u"/.git/index.lock"_s));
        const Repository linked;
        QVERIFY(QDir(linked.path(u".git"_s)).removeRecursively());
        linked.write(u".git"_s, "gitdir: " + repository.path(u".git"_s).toUtf8() + '\n');
        QVERIFY(!leftBehindLock(linked.path(), now + 100).isEmpty());

        const QString object = repository.path(u".git/objects/"_s + hash.left(2) + u'/' + hash.mid(2));
        QFile::setPermissions(object, QFile::ReadOwner | QFile::WriteOwner);
        QFile file(object);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("rubbish");
        file.close();
        status = readOrFail(repository);
        QVERIFY(status.rows.isEmpty() && status.graphRows.isEmpty());
        QVERIFY(status.historyFailure.contains(hash)); // and it is not told that there are none
        repository.write(u".git/index"_s, "rubbish");
        status = readOrFail(repository);
        QVERIFY(status.changes.isEmpty() && status.changesFailure.contains(u"index"_s));

        repository.write(u".git/config"_s, "[core\n");
        const auto broken = GitStatusReader::read(repository.setting(), repository.path(), 10);
        QVERIFY(!broken);
        QCOMPARE(broken.error().kind, ErrorKind::Unreadable);
    }

    void aFolderWithALineEndInItsName()
    {
        const Repository repository;
        const QString inside = repository.folder() + u"/odd\n 한 "_s;
        QVERIFY(QDir().mkpath(inside));
        repository.git({u"init"_s, u"-q"_s}, inside);
        const auto status = GitStatusReader::read(repository.setting(), inside, 10);
        QVERIFY(status.has_value());
        QCOMPARE(QDir(status->root), QDir(QDir(inside).canonicalPath()));
    }

    void theSnapshotComesToItsContext()
    {
        const Repository repository;
        repository.commit(u"base"_s);
        QObject context;
        QString branch;
        GitStatusReader::load(repository.path(), 10, &context, [&](const Result<RepoStatus> &status) {
            branch = status ? status->branch : u"none"_s;
        });
        QTRY_COMPARE(branch, u"main"_s);
    }
};

VESK_TEST(GitStatusTest)
#include "GitStatusTest.moc"
