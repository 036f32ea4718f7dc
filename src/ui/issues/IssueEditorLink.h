// Holds an editor and its document together.
#pragma once

#include "markdown/MarkdownDocumentModel.h"

#include <QPointer>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

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

Q_SIGNALS:
    void editorChanged();
    void documentChanged();
    void replaced(); ///< another document's text is in the editor

private:
    void take();
    void show(bool fresh);

    QPointer<QQuickTextDocument> m_editor;
    QPointer<MarkdownDocumentModel> m_document;
    bool m_busy = false; // its own changes are no typing
};

} // namespace Vesk
