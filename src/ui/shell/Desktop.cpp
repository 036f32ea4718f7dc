#include "ui/shell/Desktop.h"

#include "ui/controls/DesktopOpener.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>

namespace Vesk
{

void Desktop::copyText(const QString &text) const
{
    QGuiApplication::clipboard()->setText(text);
}

void Desktop::showFolder(const QString &path) const
{
    const QFileInfo info(path);
    DesktopOpener::open(QUrl::fromLocalFile(info.isDir() ? path : info.absolutePath()));
}

QString Desktop::localPath(const QUrl &url) const
{
    return url.toLocalFile();
}

QString Desktop::folderPath(const QUrl &url) const
{
    const QString path = url.toLocalFile();
    return QFileInfo(path).isDir() ? path : QString();
}

} // namespace Vesk
