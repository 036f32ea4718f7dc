#include "ui/issues/IssueEditorLink.h"

#include "ui/issues/IssueText.h"

#include <QQuickItem>
#include <QTextCursor>
#include <QTextDocument>

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
        // Of a long text only what is in view is drawn anew with every key.
        if (auto *item = qobject_cast<QQuickItem *>(m_editor->parent())) {
            item->setFlag(QQuickItem::ItemObservesViewport);
        }
        connect(m_editor->textDocument(), &QTextDocument::contentsChange, this,
                [this](int from, int removed, int added) {
                    if (removed > 0 || added > 0) {
                        take(from, removed, added);
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

/** The changed place alone, when the editor and the document agree on all signs around it. */
std::optional<QString> IssueEditorLink::spliced(int from, int removed, int added) const
{
    auto &editor = *m_editor->textDocument();
    const QString &text = m_document->text();
    const int size = editor.characterCount() - 1; // it counts an end of its own
    if (!m_alike || from + removed > text.size() || from + added > size
        || text.size() - removed + added != size) {
        return std::nullopt;
    }
    QTextCursor cursor(&editor);
    cursor.setPosition(from);
    cursor.setPosition(from + added, QTextCursor::KeepAnchor);
    QString changed = text;
    changed.replace(from, removed, cursor.selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    return changed;
}

void IssueEditorLink::take(int from, int removed, int added)
{
    if (m_busy || !m_document || m_document->isLocked()) {
        return;
    }
    auto text = spliced(from, removed, added);
    if (!text) {
        text = IssueText::withEdit(m_document->text(), rawText(*m_editor->textDocument()));
    }
    if (*text != m_document->text()) {
        m_busy = true;
        m_document->setText(*text);
        m_busy = false;
        m_document->scheduleAutosave();
    }
}

int IssueEditorLink::placeOf(int before) const
{
    return static_cast<int>(IssueText::caretAfter(m_before, m_after, before));
}

void IssueEditorLink::show(bool fresh)
{
    if (m_busy || !m_document || !m_editor || !m_editor->textDocument()) {
        return;
    }
    auto &document = *m_editor->textDocument();
    const QString wanted = IssueText::editorText(m_document->text());
    m_alike = wanted == m_document->text();
    const QString shown = rawText(document);
    if (wanted == shown) {
        return;
    }
    m_busy = true;
    if (fresh) {
        document.setPlainText(wanted);
    } else {
        m_before = shown;
        m_after = wanted;
        Q_EMIT aboutToChange();
        const auto [head, tail] = IssueText::sameEnds(wanted, shown);
        QTextCursor cursor(&document);
        cursor.beginEditBlock();
        cursor.setPosition(static_cast<int>(head));
        cursor.setPosition(static_cast<int>(shown.size() - tail), QTextCursor::KeepAnchor);
        cursor.insertText(wanted.mid(head, wanted.size() - head - tail));
        cursor.endEditBlock();
        Q_EMIT changed();
        m_before.clear();
        m_after.clear();
    }
    m_busy = false;
    if (fresh) {
        Q_EMIT replaced();
    }
}

} // namespace Vesk
