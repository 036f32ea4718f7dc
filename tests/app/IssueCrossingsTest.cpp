// An issue handed to a session, and a session's link back into the tracker.
#include "app/IssueCrossings.h"

#include "app/Runtime.h"
#include "issues/IssueFolderPreference.h"
#include "sessions/ProjectChat.h"
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

/** A Runtime with one project "p" and its issue folder. */
struct Handoff {
    QTemporaryDir folder;
    QString project = folder.filePath(u"project"_s);
    QString issues = project + u"/issues"_s;
    ExecutableLocator locator {QString()};
    AuditLogger audit {folder.filePath(u"audit.log"_s)};
    Preferences preferences {folder.filePath(u"preferences.ini"_s)};
    std::unique_ptr<Runtime> runtime;
    QStringList windows; ///< as they were called for

    Handoff()
    {
        QDir().mkpath(issues);
        IssueFolderPreference::setFolder(issues, project, preferences);
        start();
    }
    void start()
    {
        runtime.reset();
        runtime =
            std::make_unique<Runtime>(audit, preferences,
                                      RuntimePaths {.catalog = folder.filePath(u"projects.json"_s),
                                                    .writableSecrets = folder.filePath(u"secrets.env"_s),
                                                    .candidateSecrets = {},
                                                    .drafts = folder.filePath(u"drafts.json"_s)},
                                      locator);
        runtime->start();
        runtime->upsertCatalogEntry({.alias = u"p"_s, .path = project});
        runtime->openMainWindow = [this] { windows.append(u"main"_s); };
        runtime->issues().openIssuesWindow = [this](const QString &alias) { windows.append(alias); };
    }
    [[nodiscard]] QString put(const QString &name, const QByteArray &bytes) const
    {
        QFile file(issues + u'/' + name);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) >= 0 ? file.fileName() : QString();
    }
    [[nodiscard]] QList<ProjectChat *> sessions() const { return runtime->agentStore().sessions(); }
    [[nodiscard]] QString lastLog() const { return audit.recent(1).constFirst().summary; }
};

QStringList notesOf(const ProjectChat &chat)
{
    QStringList notes;
    for (const ChatMessage &row : chat.messages().rows()) {
        notes.append(row.text);
    }
    return notes;
}

} // namespace

class IssueCrossingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anIssueIsHandedToANewSession_data()
    {
        QTest::addColumn<QByteArray>("issue");
        QTest::addColumn<ClaudeModel>("model");
        QTest::addColumn<AgentEffort>("effort");
        QTest::addColumn<int>("notes");
        QTest::newRow("what it recommends")
            << QByteArray("# A-1\n| 추천 모델 | `SONNET` |\n| 추천 Effort | X-High |\n")
            << ClaudeModel::Sonnet << AgentEffort::XHigh << 0;
        QTest::newRow("nothing") << QByteArray("# A-1\n| 추천 모델 | — |\n") << ClaudeModel::Opus
                                 << AgentEffort::High << 0;
        QTest::newRow("what means nothing") << QByteArray("# A-1\n| Recommended Model | GPT 9 |\n")
                                            << ClaudeModel::Opus << AgentEffort::High << 1;
        QTest::newRow("no text") << QByteArray("\xFF") << ClaudeModel::Opus << AgentEffort::High << 0;
    }
    void anIssueIsHandedToANewSession()
    {
        QFETCH(QByteArray, issue);
        Handoff handoff;
        const QString path = handoff.put(u"A-1-x.md"_s, issue);
        QSignalSpy chosen(&handoff.runtime->issues(), &IssueCrossings::sessionChosen);
        handoff.runtime->issues().workOnIssue(u"nobody"_s, path);
        QVERIFY(handoff.sessions().isEmpty() && handoff.windows.isEmpty());

        handoff.runtime->issues().workOnIssue(u"p"_s, path);
        QCOMPARE(handoff.sessions().size(), 1);
        const ProjectChat &chat = *handoff.sessions().constFirst();
        QVERIFY(chat.composerInput().startsWith(u"issues/A-1-x.md 이슈를 처리하자. "_s));
        QVERIFY(chat.composerInput().endsWith(u" 먼저 알려줘."_s));
        QTEST(chat.model(), "model");
        QTEST(chat.effort(), "effort");
        QFETCH(int, notes);
        QCOMPARE(notesOf(chat).size(), notes);
        QVERIFY(!chat.isRunning());
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(handoff.windows, QStringList {u"main"_s});
        QCOMPARE(handoff.lastLog(), u"issue session for 'A-1-x.md' (p)"_s);

        QCOMPARE(handoff.runtime->issues().sessionsOn(handoff.issues + u"/./A-1-x.md"_s), handoff.sessions());
        handoff.runtime->closeSession(handoff.sessions().constFirst());
        QVERIFY(handoff.runtime->issues().sessionsOn(path).isEmpty());
    }

    void aPathOutsideOfTheProjectStaysWhole()
    {
        Handoff handoff;
        const QString path = handoff.project + u"-2/A-1.md"_s;
        handoff.runtime->issues().workOnIssue(u"p"_s, path);
        QVERIFY(handoff.sessions().constFirst()->composerInput().startsWith(path + u" 이슈를"_s));
    }

    void theDraftIsKeptAndDisplacesNoOther()
    {
        Handoff handoff;
        const QString path = handoff.put(u"A-1.md"_s, "# A-1\n");
        handoff.runtime->newSession(u"p"_s)->setComposerInput(u"half a thought"_s);
        handoff.runtime->stop();

        handoff.start();
        handoff.runtime->issues().workOnIssue(u"p"_s, path);
        const ProjectChat *working = handoff.sessions().constFirst();
        const ProjectChat *plain = handoff.runtime->newSession(u"p"_s);
        QTRY_COMPARE(plain->composerInput(), u"half a thought"_s);
        QVERIFY(working->composerInput().startsWith(u"issues/A-1.md "_s));
        handoff.runtime->stop();
        handoff.runtime.reset(); // waits for the file
        QFile drafts(handoff.folder.filePath(u"drafts.json"_s));
        QVERIFY(drafts.open(QIODevice::ReadOnly));
        QVERIFY(drafts.readAll().contains("issues/A-1.md 이슈를 처리하자."));
    }

    void anEmptyFolderIsFilled()
    {
        Handoff handoff;
        handoff.runtime->issues().startIssueTriage(u"p"_s, handoff.issues, u"FE"_s);
        const QString draft = handoff.sessions().constFirst()->composerInput();
        QVERIFY(draft.startsWith(u"issues/README.md의 이슈 관리 규칙을 먼저 읽어."_s));
        QVERIFY(draft.contains(u"`FE-<번호>-<영문-슬러그>.md`(001부터)"_s));
        QVERIFY(draft.contains(u" issues/BOARD.md의 표와 요약을 "_s));
        QCOMPARE(handoff.lastLog(), u"issue triage session for p (%1, key=FE)"_s.arg(handoff.issues));
        QCOMPARE(handoff.windows, QStringList {u"main"_s});
    }

    void aLinkLeadsIntoTheTracker()
    {
        Handoff handoff;
        QVERIFY(QFile::link(handoff.issues, handoff.folder.filePath(u"link"_s)));
        IssueCrossings &issues = handoff.runtime->issues();
        ProjectChat *chat = handoff.runtime->newSession(u"p"_s);
        const QString path = handoff.issues + u"/A-1.md"_s;
        // Where the link led: nowhere, unless the tracker was called for and has its request.
        const auto shownFor = [&](const QString &linked, const QString &realPath) {
            handoff.windows.clear();
            const bool shown = chat->onFileLink(linked, realPath);
            const auto request = issues.takeSelectionRequest(u"p"_s);
            const bool consistent = shown == request.has_value() && handoff.windows.size() == (shown ? 1 : 0);
            return !consistent ? u"?"_s : shown ? request->path : QString();
        };
        QCOMPARE(shownFor(path, path), path);
        QCOMPARE(handoff.lastLog(), u"chat link → issue 'A-1.md' (p)"_s);
        QCOMPARE(shownFor(handoff.folder.filePath(u"link/A-1.md"_s), path),
                 path);                                         // through a link to the folder
        QCOMPARE(shownFor(path, u"/elsewhere/A-1.md"_s), path); // an issue that is itself a link
        QCOMPARE(shownFor(handoff.issues + u"/BOARD.md"_s, handoff.issues + u"/BOARD.md"_s), QString());
        QCOMPARE(shownFor(handoff.project + u"/A-1.md"_s, handoff.project + u"/A-1.md"_s), QString());
        // Of what is not there it is only told whose it would be.
        handoff.windows.clear();
        QVERIFY(chat->onFileLink(handoff.issues + u"/A-2.md"_s, {}));
        QVERIFY(!chat->onFileLink(handoff.project + u"/A-2.md"_s, {}));
        QVERIFY(handoff.windows.isEmpty() && !issues.takeSelectionRequest(u"p"_s));

        issues.openIssueFromChat(u"p"_s, path);
        QVERIFY(!issues.takeSelectionRequest(u"q"_s));
        const auto first = issues.takeSelectionRequest(u"p"_s);
        issues.openIssueFromChat(u"p"_s, path);
        QVERIFY(first && issues.takeSelectionRequest(u"p"_s)->token != first->token);
        QVERIFY(!issues.takeSelectionRequest(u"p"_s));

        issues.openIssuesWindow = nullptr;
        QVERIFY(!chat->onFileLink(path, path));
    }
};

VESK_TEST(IssueCrossingsTest)
#include "IssueCrossingsTest.moc"
