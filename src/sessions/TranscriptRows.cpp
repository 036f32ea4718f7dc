// From the lines of a transcript to the rows of a session.
#include "base/Files.h"
#include "base/LineChunker.h"
#include "base/Text.h"
#include "claude/TranscriptLine.h"
#include "claude/TranscriptTitle.h"
#include "sessions/ClaudeSessionHistory.h"

#include <QHash>

#include <utility>

namespace Vesk::ClaudeSessionHistory
{

namespace
{

bool isConversation(const ChatMessage &row)
{
    return row.role == ChatMessage::Role::User || row.role == ChatMessage::Role::Assistant;
}

class RowBuilder
{
public:
    explicit RowBuilder(bool includeTools)
        : m_includeTools(includeTools)
    {
    }

    void add(const TranscriptLine &line)
    {
        if (line.type == u"assistant") {
            say(ChatMessage::Role::Assistant, line);
            if (m_includeTools)
                recordUses(line);
        } else if (line.type == u"user") {
            say(ChatMessage::Role::User, line);
            if (m_includeTools)
                fillResults(line);
        }
    }

    /** The rows. A call whose result never came was cut off with its child: it runs no more. */
    [[nodiscard]] QList<ChatMessage> take()
    {
        for (ChatMessage &row : m_rows) {
            for (ToolActivity &tool : row.tools) {
                if (tool.outcome == ToolActivity::Outcome::Running)
                    tool.finish({}, true, tool.startedAt);
            }
        }
        return std::move(m_rows);
    }

private:
    struct Place {
        qsizetype row, tool;
    };

    void append(ChatMessage::Role role, const QString &text, const QDateTime &at)
    {
        ChatMessage row;
        row.id = ChatMessage::freshId();
        row.role = role;
        row.text = text;
        row.at = at;
        m_rows.append(row);
    }

    void say(ChatMessage::Role role, const TranscriptLine &line)
    {
        const QString text = Text::trimWhitespace(line.text.value_or(QString()));
        if (text.isEmpty())
            return;
        append(role, text, line.timestamp);
        m_toolRowIsOpen = false;
    }

    void recordUses(const TranscriptLine &line)
    {
        for (const StreamContent &block : line.message.content) {
            if (block.type != u"tool_use")
                continue;
            if (!std::exchange(m_toolRowIsOpen, true))
                append(ChatMessage::Role::Tools, {}, line.timestamp);
            const ToolActivity activity = ToolActivity::begun(block, line.timestamp);
            QList<ToolActivity> &tools = m_rows.last().tools;
            m_places.insert(activity.id, {m_rows.size() - 1, tools.size()});
            tools.append(activity);
        }
    }

    void fillResults(const TranscriptLine &line)
    {
        for (const StreamContent &block : line.message.content) {
            const auto place = block.type == u"tool_result"
                ? m_places.constFind(block.toolUseId.value_or(QString()))
                : m_places.constEnd();
            if (place != m_places.constEnd())
                m_rows[place->row].tools[place->tool].finish(block.resultText(), block.isError,
                                                             line.timestamp, block.contentDroppedBytes);
        }
    }

    bool m_includeTools;
    bool m_toolRowIsOpen = false; // the last row takes the next call
    QList<ChatMessage> m_rows;
    QHash<QString, Place> m_places; // by tool use id
};

} // namespace

QList<ChatMessage> loadMessages(const QString &path, int cap, bool includeTools)
{
    const Result<QByteArray> bytes = readFile(path, maxTranscriptBytes);
    if (!bytes)
        return {};
    RowBuilder rows(includeTools);
    TranscriptDecoder decoder;
    LineChunker chunker;
    const auto read = [&](std::string_view text) {
        if (const auto line = decoder.decode(text, true))
            rows.add(*line);
    };
    chunker.append(*bytes, read);
    chunker.finish(read);
    return trimmed(rows.take(), cap);
}

QList<ChatMessage> trimmed(QList<ChatMessage> rows, int cap)
{
    int counted = 0;
    for (qsizetype i = rows.size() - 1; i >= 0; --i) {
        if (!isConversation(rows.at(i)) || ++counted <= cap)
            continue;
        // One too many: what stays begins at the next row of conversation.
        qsizetype first = i + 1;
        while (first < rows.size() && !isConversation(rows.at(first)))
            ++first;
        rows.remove(0, first);
        break;
    }
    return rows;
}

} // namespace Vesk::ClaudeSessionHistory
