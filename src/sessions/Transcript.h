// The rows of one session, and who is told when they change.
#pragma once

#include "sessions/ChatMessage.h"

#include <QObject>

namespace Vesk
{

/**
 * The ordered rows of a session. Every change is announced, so that a list model can follow it without
 * comparing; positions in the signals are those at the time of the signal.
 */
class Transcript : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] const QList<ChatMessage> &rows() const { return m_rows; }
    [[nodiscard]] bool isEmpty() const { return m_rows.isEmpty(); }
    /** The position of the first row with this id, -1 if there is none. */
    [[nodiscard]] qsizetype index(const QUuid &id) const;
    [[nodiscard]] const ChatMessage *find(const QUuid &id) const;

    void reset(QList<ChatMessage> rows);
    QUuid append(ChatMessage row);
    QUuid insert(qsizetype position, ChatMessage row);
    void remove(const QUuid &id);
    void appendText(const QUuid &id, const QString &text);
    void setText(const QUuid &id, const QString &text);
    void setError(const QUuid &id, bool isError);
    void setStreaming(const QUuid &id, bool streaming);
    void finishStreaming(); ///< no row may grow any more
    void addTools(const QUuid &id, const QList<ToolActivity> &tools);
    /** Finishes the call with this tool use id, in whatever row it stands; an unknown id changes nothing. */
    void finishTool(const QString &toolUseId, const QString &rawOutput, bool isError, const QDateTime &at,
                    qsizetype droppedBytes = 0);

Q_SIGNALS:
    void aboutToReset();
    void wasReset();
    void aboutToInsert(qsizetype position);
    void inserted(qsizetype position);
    void aboutToRemove(qsizetype position);
    void removed(qsizetype position);
    void changed(qsizetype position);  ///< anything of the row but its place
    void textGrew(qsizetype position); ///< only text was added at the end of the row's text

private:
    QList<ChatMessage> m_rows;
};

} // namespace Vesk
