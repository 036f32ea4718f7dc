// The keys of the composer, and who they belong to.
#pragma once

#include "ui/chat/ComposerModel.h"
#include "ui/controls/Composition.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

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

[[nodiscard]] ComposerKey composerKey(int key, Qt::KeyboardModifiers modifiers, const CompositionState &state,
                                      bool completing = false);

/** Watches the editor of a composer. */
class ComposerKeys : public Vesk::EditorKeys
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::ComposerModel *composer MEMBER m_composer NOTIFY composerChanged)

public:
    using EditorKeys::EditorKeys;

Q_SIGNALS:
    void composerChanged();
    void sendRequested();
    void interruptRequested();

protected:
    bool onEditorEvent(QEvent &event) override;

private:
    [[nodiscard]] ComposerKey meaning(const QKeyEvent &press) const;
    bool onKey(const QKeyEvent &press);
    bool onPaste();

    QPointer<ComposerModel> m_composer;
};

} // namespace Vesk
