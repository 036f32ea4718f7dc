#include "sessions/SentMessages.h"

#include "sessions/Transcript.h"

namespace Vesk
{

QStringList sentMessages(const Transcript &transcript)
{
    QStringList sent;
    for (const ChatMessage &row : transcript.rows()) {
        const bool repeats = !sent.isEmpty() && sent.last() == row.text;
        if (row.role == ChatMessage::Role::User && !row.text.isEmpty() && !repeats)
            sent.append(row.text);
    }
    return sent;
}

std::optional<QString> SentMessageWalk::older(const QStringList &sent, const QString &text, qsizetype caret)
{
    if (text.isEmpty())
        m_back = 0;
    else if (m_back == 0 || text != m_shown || caret != text.size())
        return std::nullopt;
    return show(sent, m_back + 1);
}

std::optional<QString> SentMessageWalk::newer(const QStringList &sent, const QString &text, qsizetype caret)
{
    if (text.isEmpty() || m_back == 0 || text != m_shown || caret != text.size())
        return std::nullopt;
    return show(sent, m_back - 1);
}

std::optional<QString> SentMessageWalk::show(const QStringList &sent, qsizetype back)
{
    if (sent.isEmpty())
        return std::nullopt;
    m_back = qBound(qsizetype(0), back, sent.size());
    m_shown = m_back == 0 ? QString() : sent.at(sent.size() - m_back);
    return m_shown;
}

} // namespace Vesk
