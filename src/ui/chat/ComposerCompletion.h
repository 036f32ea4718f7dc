// The popup of a composer: what it offers for the word at the caret, and what taking an offer does to the
// text.
#pragma once

#include "sessions/ComposerAutocompleteModel.h"
#include "sessions/ComposerFileLookup.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class ProjectChat;

/**
 * Opens only while somebody types: a text that is put into the composer, or a caret that is moved into a
 * word, opens nothing. A syllable that is being put together counts as typed.
 */
class ComposerCompletion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a composer")
    Q_PROPERTY(QAbstractItemModel *model READ model CONSTANT)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(int highlighted READ highlighted NOTIFY highlightedChanged)
    Q_PROPERTY(bool namesFiles READ namesFiles NOTIFY candidatesChanged)

public:
    explicit ComposerCompletion(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] ComposerAutocompleteModel *model() { return &m_model; }
    [[nodiscard]] bool isOpen() const { return m_model.isActive(); }
    [[nodiscard]] int highlighted() const { return m_model.highlighted(); }
    [[nodiscard]] bool namesFiles() const { return m_model.namesFiles(); }

    /** The text was changed by typing; `preedit` is the syllable in the making, which stands at the caret. */
    Q_INVOKABLE void noteTyped(const QString &text, int caret, const QString &preedit);
    Q_INVOKABLE void noteCaret(const QString &text, int caret, const QString &preedit);
    /** Takes the highlighted candidate; while its list is still that of an older query, as soon as it isn't.
     */
    void confirm();
    Q_INVOKABLE void take(int index);
    /** Closes it for this word, until another one is begun. */
    void refuse();
    /** Closes it because the text is no longer worked on. */
    Q_INVOKABLE void close();

Q_SIGNALS:
    void isOpenChanged();
    void highlightedChanged();
    void candidatesChanged();
    /** The text from `start` to `end` (UTF-16 units, without a preedit) is to become `text`. */
    void replaceRequested(int start, int end, const QString &text);

private:
    void follow(const QString &text, qsizetype caret, const QString &preedit);
    void onFound(const QStringList &paths);

    QPointer<ProjectChat> m_chat;
    ComposerAutocompleteModel m_model;
    ComposerFileLookup m_lookup;
    std::optional<ComposerAutocomplete::Detection> m_detection; // of the text as it is now
    std::optional<qsizetype> m_refused;                         // where the word that wants no popup begins
    bool m_blankFollows = false;
};

} // namespace Vesk
