#include "ui/shell/Workspace.h"

#include "app/Runtime.h"
#include "base/Text.h"
#include "sessions/ProjectChat.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

bool isCommandLine(QStringView line)
{
    return line.startsWith(u"  ");
}

} // namespace

Workspace::Workspace(Runtime &runtime, SessionRoster::Clock clock, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_roster(runtime.agentStore(), std::move(clock))
    , m_tabs(runtime, m_roster, nullptr)
    , m_sidebar(runtime, m_roster, nullptr)
    , m_myTurn(runtime, m_roster, nullptr)
{
    m_seen.setSingleShot(true);
    m_seen.setInterval(seenAfterMs);
    connect(&m_seen, &QTimer::timeout, this, [this] { m_roster.noteSeen(m_current); });
    // After the models, which were connected first: a selection always finds its row.
    connect(&m_roster, &SessionRoster::sessionAdded, this, [this](const QUuid &id) {
        if (m_current.isNull()) {
            setCurrent(id);
        }
    });
    connect(&m_roster, &SessionRoster::sessionRemoved, this, &Workspace::onSessionRemoved);
    connect(&m_roster, &SessionRoster::changed, this, [this](const QUuid &id) {
        if (id == m_current) {
            watchCurrent();
        }
    });
    connect(&m_roster, &SessionRoster::myTurnChanged, this, &Workspace::windowTitleChanged);
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &Workspace::projectsChanged);
    runtime.locator().whenResolved(this, [this](const QString &) { Q_EMIT agentMissingChanged(); });
    setCurrent(idAt(0));
}

Workspace::~Workspace() = default;

ProjectChat *Workspace::currentChat() const
{
    const RosterSession *session = m_roster.find(m_current);
    return session ? session->chat : nullptr;
}

QString Workspace::currentKey() const
{
    return m_current.isNull() ? QString() : m_current.toString(QUuid::WithoutBraces);
}

int Workspace::currentIndex() const
{
    return m_tabs.rowOf(currentKey());
}

QString Workspace::windowTitle() const
{
    const std::size_t waiting = m_roster.myTurn().size();
    return waiting > 0 ? u"(%1) 내 차례 — Vesk"_s.arg(waiting) : u"Vesk"_s;
}

bool Workspace::hasProjects() const
{
    return !m_runtime.catalogEntries().isEmpty();
}

void Workspace::setWindowActive(bool active)
{
    if (m_windowActive != active) {
        m_windowActive = active;
        watchCurrent();
        Q_EMIT windowActiveChanged();
    }
}

bool Workspace::agentMissing() const
{
    return m_runtime.locator().isResolved() && m_runtime.locator().path().isEmpty();
}

QString Workspace::installText() const
{
    QStringList lines = ClaudeCLI::notInstalledMessage().split(u'\n');
    lines.removeIf([](const QString &line) { return isCommandLine(line); });
    return lines.join(u'\n');
}

QString Workspace::installCommand() const
{
    QStringList lines = ClaudeCLI::notInstalledMessage().split(u'\n');
    lines.removeIf([](const QString &line) { return !isCommandLine(line); });
    return lines.join(u'\n').trimmed();
}

void Workspace::newSession(const QString &alias)
{
    const QString project = alias.isEmpty() ? defaultAlias() : alias;
    if (project.isEmpty()) {
        Q_EMIT addProjectRequested();
        return;
    }
    if (const ProjectChat *chat = m_runtime.newSession(project)) {
        setCurrent(chat->id());
    }
}

void Workspace::select(const QString &key)
{
    const QUuid id = QUuid::fromString(key);
    if (m_roster.find(id)) {
        setCurrent(id);
    }
}

void Workspace::selectIndex(int index)
{
    if (index >= 0 && index < m_tabs.count()) {
        setCurrent(idAt(index));
    }
}

void Workspace::selectNext()
{
    if (m_tabs.count() > 0) {
        setCurrent(idAt((currentIndex() + 1) % m_tabs.count()));
    }
}

void Workspace::selectPrevious()
{
    if (m_tabs.count() > 0) {
        setCurrent(idAt((currentIndex() + m_tabs.count() - 1) % m_tabs.count()));
    }
}

void Workspace::selectNextMyTurn()
{
    if (m_myTurn.count() > 0) {
        const int here = m_myTurn.rowOf(currentKey());
        setCurrent(QUuid::fromString(m_myTurn.keyAt((here + 1) % m_myTurn.count())));
    }
}

void Workspace::requestClose(const QString &key)
{
    const RosterSession *session = m_roster.find(QUuid::fromString(key));
    if (!session) {
        return;
    }
    if (hasLiveWork(session->facts())) {
        Q_EMIT closeConfirmationNeeded(key, session->title(), liveWorkOf(*session));
    } else {
        close(key);
    }
}

void Workspace::close(const QString &key)
{
    if (const RosterSession *session = m_roster.find(QUuid::fromString(key))) {
        m_runtime.closeSession(session->chat);
    }
}

void Workspace::rename(const QString &key, const QString &title)
{
    const RosterSession *session = m_roster.find(QUuid::fromString(key));
    const QString name = Text::trimWhitespace(title);
    if (session && !name.isEmpty()) {
        session->chat->setTitle(name);
    }
}

QStringList Workspace::liveWork() const
{
    QStringList lines;
    for (const auto &session : m_roster.sessions()) {
        if (hasLiveWork(session->facts())) {
            lines.append(u"%1 · %2 — %3"_s.arg(session->alias(), session->title(), liveWorkOf(*session)));
        }
    }
    return lines;
}

void Workspace::setCurrent(const QUuid &id)
{
    const RosterSession *session = m_roster.find(id);
    if (session) {
        m_lastAlias = session->alias();
    }
    const int index = session ? m_tabs.rowOf(session->key()) : -1;
    if (id == m_current && index == m_currentIndex) {
        return;
    }
    m_current = session ? id : QUuid();
    m_currentIndex = index;
    m_seen.stop(); // the second of the tab before does not count for this one
    watchCurrent();
    Q_EMIT currentChanged();
}

void Workspace::onSessionRemoved(const QUuid &id)
{
    if (id != m_current) {
        setCurrent(m_current); // its place may be another now
        return;
    }
    // The neighbour that moved into the place, else the one before it.
    setCurrent(idAt(std::min(m_currentIndex, m_tabs.count() - 1)));
}

void Workspace::watchCurrent()
{
    const RosterSession *session = m_roster.find(m_current);
    if (!session || !session->unseen || !m_windowActive) {
        m_seen.stop();
    } else if (!m_seen.isActive()) {
        m_seen.start();
    }
}

QString Workspace::defaultAlias() const
{
    const auto &entries = m_runtime.catalogEntries();
    const bool known = std::ranges::find(entries, m_lastAlias, &ProjectCatalogEntry::alias) != entries.end();
    if (known) {
        return m_lastAlias;
    }
    return entries.isEmpty() ? QString() : entries.constFirst().alias;
}

QString Workspace::liveWorkOf(const RosterSession &session) const
{
    const SessionFacts facts = session.facts();
    if (sessionState(facts) == SessionState::Running) {
        const QString &activity = session.chat->currentActivity();
        return u"%1 %2"_s.arg(activity.isEmpty() ? sessionStateText(facts) : activity,
                              elapsedText(facts.runStartedAt, m_roster.now()));
    }
    return isMyTurn(sessionState(facts)) ? myTurnReason(facts, m_roster.now()) : sessionStateText(facts);
}

QUuid Workspace::idAt(int index) const
{
    return QUuid::fromString(m_tabs.keyAt(index));
}

} // namespace Vesk
