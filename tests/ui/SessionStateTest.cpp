// What the mark of a session says, and the words beside it.
#include "ui/shell/SessionState.h"

#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

const QDateTime noon(QDate(2026, 3, 18), QTime(12, 0)); // a Wednesday

QDateTime ago(qint64 seconds)
{
    return noon.addSecs(-seconds);
}

} // namespace

class SessionStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void precedence_data()
    {
        QTest::addColumn<SessionFacts>("facts");
        QTest::addColumn<SessionState>("state");
        QTest::addColumn<QString>("time");
        const SessionFacts everything {.running = true,
                                       .unseen = true,
                                       .failed = true,
                                       .backgroundTasks = 2,
                                       .waitingTool = u"Bash"_s,
                                       .waitingQuestions = 2,
                                       .waitingSince = ago(240),
                                       .runStartedAt = ago(84),
                                       .lastActiveAt = ago(3600)};
        SessionFacts facts = everything;
        QTest::newRow("approval") << facts << SessionState::WaitApproval << u"4분"_s;
        facts.waitingTool.clear();
        QTest::newRow("answer") << facts << SessionState::WaitAnswer << u"4분"_s;
        facts.waitingQuestions = 0;
        QTest::newRow("failed, not seen") << facts << SessionState::Failed << u"11:00"_s;
        facts.failed = false;
        QTest::newRow("running") << facts << SessionState::Running << u"1:24"_s;
        facts.running = false;
        QTest::newRow("background") << facts << SessionState::Background << u"배경 2"_s;
        facts.backgroundTasks = 0;
        QTest::newRow("finished, not seen") << facts << SessionState::Finished << u"11:00"_s;
        facts.unseen = false;
        facts.failed = true;
        QTest::newRow("a failure that was seen") << facts << SessionState::Idle << u"11:00"_s;
    }

    void precedence()
    {
        QFETCH(SessionFacts, facts);
        QTEST(sessionState(facts), "state");
        QTEST(sessionTimeText(facts, noon), "time");
        QCOMPARE(myTurnReason(facts, noon).isEmpty(), !isMyTurn(sessionState(facts)));
    }

    void times_data()
    {
        QTest::addColumn<QDateTime>("moment");
        QTest::addColumn<QString>("elapsed");
        QTest::addColumn<QString>("age");
        QTest::addColumn<QString>("date");
        QTest::newRow("now") << noon << u"0:00"_s << u"방금"_s << u"12:00"_s;
        QTest::newRow("a clock that went back") << noon.addSecs(90) << u"0:00"_s << u"방금"_s << u"12:01"_s;
        QTest::newRow("minutes") << ago(187) << u"3:07"_s << u"3분"_s << u"11:56"_s;
        QTest::newRow("hours") << ago(7265) << u"2:01:05"_s << u"2시간"_s << u"09:58"_s;
        QTest::newRow("last night") << ago(13L * 3600) << u"13:00:00"_s << u"13시간"_s << u"어제"_s;
        QTest::newRow("monday") << ago(48L * 3600) << u"48:00:00"_s << u"2일"_s << u"월"_s;
        QTest::newRow("a week") << ago(168L * 3600) << u"168:00:00"_s << u"7일"_s << u"3/11"_s;
        QTest::newRow("another year") << QDateTime(QDate(2025, 12, 31), QTime(12, 0)) << u"1848:00:00"_s
                                      << u"77일"_s << u"2025/12/31"_s;
        QTest::newRow("never") << QDateTime() << QString() << QString() << QString();
    }

    void times()
    {
        QFETCH(QDateTime, moment);
        QTEST(elapsedText(moment, noon), "elapsed");
        QTEST(ageText(moment, noon), "age");
        QTEST(momentText(moment, noon), "date");
    }

    void reasons()
    {
        SessionFacts facts {.waitingTool = u"Bash"_s, .waitingSince = ago(70)};
        QCOMPARE(myTurnReason(facts, noon), u"Bash 승인 대기 1분"_s);
        facts.waitingSince = noon;
        QCOMPARE(myTurnReason(facts, noon), u"Bash 승인 대기 · 방금"_s);
        facts = {.waitingQuestions = 2, .waitingSince = ago(240)};
        QCOMPARE(myTurnReason(facts, noon), u"질문 2개 · 4분"_s);
    }
};

VESK_TEST(SessionStateTest)
#include "SessionStateTest.moc"
