// A folder of issues as the tracker sees it: real files in real folders.
#include "issues/IssueStore.h"

#include "core/Preferences.h"
#include "issues/IssueCreateContext.h"
#include "issues/IssueFile.h"
#include "issues/IssueFolder.h"
#include "issues/IssueFolderPreference.h"
#include "issues/IssueGrouping.h"
#include "issues/IssueSearch.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** A project with an issue folder, and the store over it. */
struct Tracked {
    QTemporaryDir project;
    Preferences preferences {project.filePath(u"preferences.ini"_s)};
    QString folder = project.filePath(u"issues"_s);

    Tracked()
    {
        QDir(project.path()).mkdir(u"issues"_s);
        IssueFolderPreference::setFolder(folder, project.path(), preferences);
    }
    void put(const QString &name, const QByteArray &bytes) const
    {
        QFile file(folder + u'/' + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

QStringList idsOf(const IssueStore &store)
{
    QStringList ids;
    for (const IssueItem &item : store.items()) {
        ids.append(item.doc.id);
    }
    return ids;
}

QString nameIn(const QString &path)
{
    return path.section(u'/', -1);
}

} // namespace

class IssueStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderIsChosenPerProject()
    {
        Tracked tracked;
        Preferences &preferences = tracked.preferences;
        const QString cwd = tracked.project.path();
        IssueFolderPreference::setFolder(u" /elsewhere//a/../issues/\n"_s, cwd + u"/./"_s, preferences);
        QCOMPARE(IssueFolderPreference::folder(cwd, preferences), u"/elsewhere/issues"_s);
        QVERIFY(!IssueFolderPreference::folder(u"/other"_s, preferences));
        IssueFolderPreference::setFolder(u" \n"_s, cwd, preferences);
        QVERIFY(!IssueFolderPreference::folder(cwd, preferences));
        QVERIFY(!preferences.contains(u"orvane.issues.folder."_s + cwd));
    }

    void aFolderComesAndGoes()
    {
        Tracked tracked;
        tracked.put(u"A-1.md"_s, "# A-1 · one\n");
        IssueFolderPreference::setFolder({}, tracked.project.path(), tracked.preferences);
        IssueStore store(tracked.project.path(), tracked.preferences);
        using Kind = IssueFolderState::Kind;
        QCOMPARE(store.folderState(), IssueFolderState {});
        QVERIFY(store.items().isEmpty());

        IssueFolderPreference::setFolder(tracked.folder, tracked.project.path(), tracked.preferences);
        store.reload();
        QCOMPARE(store.folderState(), (IssueFolderState {Kind::Ready, tracked.folder}));
        QCOMPARE(idsOf(store), QStringList {u"A-1"_s});

        QVERIFY(QDir().rename(tracked.folder, tracked.folder + u"-away"_s));
        store.reload();
        QCOMPARE(store.folderState(), (IssueFolderState {Kind::Missing, tracked.folder}));
        QVERIFY(store.items().isEmpty());
        QCOMPARE(IssueFolderPreference::folder(store.cwd(), tracked.preferences), tracked.folder);

        // Back again, as a link this time.
        QVERIFY(QFile::link(tracked.folder + u"-away"_s, tracked.folder));
        store.reload();
        QCOMPARE(store.folderState().kind, Kind::Ready);
        QCOMPARE(store.items().first().path, tracked.folder + u"/A-1.md"_s);

        QVERIFY(QFile::remove(tracked.folder));
        QFile inItsPlace(tracked.folder);
        QVERIFY(inItsPlace.open(QIODevice::WriteOnly));
        store.reload();
        QCOMPARE(store.folderState().kind, Kind::Missing);
    }

    void listsWhatAreIssues()
    {
        Tracked tracked;
        for (const char *name :
             {"A-10-ten.md", "A-9-nine.MD", "A-9-more.md", "README.MD", "Board.md", "board.md", ".draft.md",
              "notes.markdown", "notes.txt", "A-3-나\u1100\u1161.md"}) {
            tracked.put(QString::fromUtf8(name), "");
        }
        QDir(tracked.folder).mkdir(u"A-4.md"_s);
        QVERIFY(QFile::link(u"nowhere"_s, tracked.folder + u"/A-5.md"_s));
        const IssueStore store(tracked.project.path(), tracked.preferences);
        QCOMPARE(idsOf(store), (QStringList {u"A-3"_s, u"A-5"_s, u"A-9"_s, u"A-9"_s, u"A-10"_s}));
        QCOMPARE(nameIn(store.boardPath()), u"Board.md"_s);
        QCOMPARE(nameIn(store.readmePath()), u"README.MD"_s);
        QCOMPARE(store.itemWithID(u"a-9"_s)->path, tracked.folder + u"/A-9-more.md"_s);
        QCOMPARE(store.itemAtPath(tracked.folder + u"/./x/..//A-10-ten.md"_s)->doc.id, u"A-10"_s);
        QVERIFY(!store.itemAtPath(store.boardPath()));
        QCOMPARE(store.fileNames().size(), 5 + 2);
        QVERIFY(store.fileNames().contains(u"a-9-nine.md"_s));
        QVERIFY(store.fileNames().contains(u"readme.md"_s));
    }

    void whatCannotBeReadIsListedAndSaysWhy()
    {
        Tracked tracked;
        tracked.put(u"A-1-ok.md"_s, "\xEF\xBB\xBF# A-1 · marked\n| 상태 | doing |\n");
        tracked.put(u"A-2-latin.md"_s, "# A-2 · caf\xE9\n| 상태 | doing |\n");
        tracked.put(u"A-3-cut.md"_s, "# A-3 \xEA\xB0");
        QFile large(tracked.folder + u"/A-4-large.md"_s);
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(IssueFile::maxBytes + 1));
        const IssueStore store(tracked.project.path(), tracked.preferences);
        QCOMPARE(store.items().size(), 4);
        QCOMPARE(store.items().at(0).doc.title, u"marked"_s);
        QVERIFY(store.items().at(0).unreadable.isEmpty());
        for (int i = 1; i < 4; ++i) {
            QCOMPARE(store.items().at(i).doc.id, u"A-%1"_s.arg(i + 1));
            QVERIFY(store.items().at(i).doc.fields.isEmpty());
            QVERIFY(!store.items().at(i).unreadable.isEmpty());
        }
        // The board is not brought into line with what could not be read.
        QCOMPARE(store.boardEntries().size(), 1);
    }

