#include "sessions/Transcript.h"

#include <algorithm>

namespace Vesk
{

qsizetype Transcript::index(const QUuid &id) const
{
    // Ids are unique, and what changes is nearly always at the end.
    for (qsizetype position = m_rows.size() - 1; position >= 0; --position) {
        if (m_rows.at(position).id == id)
            return position;
    }
    return -1;
}

const ChatMessage *Transcript::find(const QUuid &id) const
{
    const qsizetype position = index(id);
    return position < 0 ? nullptr : &m_rows.at(position);
}

void Transcript::reset(QList<ChatMessage> rows)
{
    Q_EMIT aboutToReset();
    m_rows = std::move(rows);
    Q_EMIT wasReset();
}

QUuid Transcript::append(ChatMessage row)
{
    return insert(m_rows.size(), std::move(row));
}

QUuid Transcript::insert(qsizetype position, ChatMessage row)
{
    if (row.id.isNull())
        row.id = ChatMessage::freshId();
    const QUuid id = row.id;
    Q_EMIT aboutToInsert(position);
    m_rows.insert(position, std::move(row));
    Q_EMIT inserted(position);
    return id;
}

void Transcript::remove(const QUuid &id)
{
    const qsizetype position = index(id);
    if (position < 0)
        return;
    Q_EMIT aboutToRemove(position);
    m_rows.removeAt(position);
    Q_EMIT removed(position);
}

void Transcript::appendText(const QUuid &id, const QString &text)
{
    const qsizetype position = index(id);
    if (position < 0 || text.isEmpty())
        return;
    m_rows[position].text += text;
    Q_EMIT textGrew(position);
}

void Transcript::setText(const QUuid &id, const QString &text)
{
    const qsizetype position = index(id);
    if (position < 0 || m_rows.at(position).text == text)
        return;
    m_rows[position].text = text;
    Q_EMIT changed(position);
}

void Transcript::setError(const QUuid &id, bool isError)
{
    const qsizetype position = index(id);
    if (position < 0 || m_rows.at(position).isError == isError)
        return;
    m_rows[position].isError = isError;
    Q_EMIT changed(position);
}

void Transcript::setStreaming(const QUuid &id, bool streaming)
{
    const qsizetype position = index(id);
    if (position < 0 || m_rows.at(position).streaming == streaming)
        return;
    m_rows[position].streaming = streaming;
    Q_EMIT changed(position);
}

void Transcript::finishStreaming()
{
    for (qsizetype position = 0; position < m_rows.size(); ++position) {
        if (!m_rows.at(position).streaming)
            continue;
        m_rows[position].streaming = false;
        Q_EMIT changed(position);
    }
}

void Transcript::addTools(const QUuid &id, const QList<ToolActivity> &tools)
{
    const qsizetype position = index(id);
    if (position < 0 || tools.isEmpty())
        return;
    m_rows[position].tools += tools;
    Q_EMIT changed(position);
}

void Transcript::finishTool(const QString &toolUseId, const QString &rawOutput, bool isError,
                            const QDateTime &at, qsizetype droppedBytes)
{
    for (qsizetype position = m_rows.size() - 1; position >= 0; --position) {
        const QList<ToolActivity> &tools = m_rows.at(position).tools;
        const auto found = std::find_if(tools.cbegin(), tools.cend(),
                                        [&](const ToolActivity &tool) { return tool.id == toolUseId; });
        if (found == tools.cend())
            continue;
        const qsizetype tool = std::distance(tools.cbegin(), found);
        m_rows[position].tools[tool].finish(rawOutput, isError, at, droppedBytes);
        Q_EMIT changed(position);
        return;
    }
}

} // namespace Vesk
