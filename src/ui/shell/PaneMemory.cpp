#include "ui/shell/PaneMemory.h"

#include "core/Preferences.h"
#include "sessions/ProjectChat.h"

namespace Vesk
{

namespace
{

constexpr int panesSettleMs = 500;

} // namespace

PaneMemory::PaneMemory(Preferences &preferences, Panes &panes, const SessionRoster &roster)
    : m_preferences(preferences)
    , m_panes(panes)
    , m_roster(roster)
{
    const QByteArray stored = preferences.stringValue(PreferenceKey::windowPanes).toUtf8();
    if (!stored.isEmpty()) {
        panes.setTree(PaneTree::fromJson(stored));
    }
    m_settled.setSingleShot(true);
    m_settled.setInterval(panesSettleMs);
    connect(&m_settled, &QTimer::timeout, this, &PaneMemory::save);
    connect(&panes, &Panes::treeChanged, this, [this] { m_settled.start(); });
}

PaneMemory::~PaneMemory()
{
    save();
}

void PaneMemory::save()
{
    const QByteArray json = m_panes.tree().toJson([this](const QUuid &id) {
        const RosterSession *session = m_roster.find(id);
        return session ? session->chat->sessionId() : QString();
    });
    m_preferences.setValue(PreferenceKey::windowPanes,
                           json.isEmpty() ? QVariant() : QVariant(QString::fromUtf8(json)));
}

} // namespace Vesk
