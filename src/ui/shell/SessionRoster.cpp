#include "ui/shell/SessionRoster.h"

#include "sessions/AgentSessionStore.h"
#include "sessions/ProjectChat.h"

#include <algorithm>
#include <utility>

namespace Vesk
{

namespace
{

constexpr qint64 runningTickMs = 1000;
constexpr qint64 waitingTickMs = 10'000;

/** Of the work that ended last: as when somebody stops it, who knows then. */
bool endedWithItsChild(const QList<BackgroundTask> &tasks)
{
    const auto last = std::ranges::max_element(tasks, {}, &BackgroundTask::endedAt);
    return last != tasks.end() && last->endedWithChild;
}

} // namespace

QString RosterSession::alias() const
{
    return chat->alias();
}

QString RosterSession::title() const
{
    return chat->title();
}

SessionFacts RosterSession::facts() const
{
    SessionFacts facts;
    facts.running = chat->isRunning();
    facts.unseen = unseen;
    facts.failed = !chat->lastError().isEmpty() || chat->lastRunHadErrorResult();
    facts.backgroundTasks = static_cast<int>(std::ranges::count(
        chat->backgroundTasks().tasks(), BackgroundTask::Status::Running, &BackgroundTask::status));
    if (const auto &permission = chat->pendingPermission()) {
        facts.waitingTool =
            permission->displayName.isEmpty() ? permission->toolName : permission->displayName;
    }
    if (const auto &question = chat->pendingQuestion()) {
        facts.waitingQuestions = static_cast<int>(std::max<qsizetype>(1, question->questions.size()));
    }
    facts.waitingSince = chat->promptSince();
    facts.runStartedAt = chat->runStartedAt();
    facts.lastActiveAt = lastActiveAt;
    return facts;
}

SessionRoster::SessionRoster(AgentSessionStore &store, Clock clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock ? std::move(clock) : Clock([] { return QDateTime::currentDateTime(); }))
{
    m_tick.setSingleShot(true);
    m_tick.setTimerType(Qt::CoarseTimer);
    connect(&m_tick, &QTimer::timeout, this, &SessionRoster::tick);
    connect(&store, &AgentSessionStore::sessionAdded, this, &SessionRoster::add);
    connect(&store, &AgentSessionStore::sessionAboutToBeRemoved, this, &SessionRoster::remove);
    for (ProjectChat *chat : store.sessions()) {
        add(chat);
    }
}

SessionRoster::~SessionRoster() = default;

RosterSession *SessionRoster::held(const QUuid &id)
{
    const auto it = std::ranges::find(m_sessions, id, [](const auto &session) { return session->id; });
    return it == m_sessions.end() ? nullptr : it->get();
}

const RosterSession *SessionRoster::find(const QUuid &id) const
{
    const auto it = std::ranges::find(m_sessions, id, [](const auto &session) { return session->id; });
    return it == m_sessions.end() ? nullptr : it->get();
}

const RosterSession *SessionRoster::find(const ProjectChat *chat) const
{
    return chat ? find(chat->id()) : nullptr;
}

std::vector<const RosterSession *> SessionRoster::myTurn() const
{
    std::vector<const RosterSession *> waiting;
    for (const auto &session : m_sessions) {
        if (isMyTurn(sessionState(session->facts()))) {
            waiting.push_back(session.get());
        }
    }
    std::ranges::stable_sort(waiting, {},
                             [](const RosterSession *session) { return session->chat->promptSince(); });
    return waiting;
}

void SessionRoster::noteSeen(const QUuid &id)
{
    RosterSession *session = held(id);
    if (session && session->unseen) {
        session->unseen = false;
        noteChanged(*session);
    }
}

void SessionRoster::setVisible(bool visible)
{
    if (m_visible == visible) {
        return;
    }
    m_visible = visible;
    if (visible) {
        tick();
    } else {
        m_tick.stop();
    }
}

void SessionRoster::add(ProjectChat *chat)
{
    auto session = std::make_unique<RosterSession>();
    session->chat = chat;
    session->id = chat->id();
    session->wasRunning = chat->isRunning();
    session->hadBackground = chat->hasRunningBackgroundTask();
    session->lastActiveAt = m_clock();
    session->shownTime = sessionTimeText(session->facts(), m_clock());
    const QUuid id = session->id;
    m_sessions.push_back(std::move(session));

    const auto follow = [this, id] {
        if (RosterSession *changedSession = held(id)) {
            noteChanged(*changedSession);
        }
    };
    connect(chat, &ProjectChat::isRunningChanged, this, [this, id] { noteRunning(id); });
    connect(chat, &ProjectChat::pendingPromptChanged, this, follow);
    connect(chat, &ProjectChat::outcomeChanged, this, follow);
    connect(chat, &ProjectChat::runStartedAtChanged, this, follow);
    connect(&chat->backgroundTasks(), &BackgroundTasks::tasksChanged, this,
            [this, id] { noteBackground(id); });
    connect(chat, &ProjectChat::titleChanged, this, [this, id, follow] {
        follow();
        Q_EMIT titleChanged(id);
    });
    Q_EMIT sessionAdded(id);
    updateMyTurn();
    scheduleTick();
}

void SessionRoster::remove(ProjectChat *chat)
{
    disconnect(chat, nullptr, this, nullptr);
    disconnect(&chat->backgroundTasks(), nullptr, this, nullptr);
    const QUuid id = chat->id();
    const auto gone = std::erase_if(m_sessions, [id](const auto &session) { return session->id == id; });
    if (gone > 0) {
        Q_EMIT sessionRemoved(id);
        updateMyTurn();
        scheduleTick();
    }
}

void SessionRoster::noteRunning(const QUuid &id)
{
    RosterSession *session = held(id);
    if (!session) {
        return;
    }
    const bool running = session->chat->isRunning();
    if (session->wasRunning && !running) {
        session->lastActiveAt = m_clock();
        // Who stopped a run knows that it has ended.
        session->unseen = !session->chat->stoppedByUser();
    }
    session->wasRunning = running;
    noteChanged(*session);
}

// The turn that began the work has long ended, and somebody has seen that.
void SessionRoster::noteBackground(const QUuid &id)
{
    RosterSession *session = held(id);
    if (!session) {
        return;
    }
    const bool has = session->chat->hasRunningBackgroundTask();
    if (std::exchange(session->hadBackground, has) && !has && !session->chat->isRunning()
        && !endedWithItsChild(session->chat->backgroundTasks().tasks())) {
        session->lastActiveAt = m_clock();
        session->unseen = true;
    }
    noteChanged(*session);
}

void SessionRoster::noteChanged(RosterSession &session)
{
    const QUuid id = session.id;
    session.shownTime = sessionTimeText(session.facts(), m_clock());
    Q_EMIT changed(id);
    updateMyTurn();
    scheduleTick();
}

void SessionRoster::updateMyTurn()
{
    QList<QUuid> ids;
    for (const RosterSession *session : myTurn()) {
        ids.append(session->id);
    }
    if (ids != m_myTurn) {
        m_myTurn = ids;
        Q_EMIT myTurnChanged();
    }
}

void SessionRoster::tick()
{
    const QDateTime at = m_clock();
    QList<QUuid> moved;
    for (const auto &session : m_sessions) {
        QString shown = sessionTimeText(session->facts(), at);
        if (shown != session->shownTime) {
            session->shownTime = std::move(shown);
            moved.append(session->id);
        }
    }
    for (const QUuid &id : std::as_const(moved)) {
        Q_EMIT changed(id);
    }
    scheduleTick();
}

void SessionRoster::scheduleTick()
{
    if (!m_visible || m_sessions.empty()) {
        m_tick.stop();
        return;
    }
    const QDateTime at = m_clock();
    qint64 wait = at.msecsTo(at.date().addDays(1).startOfDay()) + runningTickMs;
    for (const auto &session : m_sessions) {
        const SessionState state = sessionState(session->facts());
        if (state == SessionState::Running) {
            // On the second of the elapsed time itself, so that it never skips one.
            const qint64 ran = std::max<qint64>(0, session->chat->runStartedAt().msecsTo(at));
            wait = std::min(wait, runningTickMs - ran % runningTickMs);
        } else if (isMyTurn(state)) {
            wait = std::min(wait, waitingTickMs);
        }
    }
    m_tick.start(static_cast<int>(std::clamp<qint64>(wait, 20, INT_MAX)));
}

} // namespace Vesk
