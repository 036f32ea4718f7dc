// What host a text promises, and whether a host is what it looks like.
#pragma once

#include <QString>
#include <QUrl>

namespace Vesk::LinkHost
{

/** How a host reads whose letters could be taken for others; empty for one that is plain: ASCII, or labels
    wholly in Hangul. `host` is in its ASCII form. */
[[nodiscard]] QString misleading(const QString &host);

/** The host that a link's text shows, when it is not that of `url`; empty when it shows none. */
[[nodiscard]] QString claimedBy(const QString &shown, const QUrl &url);

} // namespace Vesk::LinkHost
