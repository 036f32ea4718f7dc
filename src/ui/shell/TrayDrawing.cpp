#include "ui/shell/TrayDrawing.h"

#include "ui/controls/IconProvider.h"
#include "ui/controls/Theme.h"
#include "ui/controls/ThemeTokens.h"
#include "ui/shell/AttentionPlan.h"

#include <QPainter>
#include <QtEndian>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array traySizes {16, 22, 24, 32, 48};
constexpr int greatestCount = 9;
// Shares of the icon's side.
constexpr qreal cornerShare = 0.22;
constexpr qreal glyphShare = 0.75;
constexpr qreal digitShare = 0.75;
constexpr qreal dotShare = 0.4;

TrayPicture pictureOf(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    TrayPicture picture {.width = pixels.width(), .height = pixels.height(), .argb = {}};
    picture.argb.resize(pixels.sizeInBytes());
    // Without padding: a line of four-byte pixels is a multiple of four.
    qToBigEndian<quint32>(pixels.constBits(), pixels.sizeInBytes() / 4, picture.argb.data());
    return picture;
}

} // namespace

QImage trayImage(const TrayCounts &counts, int size)
{
    const ThemeColors &colors = themeColors(true);
    const bool waits = counts.waiting > 0;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(waits ? colors.waitFill : colors.raised);
    painter.drawRoundedRect(image.rect(), size * cornerShare, size * cornerShare);
    if (waits) {
        QFont font = Theme::shared().uiBold();
        font.setPixelSize(qRound(size * digitShare));
        painter.setFont(font);
        painter.setPen(colors.onWait);
        const QString count = counts.waiting > greatestCount ? u"9+"_s : QString::number(counts.waiting);
        if (count.size() > 1) {
            font.setPixelSize(qRound(size * digitShare * 0.75));
            painter.setFont(font);
        }
        painter.drawText(image.rect(), Qt::AlignCenter, count);
        return image;
    }
    const int glyph = qRound(size * glyphShare);
    const int inset = (size - glyph) / 2;
    painter.drawImage(inset, inset, renderIcon(u"terminal"_s, colors.text, {glyph, glyph}));
    if (counts.unseen > 0) {
        const qreal dot = size * dotShare;
        const QRectF place(size - dot, size - dot, dot, dot);
        const qreal ring = std::max(1.0, size / 16.0);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.drawEllipse(place.adjusted(-ring, -ring, ring, ring));
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setBrush(colors.success);
        painter.drawEllipse(place);
    }
    return image;
}

TrayFace trayFace(const TrayCounts &counts)
{
    TrayFace face {.pictures = {}, .toolTip = trayToolTip(counts), .needsAttention = counts.waiting > 0};
    for (const int size : traySizes) {
        face.pictures.append(pictureOf(trayImage(counts, size)));
    }
    return face;
}

} // namespace Vesk
