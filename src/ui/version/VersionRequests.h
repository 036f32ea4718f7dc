// Who of the project's sessions is asked, and whether it can be asked now.
#pragma once

#include "ui/version/RequestDrafts.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <QVariantList>

namespace Vesk
{

class ProjectChat;
class Runtime;

/**
 * The window itself never writes to a repository: it asks a session to. A running session cannot be asked;
 * a new one always can.
 */
class VersionRequests : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    /** Maps of key, title and running; the most recently opened session comes first, then "" for a new one.
     */
    Q_PROPERTY(QVariantList targets READ targets NOTIFY targetsChanged)
    /** The first that can be asked. */
    Q_PROPERTY(QString firstFree READ firstFree NOTIFY targetsChanged)

public:
    enum Kind { Commit, Push, Resolve, Pull, Branch, Stash, Merge, Any };
    Q_ENUM(Kind)

    VersionRequests(Runtime &runtime, QString alias, QObject *parent = nullptr);

    [[nodiscard]] QVariantList targets() const;
    [[nodiscard]] QString firstFree() const;
    /** Why the session cannot be asked; empty when it can. */
    [[nodiscard]] Q_INVOKABLE QString reasonOf(const QString &key) const;
    /** Sends the text as a turn of the session, or of a new one. False when nothing was sent. */
    Q_INVOKABLE bool send(const QString &text, const QString &key);

Q_SIGNALS:
    void targetsChanged();
    void sent(const QString &key, const QString &title);

private:
    void follow(ProjectChat &chat);
    [[nodiscard]] ProjectChat *find(const QString &key) const;

    Runtime &m_runtime;
    QString m_alias;
};

} // namespace Vesk
