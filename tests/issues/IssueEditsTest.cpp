// Writing from the tracker: a status set in a file, taken back, and the board brought along.
#include "core/Preferences.h"
#include "issues/IssueBoardUpdate.h"
#include "issues/IssueFolderPreference.h"
#include "issues/IssueStatusEdit.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

const auto boardText =
    "## 요약\n| 상태 | 개수 |\n|---|---|\n| `todo` | 1 |\n| `doing` | 0 |\n\n## M1\n"
    "| ID | 제목 | 상태 |\n|---|---|---|\n| [A-1](A-1.md) | mine | `todo` (note) |\n| A-9 | later | done |\n";

/** A tracker at work on a folder with one issue and a board. */
struct Tracker {
    QTemporaryDir project;
    Preferences preferences {project.filePath(u"preferences.ini"_s)};
    QString issue = project.filePath(u"A-1.md"_s);
    QString board = project.filePath(u"BOARD.md"_s);
    QStringList logged;
    QStringList flushed;
    std::unique_ptr<IssueStore> store;

    explicit Tracker(const QByteArray &issueText, const QByteArray &boardBytes = boardText)
    {
        put(issue, issueText);
        if (!boardBytes.isEmpty()) {
            put(board, boardBytes);
        }
        IssueFolderPreference::setFolder(project.path(), project.path(), preferences);
        store = std::make_unique<IssueStore>(project.path(), preferences);
    }
    IssueDesk desk()
    {
        return {*store,
                IssueWrite::live([this](const QString &path) { flushed.append(path.section(u'/', -1)); }),
                u"p"_s, [this](const AuditEvent &event) { logged.append(event.summary()); }};
    }
    static void put(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray bytesOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

IssueStatus statusOf(const QString &word)
{
    return IssueStatus::parse(word);
}

} // namespace

class IssueEditsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setsAStatusAndTakesItBack_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("style and note stay")
            << QByteArray("# A-1\r\n\r\n| 상태 | `todo` — 디자인 대기 |\r\n|x|y|\r\nrest\t\n\n")
            << QByteArray("# A-1\r\n\r\n| 상태 | `done` — 디자인 대기 |\r\n|x|y|\r\nrest\t\n\n");
        QTest::newRow("the file's own key, a byte order mark")
            << QByteArray("\xEF\xBB\xBF| State | todo |\n") << QByteArray("\xEF\xBB\xBF| State | done |\n");
        QTest::newRow("an unset one")
            << QByteArray("# A-1\n| 상태 | — |\n") << QByteArray("# A-1\n| 상태 | done |\n");
    }
    void setsAStatusAndTakesItBack()
    {
        QFETCH(QByteArray, before);
        Tracker tracker(before);
        const auto set = IssueStatusEdit::setStatus(tracker.desk(), tracker.issue, statusOf(u"done"_s));
        QCOMPARE(set.problem, QString());
        QTEST(Tracker::bytesOf(tracker.issue), "after");
        QCOMPARE(tracker.logged.first(), u"issue status=done from list: A-1.md (p)"_s);
        QCOMPARE(tracker.flushed.first(), u"A-1.md"_s);
        QCOMPARE(tracker.store->items().first().doc.status(), u"done"_s);
        QVERIFY(set.change);
        QCOMPARE(IssueStatusEdit::undo(tracker.desk(), *set.change).problem, QString());
        QCOMPARE(Tracker::bytesOf(tracker.issue), before);
    }

    void doesNotTakeBackWhatOthersWrote()
    {
        Tracker tracker("| 상태 | todo |\n");
        const auto set = IssueStatusEdit::setStatus(tracker.desk(), tracker.issue, statusOf(u"doing"_s));
        Tracker::put(tracker.issue, "| 상태 | review |\n");
        QVERIFY(set.change && !IssueStatusEdit::undo(tracker.desk(), *set.change).problem.isEmpty());
        QCOMPARE(Tracker::bytesOf(tracker.issue), QByteArray("| 상태 | review |\n"));
    }

    void saysWhyAStatusIsNotSet_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem");
        QTest::newRow("no table")
            << QByteArray("# A-1\n## s\n| 상태 | todo |\n")
            << u"이 파일엔 `| 항목 | 값 |` 표가 없어 상태를 바꿀 수 없습니다 — 상세에서 표를 "
               "추가하세요."_s;
        QTest::newRow("no text") << QByteArray("| 상태 | \xFF |\n")
                                 << u"파일을 읽지 못해 바꾸지 않았습니다: A-1.md"_s;
        QTest::newRow("nothing to change") << QByteArray("| 상태 | `done` |\n") << QString();
    }
    void saysWhyAStatusIsNotSet()
    {
        QFETCH(QByteArray, text);
        Tracker tracker(text);
        const auto set = IssueStatusEdit::setStatus(tracker.desk(), tracker.issue, statusOf(u"done"_s));
        QTEST(set.problem, "problem");
        QVERIFY(!set.change);
        QVERIFY(tracker.logged.isEmpty());
        QCOMPARE(Tracker::bytesOf(tracker.issue), text);
    }

    void aWriteThatFailsIsSaid()
    {
        Tracker tracker("| 상태 | todo |\n");
        auto desk = tracker.desk();
        desk.io.write = [](const QString &, const QString &) { return u"no room"_s; };
        const auto set = IssueStatusEdit::setStatus(desk, tracker.issue, statusOf(u"done"_s));
        QCOMPARE(set.problem, u"no room"_s);
        QVERIFY(!set.change && tracker.logged.isEmpty());
    }

    void linksStayLinks()
    {
        const QTemporaryDir elsewhere;
        const QString real = elsewhere.filePath(u"real.md"_s);
        Tracker tracker("");
        Tracker::put(real, "| 상태 | todo |\n");
        QVERIFY(QFile::remove(tracker.issue) && QFile::link(real, tracker.issue));
        QCOMPARE(IssueStatusEdit::setStatus(tracker.desk(), tracker.issue, statusOf(u"done"_s)).problem,
                 QString());
        QVERIFY(QFileInfo(tracker.issue).isSymLink());
        QCOMPARE(Tracker::bytesOf(real), QByteArray("| 상태 | done |\n"));

        const QString loop = tracker.project.filePath(u"A-2.md"_s);
        QVERIFY(QFile::link(loop, loop));
        QCOMPARE(IssueWrite::live({}).write(loop, u"x"_s),
                 u"심볼릭 링크가 순환합니다 — 어디에 써야 할지 알 수 없어 쓰지 않았습니다"_s);
        QCOMPARE(IssueWrite::live({}).create(tracker.issue, u"x"_s), IssueWrite::nameTakenText());
        QVERIFY(IssueWrite::live({}).create(loop, u"x"_s).has_value());
        QCOMPARE(Tracker::bytesOf(real), QByteArray("| 상태 | done |\n"));
    }

    void theBoardComesAlong()
    {
        Tracker tracker("# A-1 · x\n| 상태 | todo |\n| 마일스톤 | M1 |\n");
        Tracker::put(tracker.project.filePath(u"A-2.md"_s),
                     "# A-2 · new\n| 상태 | todo |\n| 마일스톤 | M1 |\n");
        tracker.store->reload();
        (void)IssueStatusEdit::setStatus(tracker.desk(), tracker.issue, statusOf(u"doing"_s));
        const QByteArray board = Tracker::bytesOf(tracker.board);
        QVERIFY(board.contains("| [A-1](A-1.md) | mine | `doing` (note) |\n"));
        QVERIFY(board.contains("| `doing` | 1 |\n"));
        QVERIFY(!board.contains("A-2"));
        QCOMPARE(tracker.logged,
                 (QStringList {u"issue status=doing from list: A-1.md (p)"_s,
                               u"board auto-sync deferred rows (p): A-2"_s,
                               u"board synced (auto) (p): status=1 added=0 summary=1"_s}));
        QCOMPARE(tracker.store->board().rows.first().status, u"doing"_s);
    }

    void theBoardOnRequest()
    {
        Tracker tracker("# A-1 · x\n| 상태 | done |\n| 마일스톤 | M1 |\n");
        Tracker::put(tracker.project.filePath(u"A-2.md"_s),
                     "# A-2 · new\n| 상태 | todo |\n| 마일스톤 | M1 |\n");
        const auto proposed = IssueBoardUpdate::propose(tracker.desk());
        QVERIFY(proposed.has_value());
        QCOMPARE(proposed->added, QStringList {u"A-2"_s});
        QCOMPARE(Tracker::bytesOf(tracker.board), QByteArray(boardText));

        // Somebody writes on the board while the person looks at the preview.
        Tracker::put(tracker.board, QByteArray(boardText) + "\na word of theirs\n");
        const auto done = IssueBoardUpdate::apply(tracker.desk());
        QVERIFY(done.has_value());
        QVERIFY(Tracker::bytesOf(tracker.board).contains("| [A-2](A-2.md) | new | `todo` |\n"));
        QVERIFY(Tracker::bytesOf(tracker.board).endsWith("\na word of theirs\n"));
        QCOMPARE(tracker.logged, QStringList {u"board synced (p): status=1 added=1 summary=0"_s});
        QVERIFY(!IssueBoardUpdate::propose(tracker.desk())->changesAnything());

        Tracker::put(tracker.board, "\xFF");
        QCOMPARE(IssueBoardUpdate::apply(tracker.desk()).error(), u"BOARD.md를 읽지 못했습니다"_s);
        QCOMPARE(Tracker::bytesOf(tracker.board), QByteArray("\xFF"));
    }
};

VESK_TEST(IssueEditsTest)
#include "IssueEditsTest.moc"
