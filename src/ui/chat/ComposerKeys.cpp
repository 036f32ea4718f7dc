#include "ui/chat/ComposerKeys.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace Vesk
{

ComposerKey composerKey(int key, Qt::KeyboardModifiers modifiers, const CompositionState &state,
                        bool completing)
{
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
    if ((modifiers & ~Qt::KeypadModifier) != Qt::NoModifier) {
        return ComposerKey::Text;
    }
    const bool endedASyllable = state.endedJustNow();
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return endedASyllable ? ComposerKey::InputMethod
            : completing      ? ComposerKey::TakeCandidate
                              : ComposerKey::Send;
    case Qt::Key_Tab:
        return !completing   ? ComposerKey::Text
            : endedASyllable ? ComposerKey::InputMethod
                             : ComposerKey::TakeCandidate;
    case Qt::Key_Escape:
        return endedASyllable ? ComposerKey::InputMethod
            : completing      ? ComposerKey::RefuseCandidates
                              : ComposerKey::Interrupt;
    case Qt::Key_Up:
        return completing ? ComposerKey::PreviousCandidate : ComposerKey::Older;
    case Qt::Key_Down:
        return completing ? ComposerKey::NextCandidate : ComposerKey::Newer;
    default:
        return ComposerKey::Text;
    }
}

bool ComposerKeys::onEditorEvent(QEvent &event)
{
    if (event.type() == QEvent::ShortcutOverride
        && meaning(static_cast<QKeyEvent &>(event)) == ComposerKey::InputMethod) {
        event.accept();
        return true;
    }
    return event.type() == QEvent::KeyPress && onKey(static_cast<QKeyEvent &>(event));
}

ComposerKey ComposerKeys::meaning(const QKeyEvent &press) const
{
    return composerKey(press.key(), press.modifiers(), composition(),
                       m_composer && m_composer->completion()->isOpen());
}

bool ComposerKeys::onKey(const QKeyEvent &press)
{
    if (press.matches(QKeySequence::Paste)) {
        return onPaste();
    }
    const auto key = meaning(press);
    switch (key) {
    case ComposerKey::Text:
        return false;
    case ComposerKey::Send:
        if (!press.isAutoRepeat()) {
            Q_EMIT sendRequested();
        }
        return true;
    case ComposerKey::Interrupt:
        Q_EMIT interruptRequested();
        return true;
    case ComposerKey::Older:
    case ComposerKey::Newer:
        return m_composer
            && m_composer->recall(key == ComposerKey::Older, editor()->property("text").toString(),
                                  editor()->property("cursorPosition").toInt());
    case ComposerKey::PreviousCandidate:
        m_composer->completion()->model()->moveHighlight(-1);
        return true;
    case ComposerKey::NextCandidate:
        m_composer->completion()->model()->moveHighlight(1);
        return true;
    case ComposerKey::TakeCandidate:
        m_composer->completion()->confirm();
        return true;
    case ComposerKey::RefuseCandidates:
        m_composer->completion()->refuse();
        return true;
    case ComposerKey::InputMethod:
        if (composition().composing && (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter)) {
            endComposition();
        }
        return true;
    }
    return false;
}

bool ComposerKeys::onPaste()
{
    const auto *data = QGuiApplication::clipboard()->mimeData();
    return m_composer && data && m_composer->attachments()->paste(*data);
}

} // namespace Vesk
