#include "ui/controls/IconProvider.h"

#include <QFile>
#include <QLoggingCategory>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <cmath>
#include <numbers>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(iconLog, "vesk.ui.icons")

constexpr int plainIconSize = 16;

QColor colorOf(QStringView word)
{
    return {u'#' + word.toString()};
}

} // namespace

QImage renderIcon(const QString &name, const QColor &color, const QSize &size)
{
    QFile file(u":/qt/qml/Vesk/Controls/icons/"_s + name + u".svg"_s);
    if (size.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    auto drawing = file.readAll();
    drawing.replace("\"#000\"", '"' + color.name(QColor::HexRgb).toLatin1() + '"');
    QSvgRenderer renderer(drawing);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter);
    return image;
}

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const auto mark = id.indexOf(u'?');
    const auto name = mark < 0 ? id : id.left(mark);
    const auto color = mark < 0 ? QColor(Qt::black) : colorOf(QStringView(id).mid(mark + 1));
    const QSize wanted(requestedSize.width() > 0 ? requestedSize.width() : plainIconSize,
                       requestedSize.height() > 0 ? requestedSize.height() : plainIconSize);
    auto image = renderIcon(name, color, wanted);
    if (image.isNull())
        qCWarning(iconLog) << "no icon named" << name;
    if (size)
        *size = image.size();
    return image;
}

QImage renderShadow(const QColor &color)
{
    // A blurred rectangle is the product of two blurred edges, so that one row of shares is enough.
    constexpr int side = 84;
    constexpr qreal reach = 20;
    constexpr qreal spread = reach / 2.6;
    std::array<qreal, side> share {};
    for (int i = 0; i < side; ++i) {
        const auto edge = [&](qreal at) {
            return 0.5 * (1 + std::erf((i + 0.5 - at) / (spread * std::numbers::sqrt2)));
        };
        share.at(i) = edge(reach) - edge(side - reach);
    }
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const auto alpha = int(std::lround(color.alpha() * share.at(x) * share.at(y)));
            image.setPixel(x, y, qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha)));
        }
    }
    return image;
}

ShadowProvider::ShadowProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage ShadowProvider::requestImage(const QString &id, QSize *size, const QSize & /*requestedSize*/)
{
    auto image = renderShadow(colorOf(id));
    if (size)
        *size = image.size();
    return image;
}

} // namespace Vesk
