#include "ui/controls/DesktopOpener.h"

#include <QDesktopServices>

namespace Vesk::DesktopOpener
{

namespace
{

std::function<bool(const QUrl &)> &replacement()
{
    static std::function<bool(const QUrl &)> opener;
    return opener;
}

} // namespace

bool open(const QUrl &url)
{
    return replacement() ? replacement()(url) : QDesktopServices::openUrl(url);
}

void replace(std::function<bool(const QUrl &)> opener)
{
    replacement() = std::move(opener);
}

} // namespace Vesk::DesktopOpener
