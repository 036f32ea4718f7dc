// What a session's surface says, decided without a window.
#include "core/UsageRecorder.h"
#include "support/TestRegistry.h"
#include "ui/chat/ChatViewModel.h"
#include "ui/chat/ChatWords.h"
#include "ui/chat/ComposerKeys.h"
#include "ui/ChatStage.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QImage>
#include <QMimeData>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

ToolActivity call(const QString &id, const QString &name, ToolActivity::Outcome outcome, int milliseconds)
{
    ToolActivity tool;
    tool.id = id;
    tool.name = name;
    tool.summary = name + u" · …/b/c.txt"_s;
    tool.outcome = outcome;
    tool.startedAt = QDateTime::fromMSecsSinceEpoch(1000);
    if (outcome != ToolActivity::Outcome::Running) {
        tool.finishedAt = tool.startedAt.addMSecs(milliseconds);
        tool.output = u"output"_s;
    }
    return tool;
}

constexpr int completes = 1; // beside the modifiers, in a row of the keys

constexpr auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;

} // namespace

class ChatModelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void words()
    {
        using namespace ChatWords;
        QCOMPARE(elapsed(-5), u"0:00"_s);
        QCOMPARE(elapsed(84), u"1:24"_s);
        QCOMPARE(elapsed(3723), u"1:02:03"_s);
        QCOMPARE(duration(59'990), u"59.9초"_s);
        QCOMPARE(duration(72'000), u"1분 12초"_s);
        QCOMPARE(waiting(59), u"방금"_s);
        QCOMPARE(waiting(60), u"1분째 대기"_s);
        QCOMPARE(tokens(999), u"999"_s);
        QCOMPARE(tokens(999'499), u"999k"_s);
        QCOMPARE(tokens(999'500), u"1.0M"_s);
        QCOMPARE(tokens(1'000'000), u"1M"_s);
        const QDateTime noon(QDate(2026, 3, 4), QTime(12, 5));
        QCOMPARE(rowTime(noon, noon.addSecs(60)), u"12:05"_s);
        QCOMPARE(rowTime(noon, noon.addDays(1)), u"3/4 12:05"_s);
    }

    void aToolGroupFoldsByItselfUntilItIsTouched()
    {
        auto folding = std::make_shared<ToolFolding>();
        ToolGroupModel group(folding);
        const QAbstractItemModelTester tester(&group, fatal);
        using Outcome = ToolActivity::Outcome;
        group.setTools(
            {call(u"1"_s, u"Grep"_s, Outcome::Ok, 300), call(u"2"_s, u"Read"_s, Outcome::Running, 0)});
        QVERIFY(group.isOpen());
        QCOMPARE(group.total(), QString());
        group.setTools({call(u"1"_s, u"Grep"_s, Outcome::Ok, 300), call(u"2"_s, u"Read"_s, Outcome::Ok, 5900),
                        call(u"3"_s, u"Read"_s, Outcome::Ok, 0)});
        QCOMPARE(group.title(), u"도구 3개"_s);
        QCOMPARE(group.counts(), u"Read 2 · Grep 1"_s);
        QCOMPARE(group.total(), u"6.2초"_s);
        QCOMPARE(group.failures(), QString());
        QCOMPARE(group.data(group.index(0), ToolGroupModel::SummaryRole).toString(), u"…/b/c.txt"_s);
        group.setTextFollows(true);
        QVERIFY(!group.isOpen());

        int recorded = 0;
        UsageRecorder::setSink([&recorded](FeatureSignal signal) {
            recorded += signal == FeatureSignal::ToolActivityExpanded ? 1 : 0;
        });
        group.toggle();
        group.toggleOutput(1);
        group.toggleOutput(1);
        group.toggleOutput(2);
        UsageRecorder::setSink({});
        QCOMPARE(recorded, 2);
        QVERIFY(group.data(group.index(2), ToolGroupModel::OutputOpenRole).toBool());
        group.setTextFollows(true);
        QVERIFY2(group.isOpen(), "a group that was touched stays as it is");

        QVERIFY(!toolGroupIsOpen({}, true, false));
        QVERIFY2(toolGroupIsOpen({}, true, true), "a failure stays in sight");
    }

    void theTimelineFollowsATranscript()
    {
        Transcript transcript;
        TimelineModel model;
        const QAbstractItemModelTester tester(&model, fatal);
        model.setTranscript(&transcript);
        transcript.reset({Test::row(ChatMessage::Role::User, u"하나"_s)});
        auto group = Test::row(ChatMessage::Role::Tools, {});
        group.tools = {call(u"t"_s, u"Read"_s, ToolActivity::Outcome::Ok, 10)};
        const auto groupId = transcript.append(group);
        auto *tools = model.borrow(1);
        QVERIFY(tools->tools()->isOpen());
        auto placeholder = Test::row(ChatMessage::Role::Assistant, {});
        placeholder.streaming = true;
        const auto answer = transcript.append(placeholder);
        QVERIFY2(tools->tools()->isOpen(), "an empty row is no text");
        QSignalSpy arrived(&model, &TimelineModel::arrived);
        transcript.appendText(answer, u"답"_s);
        QCOMPARE(arrived.size(), 1);
        QVERIFY(!tools->tools()->isOpen());
        tools->tools()->toggle();
        model.release(tools);
        transcript.insert(0, Test::row(ChatMessage::Role::Activity, u"알림"_s));
        QVERIFY2(model.borrow(static_cast<int>(transcript.index(groupId)))->tools()->isOpen(),
                 "what the person did outlives the row's place on the screen");
        QCOMPARE(model.data(model.index(3), TimelineModel::AccessibleTextRole).toString(), u"에이전트: 답"_s);
        transcript.remove(groupId);
        QCOMPARE(model.rowCount(), 3);
        model.setTranscript(nullptr);
        QCOMPARE(model.rowCount(), 0);
    }

    void onlyChangedBlocksAreAnnounced()
    {
        MarkdownBlockModel model;
        const QAbstractItemModelTester tester(&model, fatal);
        model.setText(u"first\n\nsecond"_s, true);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        model.setText(u"first\n\nsecond grows"_s, true);
        model.setText(u"first\n\nsecond grows on"_s, true);
        QCOMPARE(changed.size(), 0); // too soon
        QTRY_COMPARE(changed.size(), 1);
        QCOMPARE(changed.first().first().toModelIndex().row(), 1);
        QCOMPARE(inserted.size(), 0);
        model.setText(u"first\n\nsecond grows on\n\n```cpp\nint x;"_s, false); // the end is read at once
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(model.data(model.index(2), MarkdownBlockModel::IsLastRole).toBool());
        QVERIFY(!model.data(model.index(1), MarkdownBlockModel::IsLastRole).toBool());
        model.setText({}, false);
        QCOMPARE(model.rowCount(), 0);
    }

    void anyTextMayBecomeAnyOther()
    {
        QVERIFY(rc::check([] {
            MarkdownBlockModel model;
            const QAbstractItemModelTester tester(&model, fatal);
            const auto piece = rc::gen::element(u"# a\n"_s, u"text\n\n"_s, u"- item\n"_s, u"```\ncode\n"_s,
                                                u"|a|b|\n|-|-|\n|1|2|\n"_s, u"---\n\n"_s, u"> q\n\n"_s);
            for (int step = 0; step < 5; ++step) {
                QString text;
                for (const auto &part : *rc::gen::container<std::vector<QString>>(piece)) {
                    text += part;
                }
                model.setText(text, false);
                MarkdownBlockModel fresh;
                fresh.setText(text, false);
                RC_ASSERT(model.rowCount() == fresh.rowCount());
                for (int row = 0; row < model.rowCount(); ++row) {
                    RC_ASSERT(model.itemData(model.index(row)) == fresh.itemData(fresh.index(row)));
                }
            }
        }));
    }

    void detailsAreCutAtRealArgumentsAlone()
    {
        PermissionRequest request;
        request.rawInputJSON = R"({"command":"x","timeout":600000})";
        request.detail = u"command: first\nfake: no argument\n  indented\ntimeout: 600000"_s;
        const auto lines = permissionDetailLines(request);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.at(0).value, u"first\nfake: no argument\n  indented"_s);
        QCOMPARE(lines.at(1).key, u"timeout"_s);
        request.rawInputJSON = "{}";
        request.detail = u"Bash"_s;
        QCOMPARE(permissionDetailLines(request), (QList<PermissionDetailLine> {{QString(), u"Bash"_s}}));
    }

    void questionsCountAsAnsweredWhenTheyAre()
    {
        Test::ChatStage stage;
        QVERIFY(stage.run(u"일"_s));
        QuestionForm form;
        const QAbstractItemModelTester tester(&form, fatal);
        form.setChat(&stage.chat());
        stage.askQuestions(
            u"q"_s,
            {QJsonObject {{u"question"_s, u"하나?"_s},
                          {u"options"_s, QJsonArray {Test::option(u"예"_s), Test::option(u"아니요"_s)}}},
             QJsonObject {{u"question"_s, u"여럿?"_s},
                          {u"multiSelect"_s, true},
                          {u"options"_s, QJsonArray {Test::option(u"가"_s), Test::option(u"나"_s)}}}});
        QCOMPARE(form.title(), u"에이전트가 2가지를 물었습니다"_s);
        QVERIFY(form.chooseDigit(2));
        QVERIFY(form.chooseDigit(1)); // one choice takes the place of the other
        QCOMPARE(form.progressText(), u"2개 중 1개 답함"_s);
        QVERIFY(form.chooseDigit(3));
        QVERIFY(form.chooseDigit(4));
        QVERIFY(form.chooseDigit(3)); // and back
        QVERIFY(!form.chooseDigit(5));
        QVERIFY(form.allAnswered());
        form.setOther(1, u" 다 "_s);
        form.setOther(0, u"직접"_s); // takes the place of the option
        const auto answers = form.answers();
        QCOMPARE(answers.at(0).selected, QStringList());
        QCOMPARE(answers.at(0).other, u"직접"_s);
        QCOMPARE(answers.at(1).selected, QStringList {u"나"_s});
        form.chooseDigit(1);
        QCOMPARE(form.answers().at(0).other, QString());
        form.setOther(0, u"   "_s);
        QVERIFY2(form.allAnswered(), "blank text is no answer and takes none away");
        form.sendAnswers();
        QVERIFY(!form.isOpen());
        QCOMPARE(form.rowCount(), 0);
    }

    void waitingMessagesGoOutOfTheQueue()
    {
        Test::ChatStage stage;
        PendingSends pending;
        const QAbstractItemModelTester tester(&pending, fatal);
        pending.setChat(&stage.chat());
        QVERIFY(stage.run(u"일"_s));
        stage.chat().send(u"둘째\n줄"_s);
        stage.chat().send(u"셋째"_s);
        QCOMPARE(pending.countText(), u"2건"_s);
        QCOMPARE(pending.data(pending.index(0), PendingSends::TextRole).toString(), u"둘째 줄"_s);
        stage.chat().setComposerInput(u"쓰던 글"_s);
        pending.takeBack(0);
        QCOMPARE(stage.chat().composerInput(), u"쓰던 글\n둘째\n줄"_s);
        stage.chat().send(u"넷째"_s);
        pending.remove(0);
        QCOMPARE(pending.data(pending.index(0), PendingSends::TextRole).toString(), u"넷째"_s);
        pending.cancelAll();
        QCOMPARE(pending.count(), 0);
    }

    void aPromptBehindAnotherTakesNoAnswerAtOnce()
    {
        using namespace std::chrono_literals;
        const PromptGuard::Clock::time_point start {1h};
        PromptGuard guard;
        guard.follow(u"a"_s, start);
        QVERIFY2(guard.takesAnswers(start), "nothing stood there before");
        guard.noteAnswered(start);
        guard.follow({}, start);
        guard.follow(u"b"_s, start + 100ms); // under the second half of a double click
        QVERIFY(!guard.takesAnswers(start + 599ms));
        guard.follow(u"b"_s, start + 600ms);
        QVERIFY(guard.takesAnswers(start + 600ms));
        guard.follow(u"c"_s, start + 10s); // in the place of one that is open
        QVERIFY(!guard.takesAnswers(start + 10s));
        guard.noteAnswered(start + 11s);
        guard.follow({}, start + 11s);
        guard.follow(u"d"_s, start + 12s);
        QVERIFY(guard.takesAnswers(start + 12s));
    }

    void aQuestionsClickDoesNotReachThePermissionBehindIt()
    {
        Test::ChatStage stage;
        ChatViewModel view;
        view.setChat(&stage.chat());
        QVERIFY(stage.run(u"일"_s));
        stage.askQuestions(u"q"_s, {QJsonObject {{u"question"_s, u"?"_s}}});
        QElapsedTimer since;
        since.start();
        stage.askPermission(u"r"_s, u"Bash"_s, {{u"command"_s, u"rm -rf x"_s}});
        view.permission()->allowOnce();
        if (!since.hasExpired(PromptGuard::pause.count()))
            QVERIFY(stage.chat().pendingPermission());
        QTRY_VERIFY((view.permission()->deny(), !stage.chat().pendingPermission()));
    }

    void noticesPickersAndStatus()
    {
        Test::ChatStage stage;
        ChatViewModel view;
        const QAbstractItemModelTester notices(view.notices(), fatal);
        const QAbstractItemModelTester modes(view.composer()->modes(), fatal);
        view.setChat(&stage.chat());
        QVERIFY(!view.status()->isRunning());
        view.composer()->modes()->choose(3);
        QVERIFY(stage.run(u"일"_s));
        QVERIFY(!view.isEmpty());
        QVERIFY(view.status()->hint().contains(u"Stop 버튼"_s));
        stage.stream(u"답"_s);
        QCOMPARE(view.status()->activity(), u"응답 작성 중…"_s);
        stage.askPermission(u"r"_s, u"Bash"_s, {{u"command"_s, u"ls"_s}});
        QVERIFY(!view.status()->hint().contains(u"Stop"_s));
        view.permission()->allowAlways();
        QVERIFY2(view.permission()->isOpen(), "without suggestions there is no always");
        view.permission()->deny();
        view.composer()->modes()->choose(4); // the live child keeps its mode
        QCOMPARE(view.composer()->modes()->label(), u"Auto"_s);
        QCOMPARE(view.composer()->modes()->drift(),
                 u"지금 세션은 Accept edits로 실행 중 — 변경은 새 프로세스부터"_s);
        QCOMPARE(view.notices()->rowCount(), 1);
        stage.chat().handleStderrLine(u"trouble"_s);
        stage.say({{u"type"_s, u"result"_s},
                   {u"subtype"_s, u"success"_s},
                   {u"is_error"_s, false},
                   {u"result"_s, u"끝"_s},
                   {u"permission_denials"_s,
                    QJsonArray {QJsonObject {{u"tool_name"_s, u"WebFetch"_s}},
                                QJsonObject {{u"tool_name"_s, u"Bash"_s}},
                                QJsonObject {{u"tool_name"_s, u"WebFetch"_s}}}}});
        QStringList texts;
        for (int row = 0; row < view.notices()->rowCount(); ++row) {
            texts << view.notices()->data(view.notices()->index(row), NoticeList::TextRole).toString();
        }
        QVERIFY2(texts.contains(u"도구 권한 거부 WebFetch 2 · Bash 1. 탭하면 원인 설명."_s),
                 qPrintable(texts.join(u'|')));
        QVERIFY(texts.contains(u"stderr 1줄"_s));
        QVERIFY(!view.composer()->canStop());
        view.setChat(nullptr);
        QCOMPARE(view.notices()->rowCount(), 0);
        QVERIFY(view.isEmpty());
    }

    void theContextIsUnknownUntilItIsKnown()
    {
        const auto gauge = [](qint64 tokens, std::optional<qint64> window) {
            return contextGauge(ContextLive {tokens, u"claude-opus-4-5-20251101"_s, window, false});
        };
        QCOMPARE(contextGauge(std::nullopt).sizeText, u"?"_s);
        QCOMPARE(gauge(124'000, {}).sizeText, u"124k / ?"_s);
        QCOMPARE(gauge(124'000, {}).percentText, QString());
        QCOMPARE(gauge(124'000, {}).modelText, u"Opus 4.5"_s);
        QCOMPARE(gauge(124'321, 200'000).help, u"컨텍스트 124,321 / 200,000 토큰 (62%) · Opus 4.5"_s);
        QCOMPARE(gauge(210'000, 200'000).percentText, u"105%"_s);
    }

    void composerKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("composing");
        QTest::addColumn<int>("sinceEnd");
        QTest::addColumn<int>("meaning");
        const auto row = [](const char *name, int key, int modifiers, bool composing, int sinceEnd,
                            ComposerKey meaning) {
            QTest::newRow(name) << key << modifiers << composing << sinceEnd << static_cast<int>(meaning);
        };
        row("enter", Qt::Key_Return, Qt::NoModifier, false, -1, ComposerKey::Send);
        row("keypad", Qt::Key_Enter, Qt::KeypadModifier, false, -1, ComposerKey::Send);
        row("shift", Qt::Key_Return, Qt::ShiftModifier, false, -1, ComposerKey::Text);
        row("composing", Qt::Key_Return, Qt::NoModifier, true, -1, ComposerKey::InputMethod);
        row("composing tab", Qt::Key_Tab, Qt::NoModifier, true, -1, ComposerKey::InputMethod);
        row("composing letter", Qt::Key_A, Qt::NoModifier, true, -1, ComposerKey::Text);
        row("ends a syllable", Qt::Key_Return, Qt::NoModifier, false, 3, ComposerKey::InputMethod);
        row("later", Qt::Key_Return, Qt::NoModifier, false, 400, ComposerKey::Send);
        row("escape", Qt::Key_Escape, Qt::NoModifier, false, -1, ComposerKey::Interrupt);
        row("escape ends a syllable", Qt::Key_Escape, Qt::NoModifier, false, 3, ComposerKey::InputMethod);
        row("composing escape", Qt::Key_Escape, Qt::NoModifier, true, -1, ComposerKey::InputMethod);
        row("up", Qt::Key_Up, Qt::NoModifier, false, -1, ComposerKey::Older);
        row("shift up", Qt::Key_Up, Qt::ShiftModifier, false, -1, ComposerKey::Text);
        row("tab", Qt::Key_Tab, Qt::NoModifier, false, -1, ComposerKey::Text);
        const auto completing = [&row](const char *name, int key, bool composing, int sinceEnd,
                                       ComposerKey meaning) {
            row(name, key, completes, composing, sinceEnd, meaning);
        };
        completing("takes by enter", Qt::Key_Return, false, -1, ComposerKey::TakeCandidate);
        completing("takes by tab", Qt::Key_Tab, false, 400, ComposerKey::TakeCandidate);
        completing("tab ends a syllable", Qt::Key_Tab, false, 3, ComposerKey::InputMethod);
        completing("up in the list", Qt::Key_Up, false, -1, ComposerKey::PreviousCandidate);
        completing("down in the list", Qt::Key_Down, false, -1, ComposerKey::NextCandidate);
        completing("closes", Qt::Key_Escape, false, -1, ComposerKey::RefuseCandidates);
        completing("composing in front of the list", Qt::Key_Down, true, -1, ComposerKey::InputMethod);
    }

    void composerKeys()
    {
        QFETCH(const int, key);
        QFETCH(const int, modifiers);
        QFETCH(const bool, composing);
        QFETCH(const int, sinceEnd);
        QFETCH(const int, meaning);
        const CompositionState state {composing,
                                      sinceEnd < 0 ? std::nullopt : std::optional<qint64>(sinceEnd)};
        QCOMPARE(static_cast<int>(composerKey(key, Qt::KeyboardModifiers(modifiers & ~completes), state,
                                              (modifiers & completes) != 0)),
                 meaning);
    }

    void attachmentsAndRefusals()
    {
        Test::ChatStage stage;
        AttachmentList list;
        const QAbstractItemModelTester tester(&list, fatal);
        list.setChat(&stage.chat());
        QFile file(stage.path(u"환불 화면.png"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(2048, 'x'));
        file.close();
        list.add({QUrl::fromLocalFile(file.fileName()), QUrl::fromLocalFile(stage.path(u"a,b.csv"_s))});
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.data(list.index(0), AttachmentList::SizeRole).toString(), u"2KB"_s);
        QCOMPARE(list.refusal(), u"첨부할 수 없는 파일입니다 — a,b.csv"_s);
        QVERIFY(file.remove());
        QVERIFY(!list.areAllThere());
        QCOMPARE(list.count(), 0);
        QCOMPARE(list.refusal(), u"첨부할 수 없는 파일입니다 — 환불 화면.png"_s);
    }

    void picturesAreSavedBesideTheWindow()
    {
        Test::ChatStage stage;
        ComposerModel composer;
        composer.setChat(&stage.chat());
        auto &list = *composer.attachments();
        const QAbstractItemModelTester tester(&list, fatal);
        QMimeData picture;
        QImage image(3000, 2000, QImage::Format_RGB32);
        image.fill(Qt::red);
        picture.setImageData(image);
        QMimeData broken;
        broken.setData(u"image/png"_s, "nonsense");
        QMimeData text;
        text.setText(u"text"_s);
        QVERIFY(!list.paste(text));

        QVERIFY(list.paste(broken));
        QCOMPARE(list.data(list.index(0), AttachmentList::SavingRole).toBool(), true);
        QVERIFY2(!composer.send(), "it waits for the picture");
        QTRY_VERIFY(!list.isSaving());
        QCOMPARE(list.refusal(), u"첨부할 수 없는 파일입니다 — 이미지"_s);
        QVERIFY2(!stage.chat().isRunning(), "what was refused is not left out unseen");

        QVERIFY(list.paste(picture));
        QVERIFY(list.paste(picture));
        list.remove(0);
        QVERIFY(!composer.send());
        QTRY_VERIFY(stage.chat().isRunning());
        QVERIFY(!list.isSaving());
        const auto sent = stage.chat().messages().rows().first().attachments;
        QCOMPARE(sent.size(), 1);
        QVERIFY(sent.first().startsWith(stage.path(u"caches/attachments/pasted-"_s)));
        QCOMPARE(QImage(sent.first()).size(), image.size());
        QCOMPARE(ChatWords::attachmentName(sent.first()), u"이미지"_s);
        const QDir cache(stage.path(u"caches/attachments"_s));
        QTRY_COMPARE(cache.entryList(QDir::Files), QStringList {QFileInfo(sent.first()).fileName()});
    }
};

VESK_TEST(ChatModelsTest)
#include "ChatModelsTest.moc"
