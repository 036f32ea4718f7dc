// Tells a person what happens in sessions that are not in view: by the tray and by notices on the desktop,
// and by toasts to who is at the window.
#pragma once

#include "core/SessionBus.h"
#include "ui/shell/AttentionPlan.h"
#include "ui/shell/ToastsModel.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace Vesk
{

class Runtime;
class Workspace;

/**
 * Follows the sessions of a workspace. Nothing is asked of the desktop before begin(), which comes after the
 * first frame; without a tray or a notification service nothing happens.
 */
class Attention : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(bool inTray READ inTray NOTIFY inTrayChanged)
    Q_PROPERTY(Vesk::ToastsModel *toasts READ toasts CONSTANT)

public:
    Attention(Workspace &workspace, Runtime &runtime, BusSource bus = &sessionBus, QObject *parent = nullptr);
    ~Attention() override;

    void begin();

    /** The program can be found in the desktop's tray. */
    [[nodiscard]] bool inTray() const;

    [[nodiscard]] ToastsModel *toasts() { return &m_toasts; }
    Q_INVOKABLE void goTo(const QString &sessionKey);
    Q_INVOKABLE void dismissToast(const QString &sessionKey);

    /** The window is being closed by the person: whether it may go for good. If not, one of the signals says
       what happens instead. */
    [[nodiscard]] Q_INVOKABLE bool mayClose();
    /** Whether the window can be seen. One that went into the tray comes back when the tray goes. */
    void setWindowVisible(bool visible);
    /** The program is to end; asks first when that would cut off work. */
    void requestEnd();

Q_SIGNALS:
    void inTrayChanged();
    void hideAsked();
    void confirmationAsked();
    void endAsked();

private:
    void update();
    void onTrayShownChanged();
    void bringUp(const QString &sessionKey, const QString &activationToken);
    void onTrayTriggered(const QString &key, const QString &activationToken);
    [[nodiscard]] QList<AttentionSession> sessions() const;

    Workspace &m_workspace;
    Runtime &m_runtime;
    BusSource m_bus;
    DesktopNotifications m_notifications;
    std::unique_ptr<TrayItem> m_tray;
    QList<AttentionTold> m_told;
    QList<AttentionTold> m_toastsDone;
    ToastsModel m_toasts;
    QStringList m_shownStates; // what the tray's menu was last announced for
    TrayCounts m_counts;
    bool m_windowInTray = false;
    QTimer m_settle; // one look for all that changes in one go
};

} // namespace Vesk
