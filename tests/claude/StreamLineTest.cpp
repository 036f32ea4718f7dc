#include "claude/StreamLine.h"

#include "base/LineChunker.h"
#include "claude/StreamEventKind.h"
#include "support/TestRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <rapidcheck.h>

using namespace Vesk;
using Kind = StreamEventKind;

Q_DECLARE_METATYPE(Vesk::StreamEventKind)

namespace
{

std::optional<StreamLine> decode(const QByteArray &line)
{
    StreamDecoder decoder;
    return decoder.decode({line.constData(), static_cast<std::size_t>(line.size())});
}

} // namespace

class StreamLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatDecodesAtAll_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("decodes");
        const auto row = [](const char *line, bool decodes) {
            QTest::newRow(line) << QByteArray(line) << decodes;
        };
        row(R"({"type":"x"})", true);
        row(R"( {"type":""} )", true);
        row(R"({"type":"assistant","message":7,"parent_tool_use_id":{},"is_error":"no"})", true);
        row(R"({"type":"x","n":100000000000000000000,"d":-1e400})", true);
        row(R"({"type":"x","cut":"\ud83d"})", true);
        row(R"({"subtype":"init"})", false);
        row(R"({"type":1})", false);
        row(R"([{"type":"x"}])", false);
        row("", false);
        row("  ", false);
        row("text", false);
        row(R"({"type":"x"} {"type":"x"})", false);
        row(R"({"type":"x","later":tru})", false);
        row(R"({"type":"x","n":0123})", false);
        row(R"({"type":"x","n":1.e5})", false);
        row(R"({"type":"x","s":"\ud83"})", false);
        row("{\"type\":\"x\",\"s\":\"\xff\"}", false);
    }

    void whatDecodesAtAll()
    {
        QFETCH(QByteArray, line);
        QTEST(decode(line).has_value(), "decodes");
    }

    void classification_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<StreamEventKind>("kind");
        const auto row = [](const char *line, StreamEventKind kind) {
            QTest::newRow(line) << QByteArray(line) << kind;
        };
        row(R"({"type":"control_request","parent_tool_use_id":"t"})", Kind::ControlRequest);
        row(R"({"type":"control_cancel_request","request_id":"r"})", Kind::ControlCancel);
        row(R"({"type":"control_response","response":{"request_id":"r"}})", Kind::ControlResponse);
        row(R"({"type":"rate_limit_event"})", Kind::RateLimit);
        row(R"({"type":"system","subtype":"task_started","parent_tool_use_id":"t"})", Kind::Task);
        row(R"({"type":"system","subtype":"init","parent_tool_use_id":"t"})", Kind::Subagent);
        row(R"({"type":"stream_event","parent_tool_use_id":"t"})", Kind::Subagent);
        row(R"({"type":"novelty","parent_tool_use_id":"t"})", Kind::Subagent);
        row(R"({"type":"system","subtype":"init","parent_tool_use_id":null})", Kind::Init);
        row(R"({"type":"system","subtype":"status"})", Kind::Status);
        row(R"({"type":"system","subtype":"thinking_tokens"})", Kind::ThinkingTokens);
        row(R"({"type":"system","subtype":"api_retry"})", Kind::ApiRetry);
        row(R"({"type":"system","subtype":"hook_response"})", Kind::KnownSystem);
        row(R"({"type":"system","subtype":"compact_boundary"})", Kind::KnownSystem);
        row(R"({"type":"system","subtype":"novelty"})", Kind::Unknown);
        row(R"({"type":"system"})", Kind::Unknown);
        row(R"({"type":"stream_event"})", Kind::StreamEvent);
        row(R"({"type":"assistant"})", Kind::Assistant);
        row(R"({"type":"user"})", Kind::User);
        row(R"({"type":"result"})", Kind::Result);
        row(R"({"type":"novelty"})", Kind::Unknown);
    }

    void classification()
    {
        QFETCH(QByteArray, line);
        QFETCH(StreamEventKind, kind);
        const auto decoded = decode(line);
        QVERIFY(decoded.has_value());
        QVERIFY(classify(*decoded) == kind);
    }

    void deltas()
    {
        const auto text = decode(
            R"({"type":"stream_event","parent_tool_use_id":null,"event":{"index":0,"delta":{"text":"안녕\n\u0041\ud83d\ude00","type":"text_delta"},"type":"content_block_delta"}})");
        QCOMPARE(text->event->type, QStringLiteral("content_block_delta"));
        QCOMPARE(text->event->delta->type, QStringLiteral("text_delta"));
        QCOMPARE(text->event->delta->text.value(), QStringLiteral("안녕\nA😀"));
        QVERIFY(!text->parentToolUseId);

        const auto stop = decode(R"({"type":"stream_event","event":{"type":"message_stop"}})");
        QVERIFY(stop->event && !stop->event->delta);
        QVERIFY(!decode(R"({"type":"stream_event","event":{"delta":{}}})")->event);
    }

    void messages()
    {
        const auto uses = decode(
            R"({"type":"assistant","parent_tool_use_id":"t0","message":{"model":"m","usage":{"input_tokens":3,"output_tokens":4.0,"cache_read_input_tokens":"x","cache_creation_input_tokens":9223372036854775807},"content":["odd",{"type":"tool_use","id":"t1","name":"Bash","input":{"command":"ls","n":9007199254740993,"big":100000000000000000000,"list":[null,true]}},{"type":"text","input":null}]}})");
        const StreamMessage &message = *uses->message;
        QCOMPARE(uses->parentToolUseId.value(), QStringLiteral("t0"));
        QCOMPARE(message.usage->inputTokens.value(), 3);
        QCOMPARE(message.usage->outputTokens.value(), 4);
        QVERIFY(!message.usage->cacheReadInputTokens && !message.usage->cacheCreationInputTokens);
        QCOMPARE(message.content.size(), 2);
        QCOMPARE(message.content[0].name.value(), QStringLiteral("Bash"));
        const QJsonObject input = message.content[0].input.toObject();
        QCOMPARE(input.value(QStringLiteral("command")).toString(), QStringLiteral("ls"));
        QCOMPARE(input.value(QStringLiteral("n")).toInteger(), 9007199254740993);
        QCOMPARE(input.value(QStringLiteral("big")).toDouble(), 1e20);
        QVERIFY(message.content[1].input.isNull());

        const auto results = decode(
            R"({"type":"user","message":{"content":[{"type":"tool_result","tool_use_id":"a","content":"whole"},{"type":"tool_result","content":[{"type":"text","text":"one"},{"type":"image"},7,{"type":"text","text":"two"}],"is_error":true},{"type":"tool_result"}]}})");
        const auto &blocks = results->message->content;
        QCOMPARE(blocks[0].resultText(), QStringLiteral("whole"));
        QCOMPARE(blocks[1].resultText(), QStringLiteral("one\ntwo"));
        QVERIFY(!blocks[0].isError && blocks[1].isError);
        QVERIFY(blocks[2].resultText().isEmpty());

        const auto bare = decode(R"({"type":"user","message":{"content":"local command"}})");
        QVERIFY(bare->message && bare->message->content.isEmpty());
    }

    void longInputsAreCutForTheSummary()
    {
        const QByteArray text = "a" + QByteArray("한").repeated(5000);
        const auto line =
            decode(R"({"type":"assistant","message":{"content":[{"type":"tool_use","input":{"content":)"
                   + ('"' + text) + "\"}}]}}");
        const QString kept =
            line->message->content[0].input.toObject().value(QStringLiteral("content")).toString();
        QVERIFY(QString::fromUtf8(text).startsWith(kept));
        QCOMPARE(kept.toUtf8().size(), 4096);
    }

    void longContentsAreCutAndCounted_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<qsizetype>("kept");
        QTest::addColumn<qsizetype>("dropped");
        const auto row = [](const char *name, const QByteArray &content, qsizetype kept, qsizetype dropped) {
            QTest::newRow(name) << content << kept << dropped;
        };
        const auto text = [](qsizetype size) { return '"' + QByteArray(size, 'x') + '"'; };
        row("at the limit", text(65536), 65536, 0);
        row("over it", text(65540), 65536, 4);
        row("inside a character", "\"xx" + QByteArray("한").repeated(21845) + '"', 65534, 3);
        row("only its end is blank", "\"" + QByteArray(65536, 'x') + "\\n \"", 65536, 0);
        row("all blank", '"' + QByteArray(70000, ' ') + '"', 0, 0);
        row("in two items", R"([{"text":)" + text(65000) + R"(},{"text":)" + text(1000) + "}]", 65536, 465);
    }

    void longContentsAreCutAndCounted()
    {
        QFETCH(QByteArray, content);
        const auto line = decode(R"({"type":"user","message":{"content":[{"type":"tool_result","content":)"
                                 + content + "}]}}");
        const StreamContent &block = line->message->content[0];
        QTEST(block.resultText().toUtf8().size(), "kept");
        QTEST(block.contentDroppedBytes, "dropped");
    }

    void results()
    {
        const auto line = decode(
            R"({"type":"result","subtype":"error_max_budget_usd","is_error":true,"errors":["a",1,"b"],"total_cost_usd":2,"permission_denials":[{"tool_name":"Bash"},{},3],"modelUsage":{"m":{"inputTokens":1,"contextWindow":200000},"odd":1}})");
        QVERIFY(line->isError && !line->result);
        QCOMPARE(line->errors, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(line->totalCostUsd.value(), 2.0);
        QCOMPARE(line->permissionDenials.value(),
                 QStringList({QStringLiteral("Bash"), QString(), QString()}));
        QCOMPARE(line->modelUsage->size(), 1);
        QCOMPARE(line->modelUsage->value(QStringLiteral("m")).contextWindow.value(), 200000);
    }

    void systemLines()
    {
        const auto init = decode(
            R"({"type":"system","subtype":"init","session_id":"s","permissionMode":"plan","capabilities":["c"],"slash_commands":["a",2,"a"]})");
        QCOMPARE(init->sessionId.value(), QStringLiteral("s"));
        QCOMPARE(init->permissionMode.value(), QStringLiteral("plan"));
        QCOMPARE(init->slashCommands.value(), QStringList({QStringLiteral("a"), QStringLiteral("a")}));

        const auto task = decode(
            R"({"type":"system","subtype":"task_updated","task_id":"t","patch":{"status":"killed"},"usage":{"total_tokens":5},"workflow_progress":[{"type":"agent","index":1,"state":"done"},"odd"]})");
        QCOMPARE(task->task->patchStatus.value(), QStringLiteral("killed"));
        QCOMPARE(task->task->usage->totalTokens.value(), 5);
        QCOMPARE(task->task->workflowProgress->size(), 1);
        QCOMPARE(task->task->workflowProgress->constFirst().index.value(), 1);

        const auto retry = decode(R"({"type":"system","subtype":"api_retry","attempt":2,"max_retries":10})");
        QCOMPARE(retry->attempt.value(), 2);
        QCOMPARE(retry->maxRetries.value(), 10);
    }

    void limitsAndAnswers()
    {
        const auto limit = decode(
            R"({"type":"rate_limit_event","rate_limit_info":{"status":"allowed","isUsingOverage":false,"unifiedWindows":{"five_hour":{"utilization":0.5,"resetsAt":1764000000}}}})");
        QVERIFY(limit->rateLimitInfo->isUsingOverage == false);
        const auto window = limit->rateLimitInfo->unifiedWindows->value(QStringLiteral("five_hour"));
        QCOMPARE(window.utilization.value(), 0.5);
        QCOMPARE(window.resetsAt.value(), 1764000000.0);
        QCOMPARE(decode(R"({"type":"control_response","response":{"request_id":"r1"}})")->requestId.value(),
                 QStringLiteral("r1"));
        QCOMPARE(decode(R"({"type":"control_cancel_request","request_id":"r2"})")->requestId.value(),
                 QStringLiteral("r2"));
    }

    void anyCutOfALineIsSafeAndPaddingChangesNothing()
    {
        const QByteArray line =
            R"({"type":"user","message":{"content":[{"type":"tool_result","content":"\u00e9 \ud83d\ude00 한","n":[1e400,-0.5]}]}})";
        QVERIFY(rc::check([&] {
            const int length = *rc::gen::inRange(0, static_cast<int>(line.size()) + 1);
            const int at = *rc::gen::inRange(0, static_cast<int>(line.size()));
            QByteArray text = line.left(length);
            if (at < text.size())
                text[at] = *rc::gen::arbitrary<char>();
            const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
            const QByteArray padded = text + QByteArray(LineChunker::padding, '}');

            StreamDecoder decoder;
            const auto copied = decoder.decode(view);
            const auto inPlace =
                decoder.decode({padded.constData(), static_cast<std::size_t>(text.size())}, true);
            RC_ASSERT(copied.has_value() == inPlace.has_value());
            if (copied) {
                RC_ASSERT(copied->type == inPlace->type);
                RC_ASSERT(classify(*copied) == classify(*inPlace));
                RC_ASSERT(copied->message.has_value() == inPlace->message.has_value());
            }
        }));
    }

    void aDecoderRecoversFromAHugeLine()
    {
        StreamDecoder decoder;
        const std::string huge = R"({"type":"huge","text":[])" + std::string(6 << 20, ' ') + "}";
        for (const std::string_view line : {std::string_view(huge), std::string_view(R"({"type":"x"})"),
                                            std::string_view("{"), std::string_view(huge)})
            QCOMPARE(decoder.decode(line).has_value(), line != "{");
    }
};

VESK_TEST(StreamLineTest)
#include "StreamLineTest.moc"
