// Holds an editor and its document together.
#pragma once

#include "markdown/MarkdownDocumentModel.h"

#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

/** What is typed goes into the document with its line ends as they were; what comes from elsewhere changes
   the differing part of the editor alone, so that caret and undo steps stay. */
class IssueEditorLink : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *editor READ editor WRITE setEditor NOTIFY editorChanged)
    Q_PROPERTY(Vesk::MarkdownDocumentModel *document READ document WRITE setDocument NOTIFY documentChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickTextDocument *editor() const { return m_editor; }
    void setEditor(QQuickTextDocument *editor);
    [[nodiscard]] MarkdownDocumentModel *document() const { return m_document; }
    void setDocument(MarkdownDocumentModel *document);

    /** While `changed` is told: where a place in the text stands that was at `before`. */
    [[nodiscard]] Q_INVOKABLE int placeOf(int before) const;

Q_SIGNALS:
    void editorChanged();
    void documentChanged();
    void aboutToChange(); ///< by what comes from elsewhere
    void changed();
    void replaced(); ///< another document's text is in the editor

private:
    void take(int from, int removed, int added);
    [[nodiscard]] std::optional<QString> spliced(int from, int removed, int added) const;
    void show(bool fresh);

    QPointer<QQuickTextDocument> m_editor;
    QPointer<MarkdownDocumentModel> m_document;
    QString m_before; // while changed
    QString m_after;
    bool m_busy = false;  // its own changes are no typing
    bool m_alike = false; // the document's line ends are the editor's
};

} // namespace Vesk
