// Drafts over a restart, and the walk through what was sent.
#include "sessions/DraftKeeper.h"

#include "claude/ClaudeCLI.h"
#include "sessions/AgentSessionStore.h"
#include "sessions/SentMessages.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>
#include <QtTest>

#include <rapidcheck.h>

#include <atomic>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

/** One run of the program. */
struct Run {
    explicit Run(const QString &file)
        : keeper(store, file)
    {
    }
    ProjectChat &open(const QString &folder = u"/nowhere/a"_s, const ClaudeProjectSettings &settings = {})
    {
        return *store.newSession({.alias = folder, .path = folder}, false, settings);
    }
    static void converse(ProjectChat &chat, std::string_view id)
    {
        chat.handleLine(R"({"type":"system","subtype":"init","session_id":")" + std::string(id) + R"("})");
    }

    ExecutableLocator locator {u"/bin/true"_s}; // without an event loop it never even starts
    AgentSessionStore store {{.locator = &locator}};
    DraftKeeper keeper;
};

} // namespace

class DraftKeeperTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void draftsComeBackToTheirSessions()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"drafts.json"_s);
        QFile attached(folder.filePath(u"a.txt"_s));
        QVERIFY(attached.open(QIODevice::WriteOnly));
        {
            Run run(file);
            auto &talked = run.open();
            Run::converse(talked, "c1");
            talked.setComposerInput(u"이어서"_s);
            auto &fresh = run.open();
            fresh.restoreComposerDraft({u"처음 보내는 글"_s, 2, {attached.fileName()}});
            run.open(u"/nowhere/b"_s).setComposerInput(u"closed with its tab"_s);
            run.store.remove(run.store.sessions().last()->id());
            run.open().setComposerInput(u"sent"_s);
            run.store.sessions().last()->setComposerInput({});
            run.keeper.save();
        }
        QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        {
            Run run(file);
            auto &filled = run.open();
            filled.setComposerInput(u"put there by who opened it"_s);
            auto &fresh = run.open();
            auto &second = run.open();
            auto &other = run.open(u"/nowhere/b"_s);
            auto &talked = run.open();
            Run::converse(talked, "c1");
            QTRY_COMPARE(talked.composerInput(), u"이어서"_s);
            QCOMPARE(fresh.composerDraft(), (ComposerDraft {u"처음 보내는 글"_s, 2, {attached.fileName()}}));
            QCOMPARE(filled.composerInput(), u"put there by who opened it"_s);
            QVERIFY(second.composerDraft().isEmpty());
            QVERIFY(other.composerDraft().isEmpty());
            // Closed now, opened again later.
            run.store.remove(talked.id());
            attached.remove();
            run.keeper.save();
        }
        Run run(file);
        run.open().setComposerInput(u"other"_s);
        auto &fresh = run.open();
        QTRY_VERIFY(!fresh.composerInput().isEmpty());
        QVERIFY2(fresh.attachments().isEmpty(), "a file that is gone does not come back");
    }

    void messagesThatWaitForTheirTurnAreDraftsToo()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"drafts.json"_s);
        QFile attached(folder.filePath(u"a.txt"_s));
        QVERIFY(attached.open(QIODevice::WriteOnly));
        {
            Run run(file);
            auto &chat = run.open();
            Run::converse(chat, "c1");
            chat.send(u"sent"_s);
            chat.send(u"second"_s);
            QVERIFY(chat.addAttachment(attached.fileName()));
            chat.send({});
            chat.send(u"third"_s);
            chat.setComposerInput(u"half"_s);
            chat.setComposerCaret(1);
            run.keeper.save();
        }
        Run run(file);
        auto &chat = run.open();
        Run::converse(chat, "c1");
        QTRY_COMPARE(chat.composerDraft(),
                     (ComposerDraft {u"second\n\nthird\n\nhalf"_s, 16, {attached.fileName()}}));
    }

    void aNoteOnTheSettingsKeepsNoDraftAway()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"drafts.json"_s);
        {
            Run run(file);
            run.open().setComposerInput(u"text"_s);
            run.keeper.save();
        }
        Run run(file);
        ClaudeProjectSettings settings;
        settings.unknownMode = ClaudeSettingsMap::UnknownMode {u"yolo"_s};
        const auto &chat = run.open(u"/nowhere/a"_s, settings);
        QVERIFY(!chat.messages().isEmpty());
        QTRY_COMPARE(chat.composerInput(), u"text"_s);
    }

    void aFailedWriteIsMadeUpFor()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"below/drafts.json"_s);
        Run run(file);
        run.open().setComposerInput(u"text"_s);
        static std::atomic_bool warned;
        const auto handler = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &) { warned = true; });
        const auto restore = qScopeGuard([handler] { qInstallMessageHandler(handler); });
        run.keeper.save();
        QTRY_VERIFY(warned);
        QVERIFY(QDir(folder.path()).mkdir(u"below"_s));
        QTRY_VERIFY((run.keeper.save(), QFile::exists(file)));
    }

    void aFileThatCannotBeReadStaysAsItIs()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"drafts.json"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write("{\"drafts\": [");
        file.flush();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"no file of drafts"_s));
        {
            Run run(file.fileName());
            run.open().setComposerInput(u"text"_s);
            run.keeper.save();
        }
        file.seek(0);
        QCOMPARE(file.readAll(), "{\"drafts\": [");
    }

    void anyDraftIsReadAsItWasWritten()
    {
        QVERIFY(rc::check([] {
            const auto text = *rc::gen::element(u"a"_s, u"가나\n다"_s, u"\"\\\t"_s, u"\U0001F600 x"_s);
            SavedDraft saved {*rc::gen::element(QString(), u"c1"_s),
                              u"/a"_s,
                              {text, *rc::gen::inRange<qsizetype>(0, text.size() + 1), {}},
                              QDateTime::fromMSecsSinceEpoch(*rc::gen::inRange(0, 1'000'000), Qt::UTC)};
            if (*rc::gen::arbitrary<bool>())
                saved.draft.attachments = {u"/x/y.png"_s, u"/z"_s};
            RC_ASSERT(decodeDrafts(encodeDrafts({saved})).value() == QList {saved});
        }));
        QList<SavedDraft> many;
        for (int i = 0; i < 60; ++i)
            many.append(
                {{}, u"/a"_s, {QString::number(i), 0, {}}, QDateTime::fromSecsSinceEpoch(i, Qt::UTC)});
        const auto kept = decodeDrafts(encodeDrafts(many)).value();
        QCOMPARE(kept.size(), maxSavedDrafts);
        QCOMPARE(kept.last().draft.text, u"10"_s);
        QCOMPARE(decodeDrafts(R"({"drafts":[5,{},{"folder":"/a"},{"folder":"/a","text":"x","caret":9e9}]})")
                     .value()
                     .first()
                     .draft.caret,
                 1);
    }

    void sentMessagesComeBackOneByOne()
    {
        Transcript transcript;
        for (const auto &text : {u"one"_s, u"two"_s, u"two"_s, u""_s, u"three"_s}) {
            ChatMessage row;
            row.text = text;
            transcript.append(row);
        }
        const QStringList sent = sentMessages(transcript);
        QCOMPARE(sent, (QStringList {u"one"_s, u"two"_s, u"three"_s}));
        SentMessageWalk walk;
        QVERIFY(!walk.newer(sent, {}, 0));
        QVERIFY(!walk.older({}, {}, 0));
        QVERIFY2(!walk.older(sent, u"my own"_s, 6), "a text of one's own keeps its keys");
        QCOMPARE(walk.older(sent, {}, 0), u"three"_s);
        QCOMPARE(walk.older(sent, u"three"_s, 5), u"two"_s);
        QVERIFY2(!walk.older(sent, u"two"_s, 1), "the caret was moved");
        QVERIFY2(!walk.newer(sent, u"two!"_s, 4), "the text was changed");
        QCOMPARE(walk.older(sent, u"two"_s, 3), u"one"_s);
        QCOMPARE(walk.older(sent, u"one"_s, 3), u"one"_s);
        QCOMPARE(walk.newer(sent, u"one"_s, 3), u"two"_s);
        QCOMPARE(walk.newer(sent, u"two"_s, 3), u"three"_s);
        QCOMPARE(walk.newer(sent, u"three"_s, 5), QString());
        QVERIFY(!walk.newer(sent, {}, 0));
    }
};

VESK_TEST(DraftKeeperTest)
#include "DraftKeeperTest.moc"
