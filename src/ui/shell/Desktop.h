// What the window asks of the desktop around it.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <QUrl>

namespace Vesk
{

class Desktop : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE void copyText(const QString &text) const;
    /** Shows a folder in the file manager; for a file the folder that holds it. */
    Q_INVOKABLE void showFolder(const QString &path) const;
    /** The local path of an address that was dropped or chosen; empty when it is not local. */
    [[nodiscard]] Q_INVOKABLE QString localPath(const QUrl &url) const;
    /** The same for an existing folder; empty for anything else. */
    [[nodiscard]] Q_INVOKABLE QString folderPath(const QUrl &url) const;
};

} // namespace Vesk
