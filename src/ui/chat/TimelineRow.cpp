#include "ui/chat/TimelineRow.h"

#include "ui/chat/ChatWords.h"

#include <QClipboard>
#include <QGuiApplication>

namespace Vesk
{

TimelineRow::TimelineRow(const ChatMessage &message, std::shared_ptr<ToolFolding> folding, QObject *parent)
    : QObject(parent)
    , m_message(message)
{
    if (message.role == ChatMessage::Role::Tools) {
        m_tools = std::make_unique<ToolGroupModel>(std::move(folding));
        m_tools->setTools(message.tools);
    } else if (message.role != ChatMessage::Role::Activity) {
        m_blocks = std::make_unique<MarkdownBlockModel>();
        m_blocks->setText(message.text, message.streaming);
    }
}

void TimelineRow::update(const ChatMessage &message, bool textFollows)
{
    const bool textDiffers = m_message.text != message.text;
    const bool stateDiffers = m_message.streaming != message.streaming || m_message.isError != message.isError
        || m_textFollows != textFollows;
    const bool hadText = hasText();
    m_message = message;
    m_textFollows = textFollows;
    if (m_blocks && (textDiffers || stateDiffers)) {
        m_blocks->setText(message.text, message.streaming);
    }
    if (m_tools) {
        m_tools->setTools(message.tools);
        m_tools->setTextFollows(textFollows);
    }
    if (textDiffers) {
        Q_EMIT textChanged();
    }
    if (hadText != hasText()) {
        Q_EMIT hasTextChanged();
    }
    if ((textDiffers && !message.streaming) || stateDiffers) {
        Q_EMIT spokenChanged();
    }
    if (stateDiffers) {
        Q_EMIT stateChanged();
    }
}

TimelineRow::Kind TimelineRow::kind() const
{
    return static_cast<Kind>(m_message.role);
}

QString TimelineRow::time() const
{
    return ChatWords::rowTime(m_message.at, QDateTime::currentDateTimeUtc());
}

QStringList TimelineRow::attachments() const
{
    QStringList names;
    for (const auto &path : m_message.attachments) {
        names << ChatWords::attachmentName(path);
    }
    return names;
}

QString TimelineRow::accessibleText() const
{
    return spoken(m_message);
}

void TimelineRow::copy() const
{
    QGuiApplication::clipboard()->setText(m_message.text);
}

QString TimelineRow::spoken(const ChatMessage &message)
{
    switch (message.role) {
    case ChatMessage::Role::User:
        return QStringLiteral("나: ") + message.text;
    case ChatMessage::Role::Assistant:
        return (message.isError ? QStringLiteral("에이전트 오류: ") : QStringLiteral("에이전트: "))
            + message.text;
    case ChatMessage::Role::Activity:
        return QStringLiteral("알림: ") + message.text;
    case ChatMessage::Role::Tools:
        return QStringLiteral("도구 %1개, %2").arg(message.tools.size()).arg(toolCounts(message.tools));
    }
    return {};
}

} // namespace Vesk
