// Following the links of a conversation.
#pragma once

#include "markdown/ChatLinkPolicy.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace Vesk
{

/**
 * What happens to a link that was chosen: what the policy lets through is opened at once, anything else is
 * put before the person first. The disk is asked on a thread of the pool; of links chosen one after the other
 * only the last is followed.
 */
class ChatLinks : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(QString address READ address NOTIFY stopped)
    Q_PROPERTY(QString reason READ reason NOTIFY stopped)
    Q_PROPERTY(bool canOpen READ canOpen NOTIFY stopped)

public:
    using QObject::QObject;

    /** The folder that links to files are read against. */
    void setProjectFolder(const QString &folder);

    /** Asked before a file is opened, with its path as linked and with all links resolved; true when the
       program shows it itself. Without a resolved path, of a file that is not there: true when it would. */
    std::function<bool(const QString &path, const QString &realPath)> showsItself;

    /** The link that was stopped, as it can be shown, and why. */
    [[nodiscard]] QString address() const { return m_stopped.address; }
    [[nodiscard]] QString reason() const { return m_stopped.reason; }
    /** It may be opened all the same. */
    [[nodiscard]] bool canOpen() const { return m_stopped.action == LinkDecision::Action::Ask; }

    /** A link of a block's inline HTML was chosen. */
    Q_INVOKABLE void follow(const QString &address, const QString &html);
    /** The person says yes to the link that was stopped. */
    Q_INVOKABLE void openAnyway();
    Q_INVOKABLE void copyAddress() const;

Q_SIGNALS:
    void stopped(); ///< a link is not opened as it is: the person is to be asked or told

private:
    void carryOut(const LinkDecision &decision, const QString &path = {});
    void stopAtMissing(const LinkDecision &decision, const QStringList &meant);
    void open(const LinkDecision &decision);
    void stop(const LinkDecision &decision);

    QString m_project;
    LinkDecision m_stopped;
    int m_followed = 0; // how many were chosen: an answer to an earlier one is dropped
};

/** What the disk says of these paths. May wait for the disk. */
[[nodiscard]] LinkedFiles lookAtLinkedFiles(const QStringList &paths);

} // namespace Vesk
