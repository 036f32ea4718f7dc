// One row of a timeline while it is on the screen.
#pragma once

#include "sessions/ChatMessage.h"
#include "ui/chat/MarkdownBlockModel.h"
#include "ui/chat/ToolGroupModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace Vesk
{

/**
 * What the delegate of a row shows. Made for rows on the screen only: a row elsewhere has neither parsed text
 * nor models. Its `blocks` and `tools` are there as the kind asks for, else null.
 */
class TimelineRow : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a timeline")
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool hasText READ hasText NOTIFY hasTextChanged)
    Q_PROPERTY(QString time READ time CONSTANT)
    Q_PROPERTY(bool growing READ growing NOTIFY stateChanged)
    Q_PROPERTY(bool isError READ isError NOTIFY stateChanged)
    Q_PROPERTY(QStringList attachments READ attachments CONSTANT)
    Q_PROPERTY(QString accessibleText READ accessibleText NOTIFY spokenChanged)
    Q_PROPERTY(Vesk::MarkdownBlockModel *blocks READ blocks CONSTANT)
    Q_PROPERTY(Vesk::ToolGroupModel *tools READ tools CONSTANT)

public:
    enum class Kind { User, Assistant, Activity, Tools };
    Q_ENUM(Kind)

    TimelineRow(const ChatMessage &message, std::shared_ptr<ToolFolding> folding, QObject *parent = nullptr);

    /** Takes over the row as it is now; `textFollows` tells whether text stands below it. */
    void update(const ChatMessage &message, bool textFollows);

    [[nodiscard]] QUuid id() const { return m_message.id; }
    [[nodiscard]] Kind kind() const;
    [[nodiscard]] const QString &text() const { return m_message.text; }
    /** For bindings: each look at a long text would copy it. */
    [[nodiscard]] bool hasText() const { return !m_message.text.isEmpty(); }
    [[nodiscard]] QString time() const;
    /** It may still grow, and nothing stands below it yet: where the next words will appear. */
    [[nodiscard]] bool growing() const { return m_message.streaming && !m_textFollows; }
    [[nodiscard]] bool isError() const { return m_message.isError; }
    [[nodiscard]] QStringList attachments() const; ///< file names
    [[nodiscard]] QString accessibleText() const;
    [[nodiscard]] MarkdownBlockModel *blocks() const { return m_blocks.get(); }
    [[nodiscard]] ToolGroupModel *tools() const { return m_tools.get(); }

    /** Puts the row's text on the clipboard. */
    Q_INVOKABLE void copy() const;

    /** The row in words, for any message: who, and what. */
    [[nodiscard]] static QString spoken(const ChatMessage &message);

Q_SIGNALS:
    void textChanged();
    void hasTextChanged();
    /** The row in words is another; not at every word of a text that still grows. */
    void spokenChanged();
    void stateChanged();

private:
    ChatMessage m_message;
    bool m_textFollows = false;
    std::unique_ptr<MarkdownBlockModel> m_blocks;
    std::unique_ptr<ToolGroupModel> m_tools;
};

} // namespace Vesk
