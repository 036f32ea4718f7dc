// Plays the person of the demonstration.
#pragma once

#include "sessions/ProjectChat.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class QQuickWindow;

namespace Vesk
{
class Theme;
}

namespace Vesk::Demo
{

/**
 * Types the script's messages into a session, one a turn. Unattended, it also answers the cards, saves a
 * picture of every state in both themes, and emits finished(); attended, cards wait for the person.
 */
class DemoPlayer : public QObject
{
    Q_OBJECT

public:
    struct Options {
        bool unattended = false;
        QString shots; ///< folder for the pictures, empty for none
    };

    DemoPlayer(ProjectChat &chat, QQuickWindow &window, Theme &theme, Options options);

    void play();

    /** The session's rows as plain text. */
    [[nodiscard]] QString transcript() const;
    /** The pictures that were saved, in order. */
    [[nodiscard]] const QStringList &saved() const { return m_saved; }

Q_SIGNALS:
    void finished();

private:
    void typeNext();
    void typeCharacter();
    void onRunningChanged();
    void onPrompt();
    void answer();
    void takeShots(const QString &name, std::function<void()> then);

    ProjectChat &m_chat;
    QQuickWindow &m_window;
    Theme &m_theme;
    Options m_options;
    QStringList m_messages;
    QString m_typed;
    QStringList m_saved;
    QTimer m_typing;
    bool m_midTurnShot = false;
};

} // namespace Vesk::Demo
