#include "ui/chat/ComposerKeys.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace Vesk
{

ComposerKey composerKey(int key, Qt::KeyboardModifiers modifiers, const CompositionState &state)
{
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (state.composing) {
        switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            return ComposerKey::InputMethod;
        default:
            return ComposerKey::Text;
        }
    }
    const auto held = modifiers & ~Qt::KeypadModifier;
    if (isEnter && held == Qt::NoModifier) {
        return state.sinceEndMs && *state.sinceEndMs < compositionEndMs ? ComposerKey::InputMethod
                                                                        : ComposerKey::Send;
    }
    if (key == Qt::Key_Escape && held == Qt::NoModifier) {
        return ComposerKey::Interrupt;
    }
    return ComposerKey::Text;
}

void ComposerKeys::setEditor(QQuickItem *editor)
{
    if (m_editor == editor) {
        return;
    }
    if (m_editor) {
        m_editor->removeEventFilter(this);
    }
    m_editor = editor;
    m_composing = false;
    if (m_editor) {
        m_editor->installEventFilter(this);
    }
    Q_EMIT editorChanged();
}

bool ComposerKeys::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::InputMethod: {
        const bool composing = !static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty();
        if (m_composing && !composing) {
            m_sinceEnd.start();
        }
        m_composing = composing;
        break;
    }
    case QEvent::FocusOut:
        m_composing = false;
        break;
    case QEvent::ShortcutOverride: {
        const auto *press = static_cast<QKeyEvent *>(event);
        if (composerKey(press->key(), press->modifiers(), state()) == ComposerKey::InputMethod) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::KeyPress: {
        const auto *press = static_cast<QKeyEvent *>(event);
        switch (composerKey(press->key(), press->modifiers(), state())) {
        case ComposerKey::Text:
            break;
        case ComposerKey::Send:
            if (!press->isAutoRepeat()) {
                Q_EMIT sendRequested();
            }
            return true;
        case ComposerKey::Interrupt:
            Q_EMIT interruptRequested();
            return true;
        case ComposerKey::InputMethod:
            if (m_composing && (press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter)) {
                QGuiApplication::inputMethod()->commit();
            }
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

CompositionState ComposerKeys::state() const
{
    return {m_composing, m_sinceEnd.isValid() ? std::optional(m_sinceEnd.elapsed()) : std::nullopt};
}

} // namespace Vesk
