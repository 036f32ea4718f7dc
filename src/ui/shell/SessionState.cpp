#include "ui/shell/SessionState.h"

#include <array>

namespace Vesk
{

using namespace Qt::StringLiterals;

SessionState sessionState(const SessionFacts &facts)
{
    if (!facts.waitingTool.isEmpty()) {
        return SessionState::WaitApproval;
    }
    if (facts.waitingQuestions > 0) {
        return SessionState::WaitAnswer;
    }
    if (facts.unseen && facts.failed) {
        return SessionState::Failed;
    }
    if (facts.running) {
        return SessionState::Running;
    }
    if (facts.backgroundTasks > 0) {
        return SessionState::Background;
    }
    return facts.unseen ? SessionState::Finished : SessionState::Idle;
}

bool hasLiveWork(const SessionFacts &facts)
{
    return facts.running || facts.backgroundTasks > 0 || isMyTurn(sessionState(facts));
}

QString sessionTimeText(const SessionFacts &facts, const QDateTime &now)
{
    switch (sessionState(facts)) {
    case SessionState::WaitApproval:
    case SessionState::WaitAnswer:
        return ageText(facts.waitingSince, now);
    case SessionState::Running:
        return elapsedText(facts.runStartedAt, now);
    case SessionState::Background:
        return u"배경 %1"_s.arg(facts.backgroundTasks);
    case SessionState::Failed:
    case SessionState::Finished:
    case SessionState::Idle:
        break;
    }
    return momentText(facts.lastActiveAt, now);
}

QString sessionStateText(const SessionFacts &facts)
{
    switch (sessionState(facts)) {
    case SessionState::WaitApproval:
        return u"%1 승인 대기"_s.arg(facts.waitingTool);
    case SessionState::WaitAnswer:
        return u"질문 %1개"_s.arg(facts.waitingQuestions);
    case SessionState::Failed:
        return u"실패, 확인 전"_s;
    case SessionState::Running:
        return u"실행 중"_s;
    case SessionState::Background:
        return u"배경 작업 %1개 실행 중"_s.arg(facts.backgroundTasks);
    case SessionState::Finished:
        return u"끝남, 확인 전"_s;
    case SessionState::Idle:
        break;
    }
    return u"쉬는 중"_s;
}

QString myTurnReason(const SessionFacts &facts, const QDateTime &now)
{
    const SessionState state = sessionState(facts);
    if (!isMyTurn(state)) {
        return {};
    }
    const QString age = ageText(facts.waitingSince, now);
    if (age.isEmpty()) {
        return sessionStateText(facts);
    }
    const bool runsOn = state == SessionState::WaitApproval && facts.waitingSince.secsTo(now) >= 60;
    return sessionStateText(facts) + (runsOn ? u" "_s : u" · "_s) + age;
}

QString elapsedText(const QDateTime &since, const QDateTime &now)
{
    if (!since.isValid()) {
        return {};
    }
    const qint64 seconds = std::max<qint64>(0, since.secsTo(now));
    const QString tail = u"%1"_s.arg(seconds % 60, 2, 10, QLatin1Char('0'));
    const qint64 minutes = seconds / 60;
    if (minutes < 60) {
        return u"%1:%2"_s.arg(minutes).arg(tail);
    }
    return u"%1:%2:%3"_s.arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')).arg(tail);
}

QString ageText(const QDateTime &since, const QDateTime &now)
{
    if (!since.isValid()) {
        return {};
    }
    const qint64 minutes = since.secsTo(now) / 60;
    if (minutes < 1) {
        return u"방금"_s;
    }
    if (minutes < 60) {
        return u"%1분"_s.arg(minutes);
    }
    if (minutes < qint64 {24} * 60) {
        return u"%1시간"_s.arg(minutes / 60);
    }
    return u"%1일"_s.arg(minutes / (qint64 {24} * 60));
}

QString momentText(const QDateTime &moment, const QDateTime &now)
{
    if (!moment.isValid()) {
        return {};
    }
    static const std::array weekdays {u"월"_s, u"화"_s, u"수"_s, u"목"_s, u"금"_s, u"토"_s, u"일"_s};
    const QDateTime local = moment.toLocalTime();
    const QDate day = local.date();
    const qint64 daysAgo = day.daysTo(now.toLocalTime().date());
    if (daysAgo <= 0) {
        return local.toString(u"HH:mm"_s);
    }
    if (daysAgo == 1) {
        return u"어제"_s;
    }
    if (daysAgo < 7) {
        return weekdays.at(static_cast<std::size_t>(day.dayOfWeek() - 1));
    }
    return day.year() == now.toLocalTime().date().year() ? day.toString(u"M/d"_s)
                                                         : day.toString(u"yyyy/M/d"_s);
}

} // namespace Vesk
