// The keys of the composer, and who they belong to.
#pragma once

#include "ui/chat/ComposerModel.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <optional>

class QKeyEvent;

namespace Vesk
{

/** What a key press means in the composer. */
enum class ComposerKey {
    Text, ///< the editor's own business
    Send,
    Interrupt,
    Older, ///< the message sent before, where the editor itself has no use for the key
    Newer,
    PreviousCandidate, ///< these four only while a completion is open
    NextCandidate,
    TakeCandidate,
    RefuseCandidates,
    InputMethod, ///< it belongs to the syllable that is being put together, or just was
};

/** How a syllable stands at the moment of a key press. */
struct CompositionState {
    bool composing = false;
    std::optional<qint64> sinceEndMs; ///< since the last one ended; absent when none did
};

/** The key that ends a syllable is given to the window too, right after the syllable's text: so close behind
   one, Enter means the syllable and not the message. */
inline constexpr qint64 compositionEndMs = 50;

[[nodiscard]] ComposerKey composerKey(int key, Qt::KeyboardModifiers modifiers, const CompositionState &state,
                                      bool completing = false);

/** Watches the editor of a composer from below, before the editor and before the window's shortcuts. */
class ComposerKeys : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *editor READ editor WRITE setEditor NOTIFY editorChanged)
    Q_PROPERTY(Vesk::ComposerModel *composer MEMBER m_composer NOTIFY composerChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *editor() const { return m_editor; }
    void setEditor(QQuickItem *editor);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void editorChanged();
    void composerChanged();
    void sendRequested();
    void interruptRequested();

private:
    [[nodiscard]] CompositionState state() const;
    [[nodiscard]] ComposerKey meaning(const QKeyEvent &press) const;
    bool onKey(const QKeyEvent &press); ///< true when the editor is not to see it
    bool onPaste();

    QPointer<QQuickItem> m_editor;
    QPointer<ComposerModel> m_composer;
    bool m_composing = false;
    QElapsedTimer m_sinceEnd;
};

} // namespace Vesk
