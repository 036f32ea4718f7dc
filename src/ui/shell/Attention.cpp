#include "ui/shell/Attention.h"

#include "app/Runtime.h"
#include "base/Text.h"
#include "sessions/ProjectChat.h"
#include "ui/shell/TrayDrawing.h"
#include "ui/shell/Workspace.h"

#include <QGuiApplication>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype errorCharacters = 160;
// Where a window system looks for the leave to bring a window to the front.
constexpr auto activationVariable = "XDG_ACTIVATION_TOKEN";

/** What the tray's menu depends on but for the passing of time. */
QString stateLine(const AttentionSession &session)
{
    return QStringList {session.key, session.project, session.title, sessionStateText(session.facts)}.join(
        u'\n');
}

} // namespace

Attention::Attention(Workspace &workspace, Runtime &runtime, BusSource bus, QObject *parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_runtime(runtime)
    , m_bus(bus)
    , m_notifications(runtime.auditLogger(), std::move(bus))
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(0);
    connect(&m_settle, &QTimer::timeout, this, &Attention::update);
    m_notifications.onInvoked = [this](const QString &id, const QString &token) {
        bringUp(sessionOfNotice(id), token);
    };
}

Attention::~Attention() = default;

void Attention::begin()
{
    if (m_tray)
        return;
    m_tray = std::make_unique<TrayItem>([this] { return trayMenu(sessions(), m_workspace.roster().now()); },
                                        m_bus);
    m_tray->setFace(trayFace(m_counts));
    m_tray->onActivated = [this](const QString &token) { bringUp({}, token); };
    m_tray->onTriggered = [this](const QString &key, const QString &token) { onTrayTriggered(key, token); };
    connect(m_tray.get(), &TrayItem::shownChanged, this, &Attention::onTrayShownChanged);

    const auto look = [this] { m_settle.start(); };
    const SessionRoster &roster = m_workspace.roster();
    connect(&roster, &SessionRoster::changed, this, look);
    connect(&roster, &SessionRoster::sessionAdded, this, look);
    connect(&roster, &SessionRoster::sessionRemoved, this, look);
    connect(&m_workspace, &Workspace::windowActiveChanged, this, look);
    connect(&m_workspace, &Workspace::currentChanged, this, look);
    connect(&m_runtime.preferences(), &Preferences::changed, this, look);
    update();
}

bool Attention::inTray() const
{
    return m_tray && m_tray->isShown();
}

void Attention::goTo(const QString &sessionKey)
{
    m_workspace.select(sessionKey);
}

void Attention::dismissToast(const QString &sessionKey)
{
    for (const AttentionSession &session : sessions()) {
        if (session.key == sessionKey)
            m_toastsDone.append(toldOf(session));
    }
    m_settle.start(); // not at once: the toast is still in its own handler
}

bool Attention::mayClose()
{
    if (qGuiApp->isSavingSession())
        return true; // the desktop ends: what would stay in its way only delays it
    switch (closeRoad(inTray(), !m_workspace.liveWork().isEmpty())) {
    case CloseRoad::Hide:
        m_windowInTray = true;
        Q_EMIT hideAsked();
        return false;
    case CloseRoad::Ask:
        Q_EMIT confirmationAsked();
        return false;
    case CloseRoad::Quit:
        break;
    }
    Q_EMIT endAsked();
    return true;
}

void Attention::setWindowVisible(bool visible)
{
    if (visible)
        m_windowInTray = false;
}

void Attention::requestEnd()
{
    if (m_workspace.liveWork().isEmpty()) {
        Q_EMIT endAsked();
        return;
    }
    bringUp({}, {});
    Q_EMIT confirmationAsked();
}

QList<AttentionSession> Attention::sessions() const
{
    QList<AttentionSession> all;
    for (const auto &session : m_workspace.roster().sessions()) {
        all.append({.key = session->key(),
                    .project = session->alias(),
                    .title = session->title(),
                    .error = Text::clipped(Text::firstLine(session->chat->lastError()), errorCharacters),
                    .facts = session->facts()});
    }
    return all;
}

void Attention::update()
{
    const QList<AttentionSession> all = sessions();
    const Preferences &preferences = m_runtime.preferences();
    AttentionPlan plan = planAttention(all,
                                       {.windowActive = m_workspace.windowActive(),
                                        .myTurn = preferences.noticeMyTurn(),
                                        .finished = preferences.noticeFinished()},
                                       m_told);
    m_told = std::move(plan.told);
    for (const QString &id : std::as_const(plan.close))
        m_notifications.close(id);
    for (const AttentionNotice &each : std::as_const(plan.show))
        m_notifications.show(each.id, each.notice);

    ToastPlan toasts = planToasts(all, m_workspace.currentKey(), m_workspace.windowActive(), m_toastsDone);
    m_toastsDone = std::move(toasts.done);
    m_toasts.setSessions(toasts.show);

    if (const TrayCounts counts = trayCounts(all); counts != m_counts) {
        m_counts = counts;
        m_tray->setFace(trayFace(counts));
    }
    QStringList states;
    for (const AttentionSession &session : all)
        states.append(stateLine(session));
    if (states != m_shownStates) {
        m_shownStates = states;
        m_tray->noteMenuChanged();
    }
}

void Attention::onTrayShownChanged()
{
    Q_EMIT inTrayChanged();
    // Nothing else would lead back to the window.
    if (!inTray() && m_windowInTray)
        bringUp({}, {});
}

void Attention::bringUp(const QString &sessionKey, const QString &activationToken)
{
    m_workspace.select(sessionKey);
    if (!m_runtime.openMainWindow)
        return;
    if (!activationToken.isEmpty())
        qputenv(activationVariable, activationToken.toUtf8());
    m_runtime.openMainWindow();
    qunsetenv(activationVariable);
}

void Attention::onTrayTriggered(const QString &key, const QString &activationToken)
{
    if (key == TrayKey::quit) {
        requestEnd();
        return;
    }
    bringUp(key, activationToken);
    if (key == TrayKey::newSession)
        m_workspace.newSession();
}

} // namespace Vesk
