#include "ui/shell/AttentionPlan.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype linesPerGroup = 10;
constexpr qsizetype labelCharacters = 60;
constexpr qsizetype toastsAtOnce = 2;

QString noticeId(const QString &key, AttentionSignal signal)
{
    return key + (signal == AttentionSignal::MyTurn ? "/my-turn"_L1 : "/finished"_L1);
}

QDateTime signalSince(const SessionFacts &facts)
{
    return attentionSignal(facts) == AttentionSignal::MyTurn ? facts.waitingSince : facts.lastActiveAt;
}

bool isSameSignal(const AttentionTold &a, const AttentionTold &b)
{
    return a.key == b.key && a.signal == b.signal && a.since == b.since;
}

DesktopNotice noticeOf(const AttentionSession &session)
{
    if (attentionSignal(session.facts) == AttentionSignal::MyTurn) {
        return {.title = u"내 차례 — "_s + session.project,
                .body = session.title + u'\n' + sessionStateText(session.facts),
                .category = u"x-vesk.turn"_s,
                .sound = u"message-new-instant"_s,
                .stays = true};
    }
    const bool failed = sessionState(session.facts) == SessionState::Failed;
    return {.title = (failed ? u"실패 — "_s : u"끝남 — "_s) + session.project,
            .body =
                failed && !session.error.isEmpty() ? session.title + u'\n' + session.error : session.title,
            .category = u"x-vesk.finished"_s,
            .sound = failed ? u"dialog-warning"_s : u"complete"_s,
            .stays = false};
}

bool isRunning(SessionState state)
{
    return state == SessionState::Running || state == SessionState::Background;
}

bool isUnseenEnd(SessionState state)
{
    return state == SessionState::Finished || state == SessionState::Failed;
}

QString labelOf(const AttentionSession &session, const QDateTime &now)
{
    const SessionState state = sessionState(session.facts);
    const QString note = isMyTurn(state) ? myTurnReason(session.facts, now)
        : state == SessionState::Failed  ? u"실패"_s
                                         : sessionTimeText(session.facts, now);
    return u"%1 · %2 — %3"_s.arg(Text::clipped(session.title, labelCharacters), session.project, note);
}

} // namespace

AttentionSignal attentionSignal(const SessionFacts &facts)
{
    const SessionState state = sessionState(facts);
    if (isMyTurn(state)) {
        return AttentionSignal::MyTurn;
    }
    return isUnseenEnd(state) ? AttentionSignal::Finished : AttentionSignal::None;
}

AttentionTold toldOf(const AttentionSession &session)
{
    return {.key = session.key,
            .signal = attentionSignal(session.facts),
            .since = signalSince(session.facts),
            .noticed = false};
}

AttentionPlan planAttention(const QList<AttentionSession> &sessions, const AttentionWishes &wishes,
                            const QList<AttentionTold> &before)
{
    AttentionPlan plan;
    for (const AttentionSession &session : sessions) {
        const AttentionSignal signal = attentionSignal(session.facts);
        if (signal == AttentionSignal::None) {
            continue;
        }
        AttentionTold told = toldOf(session);
        const auto known = std::ranges::find_if(
            before, [&told](const AttentionTold &earlier) { return isSameSignal(earlier, told); });
        const bool wanted = signal == AttentionSignal::MyTurn ? wishes.myTurn : wishes.finished;
        const bool may = wanted && !wishes.windowActive;
        if (known == before.end() && may) {
            plan.show.append({.id = noticeId(session.key, signal), .notice = noticeOf(session)});
        }
        told.noticed = may && (known == before.end() || known->noticed);
        plan.told.append(told);
    }
    for (const AttentionTold &earlier : before) {
        // One that was replaced goes by its successor.
        const bool stands = std::ranges::any_of(plan.told, [&earlier](const AttentionTold &told) {
            return told.noticed && told.key == earlier.key && told.signal == earlier.signal;
        });
        if (earlier.noticed && !stands) {
            plan.close.append(noticeId(earlier.key, earlier.signal));
        }
    }
    return plan;
}

QString sessionOfNotice(const QString &noticeId)
{
    return noticeId.section(u'/', 0, 0);
}

