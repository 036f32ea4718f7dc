// Icons and shadows, drawn when asked for.
#pragma once

#include <QColor>
#include <QImage>
#include <QQuickImageProvider>
#include <QSize>
#include <QString>

namespace Vesk
{

/** The icon of that name in one colour, `size` in device pixels; empty when there is no such icon. */
[[nodiscard]] QImage renderIcon(const QString &name, const QColor &color, const QSize &size);

/**
 * `image://icon/<name>?<rrggbb or aarrggbb>`. Qt's own pixmap cache keeps what was drawn, by address and
 * size, so that a hundred rows with one mark share one picture.
 */
class IconProvider : public QQuickImageProvider
{
public:
    IconProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

/** The shadow below a popup as a nine-patch of 84 pixels, its borders 41 wide, the blur reaching 20 outwards.
 */
[[nodiscard]] QImage renderShadow(const QColor &color);

/** `image://shadow/<aarrggbb>`: renderShadow() in that colour. */
class ShadowProvider : public QQuickImageProvider
{
public:
    ShadowProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace Vesk
