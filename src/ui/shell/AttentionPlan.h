// Which sessions the desktop is told of, and what the tray says: decided from their states alone.
#pragma once

#include "core/DesktopNotifications.h"
#include "core/TrayItem.h"
#include "ui/shell/SessionState.h"

#include <QList>
#include <QString>

namespace Vesk
{

/** What a session can ask of a person who is elsewhere. */
enum class AttentionSignal { None, MyTurn, Finished };

/** One open session. */
struct AttentionSession {
    QString key;
    QString project;
    QString title;
    QString error; ///< the first line of why its last run failed; may be empty
    SessionFacts facts;
};

[[nodiscard]] AttentionSignal attentionSignal(const SessionFacts &facts);

/** A signal that has been dealt with: a notice stands on the desktop, or the person was at the window. */
struct AttentionTold {
    QString key;
    AttentionSignal signal = AttentionSignal::None;
    QDateTime since; ///< a later prompt or ending is another one
    bool noticed = false;

    bool operator==(const AttentionTold &) const = default;
};

/** Where the person is, and what they want to be told of. */
struct AttentionWishes {
    bool windowActive = false;
    bool myTurn = true;
    bool finished = true;
};

struct AttentionNotice {
    QString id; ///< one for each session and signal
    DesktopNotice notice;
};

/** What is to be done now; `told` is what the next plan begins from. */
struct AttentionPlan {
    QList<AttentionNotice> show;
    QStringList close;
    QList<AttentionTold> told;
};

/**
 * Notices for signals that came while no window was active, each once. A notice goes as soon as its signal no
 * longer holds, the window is active or the person no longer wants it; coming back from the window brings
 * none back, for what stood there has been seen.
 */
[[nodiscard]] AttentionPlan planAttention(const QList<AttentionSession> &sessions,
                                          const AttentionWishes &wishes, const QList<AttentionTold> &before);

/** The session that a notice is about. */
[[nodiscard]] QString sessionOfNotice(const QString &noticeId);

/** What the window itself says of sessions that are not in view; `done` is what the next plan begins from. */
struct ToastPlan {
    QList<AttentionSession> show;
    QList<AttentionTold> done; ///< dismissed, looked at, or told elsewhere
};

/** What waits comes first and stays; what ended is told only to a person who is at the window. A session that
   was looked at is not told again. */
[[nodiscard]] ToastPlan planToasts(const QList<AttentionSession> &sessions, const QString &currentKey,
                                   bool windowActive, const QList<AttentionTold> &done);
/** The signal of a session as it stands, to be put under what is done. */
[[nodiscard]] AttentionTold toldOf(const AttentionSession &session);

/** How many sessions are in which state, as the tray shows it. */
struct TrayCounts {
    int waiting = 0;
    int running = 0; ///< with background work
    int unseen = 0;

    bool operator==(const TrayCounts &) const = default;
};

[[nodiscard]] TrayCounts trayCounts(const QList<AttentionSession> &sessions);
/** "내 차례 2 · 실행 중 1"; empty when nothing is to be said. */
[[nodiscard]] QString trayToolTip(const TrayCounts &counts);

/** The keys of the tray's lines that are no sessions'. */
namespace TrayKey
{
inline constexpr QLatin1StringView newSession("new");
inline constexpr QLatin1StringView openWindow("open");
inline constexpr QLatin1StringView quit("quit");
} // namespace TrayKey

/** Sessions by state, what waits first and the longest waiting before the others, then what can be done. The
    lines of sessions have the sessions' keys. */
[[nodiscard]] QList<TrayMenuEntry> trayMenu(const QList<AttentionSession> &sessions, const QDateTime &now);

/** What closing the window does. */
enum class CloseRoad { Hide, Ask, Quit };

/** With a tray the program stays in it. Without one it would be out of sight: it ends, and asks before it
   ends work. */
[[nodiscard]] CloseRoad closeRoad(bool inTray, bool anyLiveWork);

} // namespace Vesk