    void rowsWithoutAFile()
    {
        Tracked tracked;
        tracked.put(
            u"BOARD.md"_s,
            "## M1 · 1차\n| ID | 제목 | 상태 |\n|---|---|---|\n| a-1 | x | todo |\n| A-20 | y | done |\n"
            "| A-3 | z | |\n");
        IssueStore store(tracked.project.path(), tracked.preferences);
        QCOMPARE(store.folderState().kind, IssueFolderState::Kind::Ready);
        auto groups = IssueGrouping::groups(store.items(), store.board());
        QCOMPARE(groups.size(), 1);
        QCOMPARE(groups.first().key, u"M1"_s);
        QCOMPARE(groups.first().title, u"M1 · 1차"_s);
        QCOMPARE(groups.first().boardOnly.size(), 3);

        tracked.put(u"A-1.md"_s, "# A-1 · x\n| 상태 | `doing` |\n| 후행 | A-20 |\n");
        store.reload();
        const auto rows = store.boardOnlyRows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(1).status, QString());
        QCOMPARE(store.graph().nodes.size(), 2);
        QCOMPARE(store.numbering().next, 21);
        groups = IssueGrouping::groups(store.items(), store.board());
        QCOMPARE(groups.size(), 2);
        QCOMPARE(groups.first().boardOnly.first().id, u"A-3"_s);
        QCOMPARE(groups.last().title, u"마일스톤 없음"_s);
        QCOMPARE(groups.last().items.size(), 1);

