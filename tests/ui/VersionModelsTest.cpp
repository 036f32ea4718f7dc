// What the version window's lists hold, without a window: graph, names, commits, changes, lines, drafts.
#include "git/GitSummary.h"
#include "support/TestRegistry.h"
#include "ui/version/ChangesModel.h"
#include "ui/version/CommitColumns.h"
#include "ui/version/CommitsModel.h"
#include "ui/version/DiffModel.h"
#include "ui/version/RefName.h"
#include "ui/version/RequestDrafts.h"
#include "ui/version/VersionView.h"
#include "ui/version/VersionWords.h"
#include "ui/version/WheelPull.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;
using GitStatusReader::GitCommit;
using GitStatusReader::RepoStatus;
using GitWorkingTree::Change;

namespace
{

/** "hash parent parent…" */
QList<GitCommit> history(const QStringList &lines)
{
    QList<GitCommit> commits;
    for (const QString &line : lines) {
        const QStringList words = line.split(u' ');
        commits.append(
            {.hash = words.first(), .parents = words.mid(1), .subject = u"commit "_s + words.first()});
    }
    return commits;
}

CommitRows content(const QStringList &lines, const QString &head)
{
    const RepoStatus status {.rows = {{.commit = {.hash = head}}}};
    return commitRows(GitStatusReader::layout(history(lines)), status);
}

/** The lines of a row as "p0" (pass), "i1" (in), "o2" (out), with "-" behind when broken. */
QString sketch(const GraphPicture &picture)
{
    QStringList words;
    for (const GraphLine &line : picture.lines) {
        const QChar kind = line.kind == GraphLine::Kind::Pass ? u'p'
            : line.kind == GraphLine::Kind::In                ? u'i'
                                                              : u'o';
        words.append(kind + QString::number(line.lane) + (line.isDashed ? u"-"_s : QString()));
    }
    return QString::number(picture.lane) + u':' + words.join(u' ');
}

Change change(const QString &path, char index, char worktree)
{
    return {.path = path, .index = QChar::fromLatin1(index), .worktree = QChar::fromLatin1(worktree)};
}

} // namespace

class VersionModelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void graphLines()
    {
        // a merge, whose second parent goes on beside the first
        const auto rows = GitStatusReader::layout(history({u"m a b"_s, u"a r"_s, u"b r"_s, u"r"_s}));
        QStringList lines;
        for (const GraphPicture &picture : graphPictures(rows, u"m"_s))
            lines.append(sketch(picture));
        QCOMPARE(lines,
                 (QStringList {u"0:o0-"_s, u"0:o0 o1 i0-"_s, u"0:i0 p1 o0"_s, u"1:p0 i1 o0"_s, u"0:i0"_s}));

        const auto tips = GitStatusReader::layout(history({u"x r"_s, u"h r"_s, u"r"_s}));
        const auto free = graphPictures(tips, u"h"_s);
        QCOMPARE(sketch(free[0]), u"1:o1-"_s); // leads past the newer tip
        QCOMPARE(sketch(free[1]), u"0:o0 p1-"_s);
        QCOMPARE(sketch(free[2]), u"1:p0 o0 i1-"_s);
        const auto behind = graphPictures(tips, u"r"_s); // HEAD has children: nothing leads there
        QCOMPARE(sketch(behind[0]), u"0:"_s);
        QCOMPARE(graphPictures({}, {}).size(), 1);
    }

    void everyLineGoesOn()
    {
        // What leaves a row at its bottom enters the next one at its top, whatever the history.
        QVERIFY(rc::check("lines meet", [](const std::vector<std::pair<uint8_t, uint8_t>> &steps) {
            QStringList lines;
            for (std::size_t i = 0; i < steps.size(); ++i) {
                QString line = QString::number(i);
                line += u' ' + QString::number(i + 1 + steps[i].first % 4);
                if (steps[i].second % 3 == 0)
                    line += u' ' + QString::number(i + 1 + steps[i].second % 7);
                lines.append(line);
            }
            const auto pictures = graphPictures(GitStatusReader::layout(history(lines)), u"3"_s);
            for (qsizetype i = 1; i < pictures.size(); ++i) {
                QSet<int> leaving;
                QSet<int> entering;
                for (const GraphLine &line : pictures[i - 1].lines) {
                    if (line.kind != GraphLine::Kind::In)
                        leaving.insert(line.lane);
                }
                for (const GraphLine &line : pictures[i].lines) {
                    if (line.kind != GraphLine::Kind::Out)
                        entering.insert(line.lane);
                }
                RC_ASSERT(leaving == entering);
            }
        }));
    }

    void namesOfCommits()
    {
        const RepoStatus status {.branch = u"fix/a"_s,
                                 .remotes = {u"origin"_s, u"my/fork"_s},
                                 .branches = {u"main"_s, u"origin/x"_s}};
        const auto names = refNames({u"v1"_s, u"origin/main"_s, u"my/fork/b"_s, u"origin/HEAD"_s, u"HEAD"_s,
                                     u"fix/a"_s, u"origin/x"_s, u"originals"_s},
                                    status);
        QStringList words;
        for (const RefName &name : names)
            words.append(QString::number(int(name.kind)) + name.name);
        QCOMPARE(words,
                 (QStringList {u"0HEAD"_s, u"1fix/a"_s, u"1origin/x"_s, u"2origin/main"_s, u"2my/fork/b"_s,
                               u"3v1"_s, u"3originals"_s}));
    }

    void commitsComeAndGo()
    {
        CommitsModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setContent(content({u"c b"_s, u"b a"_s, u"a"_s}, u"c"_s));
        QCOMPARE(model.count(), 4);
        QCOMPARE(model.rowOf({}), 0);
        QCOMPARE(model.rowOf(u"a"_s), 3);

        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        model.setContent(content({u"d c"_s, u"c b"_s, u"b a"_s, u"a"_s}, u"d"_s));
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted[0][1].toInt(), 1);
        model.setContent(content({u"d2 b"_s, u"b a"_s, u"a"_s}, u"d2"_s)); // two were made into one
        QCOMPARE(model.rowOf(u"b"_s), 2);
        QCOMPARE(model.rowOf(u"c"_s), -1);
        QVERIFY(resets.isEmpty());
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setContent(content({u"d2 b"_s, u"b a"_s, u"a"_s}, u"d2"_s));
        QVERIFY(changed.isEmpty()); // equal content redraws nothing
        model.setContent({});
        QCOMPARE(model.count(), 0);
    }

    void findingCommits()
    {
        CommitsModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setContent(content({u"abc b"_s, u"b a"_s, u"a"_s}, u"abc"_s));
        model.setQuery(u"AB"_s); // the beginning of a hash
        QCOMPARE(model.matchCount(), 1);
        QCOMPARE(model.matchFrom(0, 1), 1);
        QVERIFY(model.index(2).data(CommitsModel::DimmedRole).toBool());
        model.setQuery(u"commit"_s);
        QCOMPARE(model.matchCount(), 3);
        QCOMPARE(model.matchFrom(3, 1), 1); // round the end
        QCOMPARE(model.matchFrom(1, -1), 3);
        QCOMPARE(model.matchNumber(2), 2);
        model.setQuery(u"nothing"_s);
        QCOMPARE(model.matchFrom(1, 1), -1);
    }

    void changedFiles()
    {
        ChangesModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setChanges(
            {change(u"src/a.cpp"_s, 'M', ' '), change(u"b.txt"_s, 'U', 'U'), change(u"new/"_s, '?', '?')});
        QCOMPARE(model.pathAt(0), u"b.txt"_s); // conflicts first
        QCOMPARE(model.index(0).data(ChangesModel::StageRole).toString(), u"충돌"_s);
        QCOMPARE(model.index(1).data(ChangesModel::FolderRole).toString(), u"src"_s);
        QCOMPARE(model.index(1).data(ChangesModel::StageRole).toString(), u"staged"_s);
        QCOMPARE(model.index(2).data(ChangesModel::NameRole).toString(), u"new/"_s);
        QCOMPARE(model.index(2).data(ChangesModel::FolderRole).toString(), u"새 폴더"_s);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        model.setChanges({change(u"src/a.cpp"_s, 'M', 'M'), change(u"new/"_s, '?', '?')});
        QCOMPARE(removed.size(), 1);
        QCOMPARE(model.rowOf(u"b.txt"_s), -1);
        model.setChanges({change(u"src/new\nline"_s, 'M', ' ')}, ChangesModel::Of::Commit);
        QCOMPARE(model.index(0).data(ChangesModel::NameRole).toString(), u"new␊line"_s); // one line
        QVERIFY(model.index(0).data(ChangesModel::StageRole).toString().isEmpty());
        model.setChanges({});
    }

    void linesOfADifference()
    {
        DiffModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        auto diff =
            GitDiff::parse("new file mode 100644\n@@ -1,2 +1,2 @@\n 가\n-나\n+다\n@@ -9 +9 @@\n-x\n+y\n");
        model.reset(diff);
        QCOMPARE(model.count(), 8);
        QCOMPARE(model.hunkCount(), 2);
        QCOMPARE(model.hunkFrom(0, 1), 1);
        QCOMPARE(model.hunkFrom(1, 1), 5);
        QCOMPARE(model.hunkFrom(5, -1), 1);
        QCOMPARE(model.hunkFrom(5, 1), -1);
        QCOMPARE(model.hunkAt(7), 2);
        QCOMPARE(model.textOf(2, 4), u" 가\n-나\n+다"_s);
        QCOMPARE(model.digits(), 1);

        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.update(GitDiff::parse(
            "new file mode 100644\n@@ -1,3 +1,3 @@\n 가\n+라\n-나\n+다\n@@ -9 +10 @@\n-x\n+y\n"));
        QCOMPARE(model.count(), 9);
        QVERIFY(resets.isEmpty());
        QCOMPARE(model.index(8).data(DiffModel::NewNumberRole).toString(), u"10"_s);

        QByteArray many("@@ -0,0 +1,2500 @@\n");
        for (int i = 0; i < 2500; ++i)
            many += "+line\n";
        diff = GitDiff::parse(many);
        diff.totalBytes = diff.readBytes;
        model.update(diff);
        QCOMPARE(model.index(model.count() - 1).data().toString(), u"이후 501줄 생략"_s);
        QCOMPARE(model.textOf(0, model.count()).count(u'\n'), 1999);
        QCOMPARE(model.digits(), 4);
        QVERIFY(!model.longestIsCut());
        model.reset(GitDiff::parse("@@ -0,0 +1 @@\n+" + QByteArray(1001, 'x') + '\n'));
        QVERIFY(model.longestIsCut());
        QCOMPARE(VersionWords::clipped(4000), u"+4,000바이트"_s);
        model.reset(GitDiff::parse("new file mode 100644\nindex 0000000..e69de29\n"));
        QCOMPARE(model.index(1).data().toString(), u"내용이 없는 파일입니다"_s);
        model.reset(GitDiff::parse("similarity index 100%\nrename from a\nrename to b\n"));
        QCOMPARE(model.count(), 3);
        model.reset({});
        QCOMPARE(model.count(), 0);
    }

    void requests_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QString>("part");
        using RequestDrafts::Kind;
        QTest::newRow("commit") << int(Kind::Commit) << u"충돌을 먼저 풀어야 합니다"_s << u"변경 2개"_s;
        QTest::newRow("push") << int(Kind::Push) << QString() << u"fix 브랜치의 커밋 3개"_s;
        QTest::newRow("resolve") << int(Kind::Resolve) << QString() << u"\n- b.txt"_s;
        QTest::newRow("pull") << int(Kind::Pull) << u"받을 커밋이 없습니다"_s << u"fix"_s;
        QTest::newRow("stash") << int(Kind::Stash) << QString() << u"변경 2개"_s;
        QTest::newRow("merge") << int(Kind::Merge) << QString() << u"\n- main"_s;
        QTest::newRow("branch") << int(Kind::Branch) << u"아직 커밋이 없습니다"_s << u"이름: "_s;
    }
    void requests()
    {
        QFETCH(int, kind);
        QFETCH(QString, reason);
        QFETCH(QString, part);
        const RepoStatus status {.branch = u"fix"_s,
                                 .changes = {change(u"a"_s, 'M', ' '), change(u"b.txt"_s, 'U', 'U')},
                                 .ahead = 3,
                                 .hasRemote = true,
                                 .hasAnyRemote = true,
                                 .branches = {u"main"_s}};
        const auto asked = static_cast<RequestDrafts::Kind>(kind);
        QCOMPARE(RequestDrafts::reason(asked, status), reason);
        QVERIFY2(RequestDrafts::draft(asked, status).contains(part),
                 qPrintable(RequestDrafts::draft(asked, status)));
        QVERIFY(!RequestDrafts::reason(RequestDrafts::Kind::Commit, {}).isEmpty());
        QVERIFY(RequestDrafts::reason(RequestDrafts::Kind::Stash, {.changesFailure = u"fatal"_s})
                    .contains(u"읽지 못했습니다"_s)); // not: there are none
    }

    void columns_data()
    {
        QTest::addColumn<double>("room");
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("lanes");
        QTest::addColumn<QString>("widths"); // graph subject author hash date
        QTest::newRow("wide") << 1200.0 << 1.0 << 2 << u"72 812 84 76 116"_s;
        QTest::newRow("least window") << 659.0 << 1.0 << 4 << u"84 259 84 76 116"_s;
        QTest::newRow("large letters") << 659.0 << 1.6 << 4 << u"134 299 0 0 186"_s;
        QTest::newRow("hundred lanes") << 659.0 << 1.0 << 100 << u"164 179 84 76 116"_s;
        QTest::newRow("no room at all") << 20.0 << 1.0 << 1 << u"72 0 0 0 0"_s;
    }
    void columns()
    {
        QFETCH(double, room);
        QFETCH(double, scale);
        QFETCH(int, lanes);
        const auto px = [&](qreal width) { return std::round(width * scale); };
        const auto widths =
            columnWidths({.author = px(84), .hash = px(76), .date = px(116)}, lanes, room, scale);
        QStringList words;
        for (const qreal width : {widths.graph, widths.subject, widths.author, widths.hash, widths.date})
            words.append(QString::number(width));
        QTEST(words.join(u' '), "widths");
        QCOMPARE(columnWidths({.graph = 600}, lanes, 800, scale).graph, 400); // half the table at most
    }

    void aWheelPulls()
    {
        using std::chrono::milliseconds;
        struct Turn {
            int at;
            qreal pixels;
            bool atTop;
            qreal distance;
        };
        PullTurns turns;
        for (const Turn &turn :
             {Turn {0, 30, true, 30}, Turn {300, 40, true, 70},
              Turn {900, 30, true, 30},                            // rested: from the start again
              Turn {1000, -1, true, 0},                            // down
              Turn {1100, 60, true, 0},                            // and up in the same movement: scrolling
              Turn {1600, 60, false, 0}, Turn {1700, 90, true, 0}, // the run-out of what began below
              Turn {2200, 15, true, 15}}) {
            turns = turned(turns, turn.pixels, turn.atTop, milliseconds(turn.at));
            QCOMPARE(turns.distance, turn.distance);
        }
        WheelPull wheel;
        wheel.setProperty("needed", 64);
        QSignalSpy pulled(&wheel, &WheelPull::pulled);
        for (int i = 0; i < 12; ++i)
            wheel.turn(15, true);
        QCOMPARE(pulled.size(), 1); // once, however far it goes on
    }

    void turnsWithTools()
    {
        using Role = ChatMessage::Role;
        ChatMessage asked;
        ChatMessage told;
        ChatMessage worked;
        told.role = Role::Assistant;
        worked.role = Role::Tools;
        worked.tools.append(ToolActivity());
        QVERIFY(lastTurnUsedTools({asked, worked, told}));
        QVERIFY(!lastTurnUsedTools({asked, worked, asked, told}));
        QVERIFY(!lastTurnUsedTools({}));
    }

    void sumsOfNumstat()
    {
        QCOMPARE(GitSummary::parseNumstat("12\t3\ta.cpp\n-\t-\tb.png\n1\t0\t{a => b}/c\n"),
                 (GitSummary::Sums {.added = 13, .removed = 3}));
        QCOMPARE(GitSummary::parseNumstat("garbage"), GitSummary::Sums());
    }
};

VESK_TEST(VersionModelsTest)
#include "VersionModelsTest.moc"
