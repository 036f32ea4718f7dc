// The open sessions as the window shows them: their marks, their times, and whether somebody has looked.
#pragma once

#include "ui/shell/SessionState.h"

#include <QObject>
#include <QTimer>
#include <QUuid>

#include <functional>
#include <memory>
#include <vector>

namespace Vesk
{

class AgentSessionStore;
class ProjectChat;

/** One open session and what the window remembers about it. Given out by SessionRoster; the chat outlives it.
 */
struct RosterSession {
    ProjectChat *chat = nullptr;
    QUuid id;
    bool unseen = false;
    bool wasRunning = false;
    bool hadBackground = false;
    QDateTime lastActiveAt;
    QString shownTime; ///< what the rows show now; kept to tell when it changes

    [[nodiscard]] QString key() const { return id.toString(QUuid::WithoutBraces); }
    [[nodiscard]] QString alias() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] SessionFacts facts() const;
};

/**
 * Follows the session store, in its order. `changed` is emitted for anything a row shows, the passing of time
 * included; while nothing runs or waits that costs no wake-ups but one at midnight.
 */
class SessionRoster : public QObject
{
    Q_OBJECT

public:
    using Clock = std::function<QDateTime()>;

    explicit SessionRoster(AgentSessionStore &store, Clock clock = {}, QObject *parent = nullptr);
    ~SessionRoster() override;

    [[nodiscard]] const std::vector<std::unique_ptr<RosterSession>> &sessions() const { return m_sessions; }
    [[nodiscard]] const RosterSession *find(const QUuid &id) const;
    [[nodiscard]] const RosterSession *find(const ProjectChat *chat) const;
    /** The sessions that wait for the person, the longest waiting first. */
    [[nodiscard]] std::vector<const RosterSession *> myTurn() const;
    [[nodiscard]] QDateTime now() const { return m_clock(); }

    /** Somebody has looked at this session. */
    void noteSeen(const QUuid &id);
    /** A hidden window needs no ticking clocks. */
    void setVisible(bool visible);

Q_SIGNALS:
    void sessionAdded(const QUuid &id);
    void sessionRemoved(const QUuid &id); ///< it is no longer found by find()
    void changed(const QUuid &id);
    void titleChanged(const QUuid &id);
    void myTurnChanged(); ///< who waits, or in which order

private:
    void add(ProjectChat *chat);
    void remove(ProjectChat *chat);
    void noteRunning(const QUuid &id);
    void noteBackground(const QUuid &id);
    void noteChanged(RosterSession &session);
    void updateMyTurn();
    void tick();
    void scheduleTick();
    [[nodiscard]] RosterSession *held(const QUuid &id);

    Clock m_clock;
    std::vector<std::unique_ptr<RosterSession>> m_sessions;
    QList<QUuid> m_myTurn;
    QTimer m_tick;
    bool m_visible = true;
};

} // namespace Vesk
