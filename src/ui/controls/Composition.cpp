#include "ui/controls/Composition.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace Vesk
{

void CompositionWatch::note(const QEvent &event)
{
    if (event.type() == QEvent::InputMethod) {
        const bool composing = !static_cast<const QInputMethodEvent &>(event).preeditString().isEmpty();
        if (m_composing && !composing) {
            m_sinceEnd.start();
        }
        m_composing = composing;
    } else if (event.type() == QEvent::FocusOut) {
        m_composing = false;
    }
}

CompositionState CompositionWatch::state() const
{
    return {m_composing, m_sinceEnd.isValid() ? std::optional(m_sinceEnd.elapsed()) : std::nullopt};
}

void endComposition()
{
    QGuiApplication::inputMethod()->commit();
}

void EditorKeys::setEditor(QQuickItem *editor)
{
    if (m_editor == editor) {
        return;
    }
    if (m_editor) {
        m_editor->removeEventFilter(this);
    }
    m_editor = editor;
    m_composition = {};
    if (m_editor) {
        m_editor->installEventFilter(this);
    }
    Q_EMIT editorChanged();
}

bool EditorKeys::eventFilter(QObject *watched, QEvent *event)
{
    m_composition.note(*event);
    return onEditorEvent(*event) || QObject::eventFilter(watched, event);
}

bool CompositionGuard::onEditorEvent(QEvent &event)
{
    if (event.type() != QEvent::ShortcutOverride && event.type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<QKeyEvent &>(event).key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const CompositionState state = composition();
    if ((!isEnter && key != Qt::Key_Escape) || (!state.composing && !state.endedJustNow())) {
        return false;
    }
    if (isEnter && state.composing && event.type() == QEvent::KeyPress) {
        endComposition();
    }
    event.accept();
    return true;
}

} // namespace Vesk
