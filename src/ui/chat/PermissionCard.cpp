#include "ui/chat/PermissionCard.h"

#include "sessions/ProjectChat.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Vesk
{

QList<PermissionDetailLine> permissionDetailLines(const PermissionRequest &request)
{
    auto unused = QJsonDocument::fromJson(request.rawInputJSON).object().keys();
    QList<PermissionDetailLine> lines;
    const auto texts = request.detail.split(QLatin1Char('\n'));
    for (const auto &text : texts) {
        const auto end = text.indexOf(QStringLiteral(": "));
        const auto key = end > 0 ? text.left(end) : QString();
        if (!key.isEmpty() && unused.removeOne(key)) {
            lines.append({key, text.mid(end + 2)});
        } else if (lines.isEmpty()) {
            lines.append({QString(), text});
        } else {
            lines.last().value += QLatin1Char('\n') + text;
        }
    }
    return lines;
}

PermissionCard::PermissionCard(QObject *parent)
    : QObject(parent)
{
}

void PermissionCard::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    m_request.reset();
    m_guard = {};
    if (m_chat) {
        connect(m_chat, &ProjectChat::pendingPromptChanged, this, &PermissionCard::update);
        m_request = m_chat->pendingPermission();
        m_guard.follow(openPromptId(*m_chat));
    }
    Q_EMIT changed();
}

QString PermissionCard::title() const
{
    return m_request ? m_request->displayName + QStringLiteral(" 실행 권한이 필요합니다") : QString();
}

QString PermissionCard::accessibleTitle() const
{
    return m_request ? m_request->displayName + QStringLiteral(" 실행 권한 요청") : QString();
}

QString PermissionCard::remoteText() const
{
    return m_request && m_request->remote
        ? QStringLiteral("메신저(Slack/Telegram) 메시지에서 시작된 턴 — 승인은 이 머신에서만 가능합니다")
        : QString();
}

QVariantList PermissionCard::details() const
{
    QVariantList list;
    if (m_request) {
        for (const auto &line : permissionDetailLines(*m_request)) {
            list << QVariantMap {{QStringLiteral("key"), line.key}, {QStringLiteral("value"), line.value}};
        }
    }
    return list;
}

QDateTime PermissionCard::since() const
{
    return m_chat ? m_chat->promptSince() : QDateTime();
}

void PermissionCard::allowOnce()
{
    answer(PermissionChoice::Once);
}

void PermissionCard::allowAlways()
{
    if (canAlways()) {
        answer(PermissionChoice::Always);
    }
}

void PermissionCard::deny()
{
    answer(PermissionChoice::Deny);
}

void PermissionCard::update()
{
    const auto &now = m_chat->pendingPermission();
    m_guard.follow(openPromptId(*m_chat));
    if (m_request != now) {
        m_request = now;
        Q_EMIT changed();
    }
}

void PermissionCard::answer(PermissionChoice choice)
{
    if (m_chat && m_request && m_guard.takesAnswers()) {
        m_guard.noteAnswered();
        m_chat->respondToPermission(choice);
    }
}

} // namespace Vesk