ToastPlan planToasts(const QList<AttentionSession> &sessions, const QString &currentKey, bool windowActive,
                     const QList<AttentionTold> &done)
{
    ToastPlan plan;
    QList<AttentionSession> ends;
    for (const AttentionSession &session : sessions) {
        const AttentionTold told = toldOf(session);
        if (told.signal == AttentionSignal::None) {
            continue;
        }
        const bool known = std::ranges::any_of(
            done, [&told](const AttentionTold &earlier) { return isSameSignal(earlier, told); });
        const bool waits = told.signal == AttentionSignal::MyTurn;
        if (known || session.key == currentKey || (!waits && !windowActive)) {
            plan.done.append(told);
        } else {
            (waits ? plan.show : ends).append(session);
        }
    }
    std::ranges::stable_sort(plan.show, {},
                             [](const AttentionSession &session) { return session.facts.waitingSince; });
    plan.show = plan.show.first(std::min(plan.show.size(), toastsAtOnce));
    for (const AttentionSession &session : std::as_const(ends)) {
        if (plan.show.size() < toastsAtOnce) {
            plan.show.append(session);
        } else {
            plan.done.append(toldOf(session)); // later it would be no news
        }
    }
    return plan;
}

TrayCounts trayCounts(const QList<AttentionSession> &sessions)
{
    TrayCounts counts;
    for (const AttentionSession &session : sessions) {
        const SessionState state = sessionState(session.facts);
        counts.waiting += isMyTurn(state) ? 1 : 0;
        counts.running += isRunning(state) ? 1 : 0;
        counts.unseen += isUnseenEnd(state) ? 1 : 0;
    }
    return counts;
}

QString trayToolTip(const TrayCounts &counts)
{
    QStringList parts;
    const auto say = [&parts](const QString &what, int count) {
        if (count > 0) {
            parts.append(what + u' ' + QString::number(count));
        }
    };
    say(u"내 차례"_s, counts.waiting);
    say(u"실행 중"_s, counts.running);
    say(u"끝남"_s, counts.unseen);
    return parts.join(u" · "_s);
}

QList<TrayMenuEntry> trayMenu(const QList<AttentionSession> &sessions, const QDateTime &now)
{
    using Kind = TrayMenuEntry::Kind;
    QList<TrayMenuEntry> lines;
    const auto group = [&](const QString &heading, bool (*belongs)(SessionState), auto order) {
        QList<AttentionSession> members;
        for (const AttentionSession &session : sessions) {
            if (belongs(sessionState(session.facts))) {
                members.append(session);
            }
        }
        if (members.isEmpty()) {
            return;
        }
        std::ranges::stable_sort(members, order);
        lines.append({.kind = Kind::Heading, .key = {}, .label = heading});
        for (const AttentionSession &session : members.first(std::min(members.size(), linesPerGroup))) {
            lines.append({.kind = Kind::Action, .key = session.key, .label = labelOf(session, now)});
        }
        if (members.size() > linesPerGroup) {
            lines.append({.kind = Kind::Heading,
                          .key = {},
                          .label = u"외 %1개"_s.arg(members.size() - linesPerGroup)});
        }
        lines.append({.kind = Kind::Separator, .key = {}, .label = {}});
    };
    group(u"내 차례"_s, &isMyTurn, [](const AttentionSession &a, const AttentionSession &b) {
        return a.facts.waitingSince < b.facts.waitingSince;
    });
    group(u"실행 중"_s, &isRunning, [](const AttentionSession &, const AttentionSession &) { return false; });
    group(u"끝남"_s, &isUnseenEnd, [](const AttentionSession &a, const AttentionSession &b) {
        return a.facts.lastActiveAt > b.facts.lastActiveAt;
    });
    lines.append({.kind = Kind::Action, .key = TrayKey::newSession, .label = u"새 세션"_s});
    lines.append({.kind = Kind::Action, .key = TrayKey::openWindow, .label = u"창 열기"_s});
    lines.append({.kind = Kind::Separator, .key = {}, .label = {}});
    lines.append({.kind = Kind::Action, .key = TrayKey::quit, .label = u"끝내기"_s});
    return lines;
}

CloseRoad closeRoad(bool inTray, bool anyLiveWork)
{
    if (inTray) {
        return CloseRoad::Hide;
    }
    return anyLiveWork ? CloseRoad::Ask : CloseRoad::Quit;
}

} // namespace Vesk
