#include "sessions/PromptDesk.h"

#include "support/TestRegistry.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Vesk;

namespace
{

QByteArray permission(const QByteArray &id, const QByteArray &input = "{}", const QByteArray &more = {})
{
    QByteArray line = R"({"type":"control_request","request_id":"ID","request":{"subtype":"can_use_tool",)"
                      R"("tool_name":"Bash","display_name":"Shell","input":INPUT MORE}})";
    return line.replace("ID", id).replace("INPUT", input).replace("MORE", more);
}

QByteArray question(const QByteArray &id)
{
    QByteArray line = R"({"type":"control_request","request_id":"ID","request":{"subtype":"can_use_tool",)"
                      R"("tool_name":"AskUserQuestion","input":{"n":1.50e+30,"questions":[)"
                      R"({"question":"Which?","options":[{"label":"A"},{"label":"B"}]}]}}})";
    return line.replace("ID", id);
}

/** A desk, what it wrote, and the words of the last denial. */
struct Desk {
    QList<QByteArray> written;
    PromptDesk desk {[this](const QByteArray &line) { written << line; }};

    PromptDesk::Arrival arrive(const QByteArray &line, bool interactive = true)
    {
        return desk.handleControlRequest(std::string_view(line.constData(), size_t(line.size())), interactive,
                                         false, QDateTime::fromSecsSinceEpoch(written.size()));
    }
    /** "id: message" of each denial written. */
    QStringList denials() const
    {
        QStringList texts;
        for (const QByteArray &line : written) {
            const QJsonObject response =
                QJsonDocument::fromJson(line).object().value(u"response"_qs).toObject();
            texts << response.value(u"request_id"_qs).toString() + u": "_qs
                    + response.value(u"response"_qs).toObject().value(u"message"_qs).toString();
        }
        return texts;
    }
};

} // namespace

class PromptDeskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneRequestReplacesAnother_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("second");
        QTest::addColumn<QStringList>("denials");
        QTest::addColumn<QString>("replaced");
        QTest::newRow("permission by permission")
            << permission("a") << permission("b") << QStringList {u"a: 새 권한 요청으로 대체됨"_qs}
            << u"Shell"_qs;
        QTest::newRow("question by permission")
            << question("a") << permission("b") << QStringList {u"a: 권한 요청으로 대체됨"_qs}
            << u"Which?"_qs;
        QTest::newRow("permission by question")
            << permission("a") << question("b") << QStringList {u"a: 질문 요청으로 대체됨"_qs} << u"Shell"_qs;
        QTest::newRow("question by question")
            << question("a") << question("b") << QStringList {u"a: 새 질문 요청으로 대체됨"_qs}
            << u"Which?"_qs;
        QTest::newRow("the same again") << permission("a") << permission("a") << QStringList() << QString();
        QTest::newRow("not by an unreadable one")
            << permission("a") << QByteArray(R"({"type":"control_request","request_id":"b","request":{}})")
            << QStringList {u"b: 해석할 수 없는 권한 요청 — 자동 거부"_qs} << QString();
    }

    void oneRequestReplacesAnother()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, second);
        Desk desk;
        desk.arrive(first);
        const auto arrival = desk.arrive(second);
        QTEST(desk.denials(), "denials");
        QTEST(arrival.replaced.value_or(QString()), "replaced");
        QVERIFY(desk.desk.pendingPermission().has_value() != desk.desk.pendingQuestion().has_value());
    }

    void nobodyAttends()
    {
        Desk desk;
        QVERIFY(!desk.arrive(permission("a"), false).questionSkipped);
        QVERIFY(desk.arrive(question("b"), false).questionSkipped);
        QVERIFY(desk.desk.isEmpty());
        QCOMPARE(desk.denials(),
                 (QStringList {u"a: 비대화형 실행 — 자동 거부"_qs, u"b: 비대화형 실행 — 질문 자동 거부"_qs}));
    }

    void answersGoBackByteForByte()
    {
        const QByteArray input = R"({"n":12345678901234567890,"e":1.50e+3,"s":"\u00e9\/"})";
        const QByteArray more =
            R"(,"permission_suggestions":[{"type":"addRules","rules":[{"toolName":"Bash"}],"behavior":"allow",)"
            R"("destination":"session"}])";
        Desk desk;
        desk.arrive(permission("a", input, more));
        QCOMPARE(*desk.desk.respondToPermission(PermissionChoice::Once), u"승인됨 — 도구 실행 중…"_qs);
        QVERIFY(desk.written.last().contains(R"("updatedInput":)" + input));
        QVERIFY(!desk.written.last().contains("updatedPermissions"));

        desk.arrive(permission("b", input, more));
        desk.desk.respondToPermission(PermissionChoice::Always);
        QVERIFY(desk.written.last().contains(R"("updatedPermissions":[)"));
        QVERIFY(desk.written.last().contains("localSettings"));

        desk.arrive(permission("c", input));
        QCOMPARE(*desk.desk.respondToPermission(PermissionChoice::Deny), u"거부 전달됨 — 계속 진행 중…"_qs);
        QVERIFY(desk.written.last().contains("사용자가 거부했습니다"));

        QVERIFY(!desk.desk.respondToPermission(PermissionChoice::Once)); // a late click answers nothing
        QCOMPARE(desk.written.size(), 3);
    }

    void questionAnswers()
    {
        Desk desk;
        desk.arrive(question("a"));
        QCOMPARE(*desk.desk.respondToQuestion({{{u"B"_qs}, u" mine "_qs}}), u"답 전달됨 — 계속 진행 중…"_qs);
        QVERIFY(desk.written.last().contains(R"("n":1.50e+30)"));
        QVERIFY(desk.written.last().contains(R"("Which?":"B, mine")"));
        desk.arrive(question("b"));
        QCOMPARE(*desk.desk.respondToQuestion({{{}, u" "_qs}}), u"답 없이 진행 — 계속 진행 중…"_qs);
        QVERIFY(!desk.desk.respondToQuestion({}));
    }

    void onlyTheNamedRequestIsWithdrawn()
    {
        Desk desk;
        desk.arrive(permission("a"));
        QVERIFY(!desk.desk.withdraw(u"other"_qs));
        QVERIFY(desk.desk.since().isValid());
        QCOMPARE(*desk.desk.withdraw(u"a"_qs), u"Shell"_qs);
        QVERIFY(desk.desk.isEmpty());
        QVERIFY(!desk.desk.since().isValid());
        QVERIFY(desk.written.isEmpty());
    }
};

VESK_TEST(PromptDeskTest)

#include "PromptDeskTest.moc"
