// Syllables that are being put together by an input method, and the keys that belong to them.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

/** The key that ends a syllable is given to the window too, right after the syllable's text: so close behind
   one, Enter and Esc mean the syllable. */
inline constexpr qint64 compositionEndMs = 50;

/** How a syllable stands at the moment of a key press. */
struct CompositionState {
    bool composing = false;
    std::optional<qint64> sinceEndMs {}; ///< since the last one ended; absent when none did

    [[nodiscard]] bool endedJustNow() const { return sinceEndMs && *sinceEndMs < compositionEndMs; }
};

/** Follows the syllables of one editor by the events that come to it. */
class CompositionWatch
{
public:
    void note(const QEvent &event);
    [[nodiscard]] CompositionState state() const;

private:
    bool m_composing = false;
    QElapsedTimer m_sinceEnd;
};

/** Enter for a syllable that is not yet in the text: it ends there. */
void endComposition();

/** Sees the events of one editor before the editor and before the window's shortcuts. */
class EditorKeys : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QQuickItem *editor READ editor WRITE setEditor NOTIFY editorChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem *editor() const { return m_editor; }
    void setEditor(QQuickItem *editor);

    bool eventFilter(QObject *watched, QEvent *event) final;

Q_SIGNALS:
    void editorChanged();

protected:
    /** True when the editor is not to see the event. */
    virtual bool onEditorEvent(QEvent &event) = 0;
    [[nodiscard]] CompositionState composition() const { return m_composition.state(); }

private:
    QPointer<QQuickItem> m_editor;
    CompositionWatch m_composition;
};

/** Keeps the Enter and the Esc of a syllable from an editor, and so from the form around it. */
class CompositionGuard : public Vesk::EditorKeys
{
    Q_OBJECT
    QML_ELEMENT

public:
    using EditorKeys::EditorKeys;

protected:
    bool onEditorEvent(QEvent &event) override;
};

} // namespace Vesk
