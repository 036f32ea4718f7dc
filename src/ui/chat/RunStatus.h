// What the running status bar and the background summary bar say.
#pragma once

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class ProjectChat;

/** The run of a session in words; blank while nothing runs. */
class RunStatus : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
    Q_PROPERTY(bool waitsForApproval READ waitsForApproval NOTIFY changed)
    Q_PROPERTY(bool waitsForAnswer READ waitsForAnswer NOTIFY changed)
    Q_PROPERTY(QString activity READ activity NOTIFY changed)
    Q_PROPERTY(QDateTime startedAt READ startedAt NOTIFY changed)
    Q_PROPERTY(bool canInterrupt READ canInterrupt NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QString hintHelp READ hintHelp CONSTANT)
    Q_PROPERTY(int backgroundCount READ backgroundCount NOTIFY changed)
    Q_PROPERTY(QString backgroundText READ backgroundText NOTIFY changed)
    Q_PROPERTY(QString backgroundStopHelp READ backgroundStopHelp NOTIFY changed)

public:
    explicit RunStatus(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool waitsForApproval() const;
    [[nodiscard]] bool waitsForAnswer() const;
    [[nodiscard]] QString activity() const;
    [[nodiscard]] QDateTime startedAt() const;
    [[nodiscard]] bool canInterrupt() const;
    [[nodiscard]] QString
    hint() const; ///< shorter while a card is open; empty when nothing can be interrupted
    [[nodiscard]] QString hintHelp() const
    {
        return QStringLiteral("ESC 키로 현재 응답을 중단하고 세션을 유지합니다");
    }
    /** Running background tasks. */
    [[nodiscard]] int backgroundCount() const;
    [[nodiscard]] QString backgroundText() const;
    [[nodiscard]] QString backgroundStopHelp() const;

    Q_INVOKABLE void softInterrupt();
    /** Ends the run, or the child that background work keeps alive. */
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void changed();

private:
    QPointer<ProjectChat> m_chat;
};

} // namespace Vesk
