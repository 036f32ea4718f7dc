#include "ui/shell/PaneMemory.h"

#include "app/Runtime.h"
#include "sessions/ProjectChat.h"

namespace Vesk
{

namespace
{

constexpr int panesSettleMs = 500;

} // namespace

PaneMemory::PaneMemory(Runtime &runtime, Panes &panes, const SessionRoster &roster)
    : m_runtime(runtime)
    , m_panes(panes)
    , m_roster(roster)
{
    const QByteArray stored = runtime.preferences().stringValue(PreferenceKey::windowPanes).toUtf8();
    if (!stored.isEmpty()) {
        panes.setTree(PaneTree::fromJson(stored));
        panes.setExpecting(true);
    }
    m_settled.setSingleShot(true);
    m_settled.setInterval(panesSettleMs);
    connect(&m_settled, &QTimer::timeout, this, &PaneMemory::save);
    connect(&panes, &Panes::treeChanged, this, [this] {
        readShown();
        m_settled.start();
    });
    // A conversation gets its id when it begins, and its title may change.
    connect(&roster, &SessionRoster::changed, this, [this] {
        if (!m_settled.isActive()) {
            m_settled.start();
        }
    });
}

PaneMemory::~PaneMemory()
{
    save();
}

void PaneMemory::restore()
{
    QList<RememberedConversation> remembered;
    for (const PaneNode *pane : m_panes.tree().panes()) {
        for (const PanePlace &place : pane->places) {
            remembered.append({place.conversation, place.project, place.title});
        }
    }
    // Without the list of projects nobody can come back now, but later all of them.
    if (remembered.isEmpty() || !m_runtime.catalogError().isEmpty()) {
        m_panes.setExpecting(false);
        return;
    }
    m_runtime.resume().find(remembered, this,
                            [this](const QList<ResumableSession> &found) { reopen(found); });
}

void PaneMemory::reopen(const QList<ResumableSession> &sessions)
{
    m_panes.inOneGo([this, &sessions] {
        for (const ResumableSession &session : sessions) {
            m_runtime.resume().openUnread(session);
        }
        m_panes.change(&PaneTree::forgetPlaces);
        m_panes.setExpecting(false);
    });
}

void PaneMemory::readShown()
{
    for (const PaneNode *pane : m_panes.tree().panes()) {
        if (const RosterSession *session = m_roster.find(pane->shown)) {
            m_runtime.resume().read(session->chat);
        }
    }
}

void PaneMemory::save()
{
    const QByteArray json = m_panes.tree().toJson([this](const QUuid &id) {
        const RosterSession *session = m_roster.find(id);
        return session
            ? PanePlace {session->chat->sessionId(), session->alias(), session->title().simplified()}
            : PanePlace();
    });
    m_runtime.preferences().setValue(PreferenceKey::windowPanes,
                                     json.isEmpty() ? QVariant() : QVariant(QString::fromUtf8(json)));
}

} // namespace Vesk
