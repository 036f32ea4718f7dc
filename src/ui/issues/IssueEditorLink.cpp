#include "ui/issues/IssueEditorLink.h"

#include "ui/issues/IssueText.h"

#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace Vesk
{

namespace
{

/** Not toPlainText(), which makes blanks of other signs. */
QString rawText(const QTextDocument &document)
{
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    return text;
}

} // namespace

void IssueEditorLink::setEditor(QQuickTextDocument *editor)
{
    if (m_editor == editor) {
        return;
    }
    if (m_editor && m_editor->textDocument()) {
        m_editor->textDocument()->disconnect(this);
    }
    m_editor = editor;
    if (m_editor) {
        connect(m_editor->textDocument(), &QTextDocument::contentsChange, this,
                [this](int, int removed, int added) {
                    if (removed > 0 || added > 0) {
                        take();
                    }
                });
    }
    Q_EMIT editorChanged();
    show(true);
}

void IssueEditorLink::setDocument(MarkdownDocumentModel *document)
{
    if (m_document == document) {
        return;
    }
    if (m_document) {
        m_document->disconnect(this);
    }
    m_document = document;
    if (m_document) {
        connect(m_document, &MarkdownDocumentModel::textChanged, this, [this] { show(false); });
    }
    Q_EMIT documentChanged();
    show(true);
}

void IssueEditorLink::take()
{
    if (m_busy || !m_document || m_document->isLocked()) {
        return;
    }
    const QString text = IssueText::withEdit(m_document->text(), rawText(*m_editor->textDocument()));
    if (text != m_document->text()) {
        m_busy = true;
        m_document->setText(text);
        m_busy = false;
        m_document->scheduleAutosave();
    }
}

void IssueEditorLink::show(bool fresh)
{
    if (m_busy || !m_document || !m_editor || !m_editor->textDocument()) {
        return;
    }
    auto &document = *m_editor->textDocument();
    const QString wanted = IssueText::editorText(m_document->text());
    const QString shown = rawText(document);
    if (wanted == shown) {
        return;
    }
    m_busy = true;
    if (fresh) {
        document.setPlainText(wanted);
    } else {
        const auto most = std::min(wanted.size(), shown.size());
        qsizetype head = 0;
        while (head < most && wanted[head] == shown[head]) {
            ++head;
        }
        qsizetype tail = 0;
        while (tail < most - head && wanted[wanted.size() - 1 - tail] == shown[shown.size() - 1 - tail]) {
            ++tail;
        }
        QTextCursor cursor(&document);
        cursor.beginEditBlock();
        cursor.setPosition(static_cast<int>(head));
        cursor.setPosition(static_cast<int>(shown.size() - tail), QTextCursor::KeepAnchor);
        cursor.insertText(wanted.mid(head, wanted.size() - head - tail));
        cursor.endEditBlock();
    }
    m_busy = false;
    if (fresh) {
        Q_EMIT replaced();
    }
}

} // namespace Vesk
