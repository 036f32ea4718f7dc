#include "claude/ControlRequests.h"

#include "claude/JsonSlices.h"
#include "claude/PermissionText.h"
#include "claude/StreamEncoder.h"
#include "support/JsonGenerator.h"
#include "support/TestRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <rapidcheck.h>

using namespace Vesk;

namespace
{

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray toolLine(const QByteArray &input, const QByteArray &more = {}, const QByteArray &id = "r1",
                    const QByteArray &tool = "Bash")
{
    return R"({"type":"control_request","request_id":")" + id
        + R"(","request":{"subtype":"can_use_tool","tool_name":")" + tool + R"(","input":)" + input + more
        + "}}";
}

QJsonObject response(const QByteArray &line)
{
    return QJsonDocument::fromJson(line).object().value(QStringLiteral("response")).toObject();
}

QString denial(const QByteArray &line)
{
    const QJsonObject answer = response(line);
    return answer.value(QStringLiteral("request_id")).toString() + u':'
        + answer.value(QStringLiteral("response")).toObject().value(QStringLiteral("message")).toString();
}

} // namespace

class ControlRequestsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPermissionRequestIsReadWhole()
    {
        const QByteArray line = toolLine(
            R"({"command":"git status","timeout":1.50})",
            R"(,"display_name":"Shell","tool_use_id":"t1","permission_suggestions":[{"type":"addRules","rules":[{"toolName":"Bash","ruleContent":"git status:*"}],"behavior":"allow","destination":"userSettings"}])");
        const auto request = parsePermissionRequest(view(line), true);
        QVERIFY(request.has_value());
        QCOMPARE(request->requestId, QStringLiteral("r1"));
        QCOMPARE(request->displayName, QStringLiteral("Shell"));
        QCOMPARE(request->toolUseId.value(), QStringLiteral("t1"));
        QCOMPARE(request->summary, QStringLiteral("git status"));
        QCOMPARE(request->detail, QStringLiteral("command: git status\ntimeout: 1.50"));
        QCOMPARE(request->rawInputJSON, QByteArray(R"({"command":"git status","timeout":1.50})"));
        QCOMPARE(request->ruleTexts, QStringList {QStringLiteral("Bash(git status:*)")});
        QVERIFY(request->rawSuggestionsJSON->contains(R"("destination":"localSettings")"));
        QVERIFY(!request->rawSuggestionsJSON->contains("userSettings"));
        QVERIFY(request->remote);
    }

    void inputsThatAreNoObjectCountAsEmpty()
    {
        for (const char *input : {"[1]", "null", "\"x\""}) {
            const auto request = parsePermissionRequest(view(toolLine(input)), false);
            QCOMPARE(request->rawInputJSON, QByteArray("{}"));
            QCOMPARE(request->summary, QStringLiteral("Bash"));
            QCOMPARE(request->detail, QStringLiteral("Bash"));
            QCOMPARE(request->displayName, QStringLiteral("Bash"));
        }
    }

    void whatIsNoRequestForATool_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("hasId");
        const auto row = [](const char *line, bool hasId) {
            QTest::newRow(line) << QByteArray(line) << hasId;
        };
        row("{", false);
        row("[]", false);
        row(R"({"type":"control_request","request":{"subtype":"can_use_tool","tool_name":"X"}})", false);
        row(R"({"type":"control_request","request_id":1,"request":{"subtype":"can_use_tool","tool_name":"X"}})",
            false);
        row(R"({"type":"user","request_id":"r","request":{"subtype":"can_use_tool","tool_name":"X"}})", true);
        row(R"({"type":"control_request","request_id":"r","request":{"subtype":"hook_callback"}})", true);
        row(R"({"type":"control_request","request_id":"r","request":{"subtype":"can_use_tool"}})", true);
        row(R"({"type":"control_request","request_id":"r","request":[]})", true);
    }

    void whatIsNoRequestForATool()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, hasId);
        QVERIFY(!parsePermissionRequest(view(line), false));
        QCOMPARE(parseControlRequestId(view(line)).has_value(), hasId);
        const auto outcome = controlRequestOutcome(view(line), true, false, std::nullopt);
        QVERIFY(!outcome.newPending);
        QCOMPARE(outcome.denyLines.size(), hasId ? 1 : 0);
        if (hasId)
            QCOMPARE(denial(outcome.denyLines[0]), QStringLiteral("r:해석할 수 없는 권한 요청 — 자동 거부"));
    }

    void outcomesOfPermissions()
    {
        const QByteArray first = toolLine(R"({"command":"a"})");
        const QByteArray second = toolLine(R"({"command":"b"})", {}, "r2");
        const auto pending = controlRequestOutcome(view(first), true, false, std::nullopt).newPending;
        QVERIFY(pending.has_value());

        const auto replaced = controlRequestOutcome(view(second), true, false, pending);
        QCOMPARE(replaced.newPending->requestId, QStringLiteral("r2"));
        QCOMPARE(denial(replaced.denyLines.value(0)), QStringLiteral("r1:새 권한 요청으로 대체됨"));

        const auto again = controlRequestOutcome(view(first), true, false, pending);
        QVERIFY(again.newPending == pending && again.denyLines.isEmpty());

        const auto unattended = controlRequestOutcome(view(second), false, false, pending);
        QVERIFY(!unattended.newPending);
        QCOMPARE(denial(unattended.denyLines.value(0)), QStringLiteral("r2:비대화형 실행 — 자동 거부"));
    }

    void questions()
    {
        const QByteArray input =
            R"({"questions":[{"header":"no text"},{"question":"Which?","header":"H","multiSelect":true,"options":[{"description":"no label"},{"label":"A","description":""},{"label":"B","description":"d"}]},7,{"question":"Why?","options":"odd"}],"id":12345678901234567890123})";
        const QByteArray line = toolLine(input, {}, "q1", "AskUserQuestion");
        QCOMPARE(controlRequestToolName(view(line)).value(), questionToolName());
        const auto request = parseQuestionRequest(view(line), false);
        QVERIFY(request.has_value());
        QCOMPARE(request->questions.size(), 2);
        QCOMPARE(request->questions[1].id, 1);
        QVERIFY(request->questions[0].multiSelect && !request->questions[1].multiSelect);
        QCOMPARE(request->questions[0].options.size(), 2);
        QVERIFY(!request->questions[0].options[0].description);
        QCOMPARE(request->questions[0].options[1].description.value(), QStringLiteral("d"));

        const QByteArray answered = encodeQuestionUpdatedInput(
            *request,
            {{{QStringLiteral("A"), QStringLiteral("B")}, QStringLiteral(" more\n")},
             {{}, QStringLiteral(" ")}});
        QCOMPARE(answered, input.chopped(1) + R"(,"answers":{"Which?":"A, B, more"}})");

        QuestionRequest unreadable = *request;
        unreadable.rawInputJSON = "{";
        const QJsonObject rebuilt =
            QJsonDocument::fromJson(encodeQuestionUpdatedInput(unreadable, {})).object();
        QCOMPARE(rebuilt.value(QStringLiteral("questions")).toArray().size(), 2);
        QVERIFY(rebuilt.value(QStringLiteral("answers")).toObject().isEmpty());

        unreadable.rawInputJSON = R"({"answers" : {"old":1} , "x":0.10})";
        QCOMPARE(encodeQuestionUpdatedInput(unreadable, {{{}, QStringLiteral("b")}}),
                 QByteArray(R"({"answers" : {"Which?":"b"} , "x":0.10})"));
    }

    void questionsThatCannotBeAsked()
    {
        const QByteArray line =
            toolLine(R"({"questions":[{"header":"no text"}]})", {}, "q1", "AskUserQuestion");
        const auto unreadable = questionRequestOutcome(view(line), true, false, std::nullopt);
        QCOMPARE(denial(unreadable.denyLines.value(0)),
                 QStringLiteral("q1:해석할 수 없는 질문 요청 — 자동 거부"));
        const auto unattended = questionRequestOutcome(view(line), false, false, std::nullopt);
        QCOMPARE(denial(unattended.denyLines.value(0)), QStringLiteral("q1:비대화형 실행 — 질문 자동 거부"));
    }

    void details_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QString>("text"); // empty for absent
        QTest::newRow("trimmed") << QByteArray(R"("  a\tb\n ")") << "a\tb";
        QTest::newRow("blank") << QByteArray(R"(" \n")") << "";
        QTest::newRow("escapes") << QByteArray(R"("\u0041\ud83d\ude00\/")") << QStringLiteral("A😀/");
        QTest::newRow("half a pair") << QByteArray(R"("x\ud83d")") << QStringLiteral("x\ufffd");
        QTest::newRow("number as written") << QByteArray("-0.1000e+400") << "-0.1000e+400";
        QTest::newRow("bool") << QByteArray("true") << "true";
        QTest::newRow("null") << QByteArray("null") << "";
        QTest::newRow("object") << QByteArray(R"({ "a b" : [1, "c d"] })") << R"({"a b":[1,"c d"]})";
        QTest::newRow("600") << '"' + QByteArray("한").repeated(600) + '"' << QString(600, u'한');
        QTest::newRow("601") << '"' + QByteArray("한").repeated(601) + '"'
                             << QString(600, u'한') + QStringLiteral("… (+1자)");
    }

    void details()
    {
        QFETCH(QByteArray, value);
        QTEST(renderDetailValue(view(value)).value_or(QString()), "text");
    }

    void detailOrderAndDoubledKeys()
    {
        QCOMPARE(
            permissionDetail(
                QStringLiteral("T"),
                R"({"zeta":1,"new_string":"n","alpha":null,"beta":2,"path":"p","command":"first","command":"last"})"),
            QStringLiteral("command: last\npath: p\nnew_string: n\nbeta: 2\nzeta: 1"));
        QCOMPARE(
            permissionSummary(QStringLiteral("T"), R"({"command":"","content":"c","url":7,"query":"q"})"),
            QStringLiteral("q"));
    }

    void suggestions_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("sanitized"); // empty for absent
        QTest::addColumn<QStringList>("rules");
        QTest::newRow("none") << QByteArray("[]") << QByteArray() << QStringList();
        QTest::newRow("no array") << QByteArray(R"({"behavior":"allow"})") << QByteArray() << QStringList();
        QTest::newRow("nothing that allows")
            << QByteArray(R"([{"type":"setMode","mode":"acceptEdits"},{"behavior":"deny"},7])")
            << QByteArray() << QStringList();
        QTest::newRow("kept byte for byte")
            << QByteArray(R"([{"type":"addRules", "n":1e400,"destination":"session","behavior":"allow"}])")
            << QByteArray(
                   R"([{"type":"addRules", "n":1e400,"destination":"localSettings","behavior":"allow"}])")
            << QStringList {QStringLiteral(
                   R"({"type":"addRules","n":1e400,"destination":"localSettings","behavior":"allow"})")};
        QTest::newRow("added, in every spelling")
            << QByteArray(
                   R"([{"behavior":"allow"},{"behavior":"allow","desti\u006eation":"user","destination":1}])")
            << QByteArray(
                   R"([{"behavior":"allow","destination":"localSettings"},{"behavior":"allow","desti\u006eation":"localSettings","destination":"localSettings"}])")
            << QStringList {
                   QStringLiteral(R"({"behavior":"allow","destination":"localSettings"})"),
                   QStringLiteral(
                       R"({"behavior":"allow","desti\u006eation":"localSettings","destination":"localSettings"})")};
        QTest::newRow("rules")
            << QByteArray(
                   R"([{"type":"addRules","rules":[{"toolName":"Bash","ruleContent":"git status:*"},{"toolName":"Read"}],"behavior":"allow","destination":"localSettings"}])")
            << QByteArray(
                   R"([{"type":"addRules","rules":[{"toolName":"Bash","ruleContent":"git status:*"},{"toolName":"Read"}],"behavior":"allow","destination":"localSettings"}])")
            << QStringList {QStringLiteral("Bash(git status:*)"), QStringLiteral("Read")};
    }

    void suggestions()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, sanitized);
        QFETCH(QStringList, rules);
        const auto kept = sanitizeSuggestions(view(value));
        QCOMPARE(kept.value_or(QByteArray()), sanitized);
        if (kept)
            QCOMPARE(ruleTexts(view(*kept)), rules);
    }

    void responses()
    {
        const QString id = QStringLiteral("a\"b\\\n\u2028");
        QCOMPARE(response(encodeControlResponse(id, PermissionDecision::deny(QStringLiteral("no"))))
                     .value(QStringLiteral("request_id"))
                     .toString(),
                 id);
        const auto allow = [](const QByteArray &input, std::optional<QByteArray> permissions) {
            return encodeControlResponse(QStringLiteral("r"), PermissionDecision::allow(input, permissions));
        };
        const QByteArray head =
            R"({"type":"control_response","response":{"subtype":"success","request_id":"r","response":{"behavior":"allow","updatedInput":)";
        QCOMPARE(allow(R"({"n":9007199254740993123,"x":0.1000})", "[1e400]"),
                 head + R"({"n":9007199254740993123,"x":0.1000},"updatedPermissions":[1e400]}}})");
        QCOMPARE(allow("[]", "{}"), head + "{}}}}");
        QCOMPARE(allow("{", "["), head + "{}}}}");
        QCOMPARE(allow("{\n\"a\":\r1}", std::nullopt), head + "{ \"a\": 1}}}}");
    }

    void userMessagesAreAlwaysOneValidLine()
    {
        QVERIFY(rc::check([](const std::vector<char16_t> &units) {
            const QString text(reinterpret_cast<const QChar *>(units.data()),
                               static_cast<qsizetype>(units.size()));
            const QByteArray line = encodeUserMessage(text);
            const QString back = QJsonDocument::fromJson(line)
                                     .object()
                                     .value(QStringLiteral("message"))
                                     .toObject()
                                     .value(QStringLiteral("content"))
                                     .toString();
            RC_ASSERT(JsonSlices::isValidObject(view(line)));
            RC_ASSERT(!line.contains('\n'));
            RC_ASSERT(back.size() == text.size());
            RC_ASSERT(!text.isValidUtf16() || back == text);
        }));
        const QByteArray first = encodeInterruptRequest();
        QVERIFY(first != encodeInterruptRequest());
        const QString id =
            QJsonDocument::fromJson(first).object().value(QStringLiteral("request_id")).toString();
        QCOMPARE(id, QStringLiteral("orvane-interrupt-") + id.last(36).toUpper());
    }

    void anAllowCarriesTheInputsOwnBytes()
    {
        QVERIFY(rc::check([] {
            const QByteArray input = *Test::jsonObject();
            const auto request = parsePermissionRequest(view(toolLine(input)), false);
            RC_ASSERT(request.has_value());
            RC_ASSERT(request->rawInputJSON == input);
            const QByteArray line =
                encodeControlResponse(request->requestId, PermissionDecision::allow(request->rawInputJSON));
            RC_ASSERT(JsonSlices::isValidObject(view(line)));
            RC_ASSERT(line.endsWith("\"updatedInput\":" + input + "}}}"));
        }));
    }
};

VESK_TEST(ControlRequestsTest)
#include "ControlRequestsTest.moc"
