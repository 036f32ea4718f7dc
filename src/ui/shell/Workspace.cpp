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
    , m_panes(runtime, m_roster, nullptr)
    , m_memory(runtime, m_panes, m_roster)
    , m_tabDrag(m_panes)
    , m_seen(m_roster, seenAfterMs)
{
    connect(&m_panes, &Panes::treeChanged, this, &Workspace::onTreeChanged);
    // After the models, which were connected first: a selection always finds its row.
    connect(&m_roster, &SessionRoster::sessionAdded, this, &Workspace::addSession);
    connect(&m_roster, &SessionRoster::sessionRemoved, this,
            [this](const QUuid &id) { m_panes.change(&PaneTree::remove, id); });
    connect(&m_roster, &SessionRoster::changed, this, &Workspace::watchShown);
    connect(&m_roster, &SessionRoster::myTurnChanged, this, &Workspace::windowTitleChanged);
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &Workspace::projectsChanged);
    connect(&runtime.issues(), &IssueCrossings::sessionChosen, this,
            [this](const ProjectChat *chat) { show(chat->id()); });
    runtime.locator().whenResolved(this, [this](const QString &) { Q_EMIT agentMissingChanged(); });
    for (const auto &session : m_roster.sessions()) {
        addSession(session->id);
    }
}

Workspace::~Workspace() = default;

ProjectChat *Workspace::currentChat() const
{
    const RosterSession *session = m_roster.find(m_panes.tree().focused().shown);
    return session ? session->chat : nullptr;
}

QString Workspace::currentKey() const
{
    const QUuid &id = m_panes.tree().focused().shown;
    return id.isNull() ? QString() : id.toString(QUuid::WithoutBraces);
}

int Workspace::currentIndex() const
{
    return m_panes.focusedTabs().rowOf(currentKey());
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
        watchShown();
        Q_EMIT windowActiveChanged();
    }
}

void Workspace::setBackgroundShown(bool shown)
{
    if (shown != m_backgroundShown) {
        m_backgroundShown = shown;
        Q_EMIT backgroundShownChanged();
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
        show(chat->id());
    }
}

void Workspace::select(const QString &key)
{
    show(QUuid::fromString(key));
}

void Workspace::selectIndex(int index)
{
    if (index >= 0 && index < m_panes.focusedTabs().count()) {
        show(idAt(index));
    }
}

void Workspace::selectNext()
{
    if (const int count = m_panes.focusedTabs().count(); count > 0) {
        show(idAt((currentIndex() + 1) % count));
    }
}

void Workspace::selectPrevious()
{
    if (const int count = m_panes.focusedTabs().count(); count > 0) {
        show(idAt((currentIndex() + count - 1) % count));
    }
}

void Workspace::selectNextMyTurn()
{
    if (m_myTurn.count() > 0) {
        const int here = m_myTurn.rowOf(currentKey());
        show(QUuid::fromString(m_myTurn.keyAt((here + 1) % m_myTurn.count())));
    }
}

void Workspace::splitCurrent(Panes::Side side)
{
    const ProjectChat *chat = currentChat();
    if (!chat || !m_panes.canSplit(currentKey(), side)) {
        return;
    }
    const int pane = m_panes.focusedPane();
    const bool alone = m_panes.focusedTabs().count() == 1;
    const ProjectChat *moving = alone ? m_runtime.newSession(chat->alias()) : chat;
    if (moving) {
        m_panes.change(&PaneTree::split, pane, static_cast<PaneSide>(side), moving->id());
    }
}

void Workspace::requestCloseCurrent()
{
    if (currentKey().isEmpty()) {
        m_panes.closePane(m_panes.focusedPane());
    } else {
        requestClose(currentKey());
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

void Workspace::show(const QUuid &id)
{
    m_panes.change(&PaneTree::show, id);
}

void Workspace::addSession(const QUuid &id)
{
    const RosterSession *session = m_roster.find(id);
    m_panes.change(&PaneTree::add, id, session ? session->chat->sessionId() : QString());
}

void Workspace::onTreeChanged()
{
    QHash<QString, SessionPlace> places;
    for (const PaneNode *pane : m_panes.tree().panes()) {
        const QRectF rect = m_panes.layout().rectOf(pane->id);
        for (const QUuid &id : pane->tabs) {
            places.insert(id.toString(QUuid::WithoutBraces), {.rect = rect, .shown = id == pane->shown});
        }
    }
    m_tabs.setPlaces(places);
    watchShown();

    const QUuid current = m_panes.tree().focused().shown;
    if (const RosterSession *session = m_roster.find(current)) {
        m_lastAlias = session->alias();
    }
    const int index = currentIndex();
    if (current != m_current || index != m_currentIndex) {
        m_current = current;
        m_currentIndex = index;
        Q_EMIT currentChanged();
    }
}

void Workspace::watchShown()
{
    QList<QUuid> inView;
    if (m_windowActive) {
        for (const PaneNode *pane : m_panes.tree().panes()) {
            inView.append(pane->shown);
        }
    }
    m_seen.setInView(inView);
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
    return QUuid::fromString(m_panes.focusedTabs().keyAt(index));
}

} // namespace Vesk
