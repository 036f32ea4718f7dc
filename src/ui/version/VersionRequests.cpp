#include "ui/version/VersionRequests.h"

#include "app/Runtime.h"

namespace Vesk
{

namespace
{

QString keyOf(const ProjectChat &chat)
{
    return chat.id().toString(QUuid::WithoutBraces);
}

QVariantMap targetOf(const QString &key, const QString &title, bool running)
{
    return {
        {QStringLiteral("key"), key}, {QStringLiteral("title"), title}, {QStringLiteral("running"), running}};
}

} // namespace

VersionRequests::VersionRequests(Runtime &runtime, QString alias, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_alias(std::move(alias))
{
    AgentSessionStore &store = runtime.agentStore();
    for (ProjectChat *chat : store.sessions(m_alias))
        follow(*chat);
    connect(&store, &AgentSessionStore::sessionAdded, this, [this](ProjectChat *chat) {
        if (chat->alias() == m_alias) {
            follow(*chat);
            Q_EMIT targetsChanged();
        }
    });
    connect(
        &store, &AgentSessionStore::sessionAboutToBeRemoved, this, [this] { Q_EMIT targetsChanged(); },
        Qt::QueuedConnection);
}

void VersionRequests::follow(ProjectChat &chat)
{
    connect(&chat, &ProjectChat::titleChanged, this, &VersionRequests::targetsChanged);
    connect(&chat, &ProjectChat::isRunningChanged, this, &VersionRequests::targetsChanged);
}

QVariantList VersionRequests::targets() const
{
    QVariantList list;
    const auto sessions = m_runtime.agentStore().sessions(m_alias);
    for (auto chat = sessions.rbegin(); chat != sessions.rend(); ++chat)
        list.append(targetOf(keyOf(**chat), (*chat)->title(), (*chat)->isRunning()));
    list.append(targetOf({}, QStringLiteral("새 세션"), false));
    return list;
}

QString VersionRequests::firstFree() const
{
    const auto sessions = m_runtime.agentStore().sessions(m_alias);
    for (auto chat = sessions.rbegin(); chat != sessions.rend(); ++chat) {
        if (!(*chat)->isRunning())
            return keyOf(**chat);
    }
    return {};
}

ProjectChat *VersionRequests::find(const QString &key) const
{
    return m_runtime.agentStore().session(QUuid::fromString(key));
}

QString VersionRequests::reasonOf(const QString &key) const
{
    if (key.isEmpty())
        return {};
    const ProjectChat *chat = find(key);
    return !chat            ? QStringLiteral("이 세션은 닫혔습니다")
        : chat->isRunning() ? QStringLiteral("이 세션은 지금 실행 중이라 부탁을 받을 수 없습니다")
                            : QString();
}

bool VersionRequests::send(const QString &text, const QString &key)
{
    if (text.trimmed().isEmpty() || !reasonOf(key).isEmpty())
        return false;
    ProjectChat *chat = key.isEmpty() ? m_runtime.newSession(m_alias) : find(key);
    if (!chat)
        return false;
    chat->sendPanelAction(text);
    Q_EMIT sent(keyOf(*chat), chat->title());
    return true;
}

} // namespace Vesk
