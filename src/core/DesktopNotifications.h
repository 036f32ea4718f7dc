// Notices on the desktop, by org.freedesktop.Notifications.
#pragma once

#include "core/SessionBus.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace Vesk
{

class AuditLogger;

/** What one notice says. Texts are plain: they are escaped where the desktop would read markup. */
struct DesktopNotice {
    QString title;
    QString body;
    QString category;   ///< as the desktop tells kinds of notices apart, as in "im.received"
    QString sound;      ///< a name of the sound theme
    bool stays = false; ///< until it is closed; else the desktop takes it away after a while

    bool operator==(const DesktopNotice &) const = default;
};

/**
 * Notices by key, at most one each. Every call is asynchronous and nothing is waited for: what is asked while
 * an answer is under way is done after it. Without a service there are no notices, which is said once in the
 * audit log. The bus is not asked for before the first notice.
 */
class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotifications(AuditLogger &auditLogger, BusSource bus = &sessionBus,
                                  QObject *parent = nullptr);
    ~DesktopNotifications() override;

    /** Shows a notice in the place of the one with this key. */
    void show(const QString &key, const DesktopNotice &notice);
    /** Takes it away; nothing for an unknown key. */
    void close(const QString &key);
    void closeAll();

    /** The person has chosen a notice. The token lets a window come to the front; it may be empty. */
    std::function<void(const QString &key, const QString &activationToken)> onInvoked;

private Q_SLOTS:
    void onActionInvoked(uint id, const QString &action);
    void onActivationToken(uint id, const QString &token);
    void onNotificationClosed(uint id, uint reason);

private:
    enum class Readiness { Untried, Asking, Ready, Absent };

    struct Slot {
        uint id = 0;                         ///< the service's, 0 before its first answer
        bool asking = false;                 ///< a Notify call is under way
        std::optional<DesktopNotice> wanted; ///< what is to be sent next
        bool closeWanted = false;
    };

    void prepare();
    void onCapabilities(const QStringList &capabilities);
    void noteAbsent(const QString &reason);
    void advance(const QString &key);
    void send(const QString &key, const DesktopNotice &notice);
    void onAnswered(const QString &key, uint id);
    void closeShown(uint id);
    [[nodiscard]] QString keyOf(uint id) const;

    AuditLogger &m_auditLogger;
    BusSource m_bus;
    QMap<QString, Slot> m_slots;
    Readiness m_readiness = Readiness::Untried;
    bool m_readsMarkup = false;
    bool m_saidUnavailable = false;
    uint m_tokenId = 0;
    QString m_token;
};

} // namespace Vesk