        // The first of several, in any case.
        tracked.put(u"a-1-later.md"_s, "# a-1 · later\n");
        store.reload();
        QCOMPARE(store.itemWithID(u"A-1"_s), &store.items().first());
        QCOMPARE(store.boardRowWithID(u"A-1"_s)->title, u"x"_s);
        QVERIFY(!store.itemWithID(u"A-20"_s) && !store.boardRowWithID(u"A-4"_s));
    }

    void groupsFollowTheBoard()
    {
        const auto item = [](const QString &id, const QString &milestone) {
            return IssueItem {id,
                              IssueDocument::parse(u"# %1 · t\n| 마일스톤 | %2 |"_s.arg(id, milestone), id)};
        };
        const IssueBoard::Board board = IssueBoard::parse(u"## M2 (6월)\n## M9\n## M1 — a\n## M1 — b\n"_s);
        const auto groups = IssueGrouping::groups({item(u"A-10"_s, u"M1"_s), item(u"A-1"_s, u"—"_s),
                                                   item(u"A-9"_s, u"M1 · x"_s), item(u"A-2"_s, u"Z"_s),
                                                   item(u"A-3"_s, u"B"_s), item(u"A-4"_s, u"M2"_s)},
                                                  board);
        QStringList shown;
        for (const IssueGroup &group : groups) {
            shown.append(group.title + u"="_s + group.items.first().doc.id);
        }
        QCOMPARE(shown,
                 (QStringList {u"M2 (6월)=A-4"_s, u"M1 — a=A-9"_s, u"B=A-3"_s, u"Z=A-2"_s,
                               u"마일스톤 없음=A-1"_s}));
    }

    void searches_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("found"); // "*": no filter
        QTest::newRow("blanks filter nothing") << u" \n\t"_s << QStringList {u"*"_s};
        QTest::newRow("nothing matches") << u"zzz"_s << QStringList();
        QTest::newRow("an id, in any case") << u" a-1 "_s << QStringList {u"a-1"_s};
        QTest::newRow("a file name") << u"LOGIN"_s << QStringList {u"a-1"_s};
        QTest::newRow("a cell as written") << u"`doing`"_s << QStringList {u"a-1"_s};
        QTest::newRow("a title, its letters apart") << u"\u1100\u1167\u11af제"_s << QStringList {u"a-1"_s};
        QTest::newRow("a row of the board") << u"only on"_s << QStringList {u"a-7"_s};
    }
    void searches()
    {
        QFETCH(QString, query);
        const IssueItem item {
            u"/x/A-1-login.md"_s,
            IssueDocument::parse(u"# A-1 · 결제\n| 상태 | `doing` — 대기 |"_s, u"A-1-login.md"_s)};
        const auto keys =
            IssueSearch::matchedKeys({item}, {{.id = u"A-7"_s, .title = u"Only On Board"_s}}, query);
        QTEST(keys ? keys->values() : QStringList {u"*"_s}, "found");
    }

    void tellsOfChangesOnly()
    {
        Tracked tracked;
        tracked.put(u"A-1.md"_s, "# A-1 · x\n| 상태 | 설계 |\n");
        tracked.put(u"A-2.md"_s, "# A-2 · x\n| 상태 | done |\n");
        tracked.put(u"A-3.md"_s, "# A-3 · x\n| 상태 | `Todo` |\n");
        IssueStore store(tracked.project.path(), tracked.preferences);
        QStringList seen;
        for (const IssueStatus &status : store.statusesSeen()) {
            seen.append(status.written());
        }
        QCOMPARE(seen, (QStringList {u"todo"_s, u"done"_s, u"설계"_s}));
        const QSignalSpy changed(&store, &IssueStore::contentChanged);
        const QSignalSpy reloaded(&store, &IssueStore::reloaded);
        store.reload();
        QCOMPARE(changed.count(), 0);
        tracked.put(u"A-2.md"_s, "# A-2 · x\n| 상태 | doing |\n");
        store.reload();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(reloaded.count(), 2);
    }

    void aNewIssueStartsFromTheFolder()
    {
        Tracked tracked;
        tracked.put(u"README.md"_s,
                    "```\n# ID — 제목\n\n| 항목 | 값 |\n|---|---|\n| 상태 | todo |\n| 영역 | — |\n```\n");
        tracked.put(u"FE-02-x.md"_s,
                    "# FE-02 · x\n| 영역 | web |\n| 상태 | 설계 |\n| 선행 | FE-07 |\n| 마일스톤 | M1 |\n");
        tracked.put(
            u"BOARD.md"_s,
            "## M1 (6월)\n| ID | 제목 | 영역 | 상태 |\n|---|---|---|---|\n| FE-07 | y | app | doing |\n");
        const IssueStore store(tracked.project.path(), tracked.preferences);
        const auto context = IssueCreateContext::of(store);
        QCOMPARE(context.survey.next, 8);
        QCOMPARE(context.survey.digits, 2);
        QCOMPARE(context.skeleton.origin, IssueTemplate::Origin::Readme);
        QCOMPARE(context.fields.key(IssueKeys::area()), u"영역"_s);
        QCOMPARE(context.areas, (QStringList {u"app"_s, u"web"_s}));
        QCOMPARE(context.milestones, QStringList {u"M1"_s});
        QCOMPARE(context.statuses.last().written(), u"설계"_s);
        QCOMPARE(context.others.size(), 2);
        QCOMPARE(context.others.last().id, u"FE-07"_s);
    }

    void knowsTheIssuesOfAFolder_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("issue");
        QTest::newRow("an issue") << u"/p/issues/A-1.md"_s << true;
        QTest::newRow("not tidy") << u"/p/x/../issues//A-1.MD"_s << true;
        QTest::newRow("the board") << u"/p/issues/Board.md"_s << false;
        QTest::newRow("the rules") << u"/p/issues/README.md"_s << false;
        QTest::newRow("hidden") << u"/p/issues/.A-1.md"_s << false;
        QTest::newRow("below") << u"/p/issues/old/A-1.md"_s << false;
        QTest::newRow("a neighbour") << u"/p/issues2/A-1.md"_s << false;
        QTest::newRow("another kind") << u"/p/issues/A-1.txt"_s << false;
        QTest::newRow("the folder") << u"/p/issues"_s << false;
        QTest::newRow("relative") << u"A-1.md"_s << false;
    }
    void knowsTheIssuesOfAFolder()
    {
        QFETCH(QString, path);
        QTEST(IssueFolder::isIssuePath(path, u"/p/issues/"_s), "issue");
        QVERIFY(!IssueFolder::isIssuePath(path, QString()));
    }
};

VESK_TEST(IssueStoreTest)
#include "IssueStoreTest.moc"
