#include "ui/issues/CardSketchNodes.h"

#include <QPainter>
#include <QQuickWindow>

#include <cmath>

namespace Vesk
{
namespace
{

constexpr int statusCount = 8;
constexpr int verticesOfRect = 4;
constexpr int indicesOfRect = 6;

void allocateRects(QSGGeometry &geometry, qsizetype rects)
{
    geometry.allocate(static_cast<int>(rects) * verticesOfRect, static_cast<int>(rects) * indicesOfRect);
    auto *index = geometry.indexDataAsUInt();
    for (qsizetype rect = 0; rect < rects; ++rect) {
        const auto first = static_cast<quint32>(rect) * verticesOfRect;
        for (const quint32 corner : {0U, 1U, 2U, 2U, 1U, 3U}) {
            *index++ = first + corner;
        }
    }
}

/** Calls `set(x, y, right, low)` for the corners, in the order that allocateRects() expects. */
template <typename Set>
void forCorners(const QRectF &rect, Set set)
{
    for (const int low : {0, 1}) {
        for (const int right : {0, 1}) {
            set(static_cast<float>(right == 1 ? rect.right() : rect.left()),
                static_cast<float>(low == 1 ? rect.bottom() : rect.top()), right, low);
        }
    }
}

} // namespace

CardSketchMeshNode::CardSketchMeshNode()
    : m_partGeometry(QSGGeometry::defaultAttributes_ColoredPoint2D(), 0, 0, QSGGeometry::UnsignedIntType)
    , m_markGeometry(QSGGeometry::defaultAttributes_TexturedPoint2D(), 0, 0, QSGGeometry::UnsignedIntType)
{
    m_partGeometry.setDrawingMode(QSGGeometry::DrawTriangles);
    m_parts.setGeometry(&m_partGeometry);
    m_parts.setMaterial(&m_partMaterial);
    m_markGeometry.setDrawingMode(QSGGeometry::DrawTriangles);
    m_markMaterial.setFiltering(QSGTexture::Linear);
    m_marks.setGeometry(&m_markGeometry);
    m_marks.setMaterial(&m_markMaterial);
    m_parts.setFlag(OwnedByParent, false);
    m_marks.setFlag(OwnedByParent, false);
    appendChildNode(&m_parts);
    appendChildNode(&m_marks);
}

void CardSketchMeshNode::setCards(const std::vector<CardSketch> &cards, const SketchColors &colors,
                                  double pixel, QQuickWindow &window)
{
    renewMarks(colors, pixel, window);
    fillParts(cards, colors, pixel);
    fillMarks(cards, pixel);
}

void CardSketchMeshNode::renewMarks(const SketchColors &colors, double pixel, QQuickWindow &window)
{
    const int pixels = sketchMarkPixels(pixel);
    if (m_markPixels == pixels && m_colors == colors) {
        return;
    }
    m_markPixels = pixels;
    m_colors = colors;
    const int pitch = pixels + 2; // nothing around each, so that neighbours do not shine through
    QImage sheet(pitch * statusCount, pitch * 2, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::transparent);
    QPainter painter(&sheet);
    for (int status = 0; status < statusCount; ++status) {
        for (const bool faded : {false, true}) {
            painter.drawImage(status * pitch + 1, (faded ? pitch : 0) + 1,
                              sketchMarkImage(status, faded, colors, pixels));
        }
    }
    painter.end();
    m_texture.reset(window.createTextureFromImage(sheet, QQuickWindow::TextureHasAlphaChannel));
    m_markMaterial.setTexture(m_texture.get());
    m_marks.markDirty(DirtyMaterial);
}

void CardSketchMeshNode::fillParts(const std::vector<CardSketch> &cards, const SketchColors &colors,
                                   double pixel)
{
    const auto partsOfCard = static_cast<qsizetype>(sketchParts({}, colors, pixel).size());
    allocateRects(m_partGeometry, static_cast<qsizetype>(cards.size()) * partsOfCard);
    auto *vertex = m_partGeometry.vertexDataAsColoredPoint2D();
    for (const CardSketch &card : cards) {
        for (const SketchPart &part : sketchParts(card, colors, pixel)) {
            forCorners(part.rect, [&](float x, float y, int, int) {
                (vertex++)->set(x, y, static_cast<uchar>(qRed(part.color)),
                                static_cast<uchar>(qGreen(part.color)), static_cast<uchar>(qBlue(part.color)),
                                255);
            });
        }
    }
    m_parts.markDirty(DirtyGeometry);
}

void CardSketchMeshNode::fillMarks(const std::vector<CardSketch> &cards, double pixel)
{
    allocateRects(m_markGeometry, static_cast<qsizetype>(cards.size()));
    auto *vertex = m_markGeometry.vertexDataAsTexturedPoint2D();
    const auto pitch = static_cast<float>(m_markPixels + 2);
    const auto side = static_cast<float>(m_markPixels);
    for (const CardSketch &card : cards) {
        const float left = static_cast<float>(card.status) * pitch + 1;
        const float top = (card.faded ? pitch : 0) + 1;
        forCorners(sketchMark(card, pixel), [&](float x, float y, int right, int low) {
            (vertex++)->set(x, y, (left + static_cast<float>(right) * side) / (pitch * statusCount),
                            (top + static_cast<float>(low) * side) / (pitch * 2));
        });
    }
    m_marks.markDirty(DirtyGeometry);
}

void CardMarkImages::setLook(const SketchColors &colors, int pixels)
{
    if (m_pixels != pixels || m_colors != colors) {
        m_images.clear();
        m_colors = colors;
        m_pixels = pixels;
    }
}

const QImage &CardMarkImages::image(int status, bool faded)
{
    QImage &image = m_images[{status, faded}];
    if (image.isNull()) {
        image = sketchMarkImage(status, faded, m_colors, m_pixels);
    }
    return image;
}

void CardSketchPainterNode::setCards(CardSketches cards, const SketchColors &colors, const QRectF &bounds)
{
    m_cards = std::move(cards);
    m_colors = colors;
    noteChanged(bounds);
}

void CardSketchPainterNode::paint(QPainter &painter, const QRectF &area)
{
    paintSketches(painter, *m_cards, m_colors, m_markImages, area);
}

int paintSketches(QPainter &painter, const std::vector<CardSketch> &cards, const SketchColors &colors,
                  CardMarkImages &marks, const QRectF &area)
{
    const QTransform place = painter.deviceTransform();
    const double pixel = 1 / place.m11();
    marks.setLook(colors, sketchMarkPixels(pixel));
    const auto inPixels = [&place](const QRectF &rect) {
        const QRectF there = place.mapRect(rect);
        const QPoint corner = QPointF(std::round(there.left()), std::round(there.top())).toPoint();
        return QRect(corner,
                     QPointF(std::round(there.right()), std::round(there.bottom())).toPoint() - QPoint(1, 1));
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setTransform(place.inverted() * painter.transform()); // to whole pixels of the screen
    int drawn = 0;
    for (const CardSketch &card : cards) {
        if (!card.frame.intersects(area)) {
            continue;
        }
        ++drawn;
        for (const SketchPart &part : sketchParts(card, colors, pixel)) {
            painter.fillRect(inPixels(part.rect), QColor(part.color));
        }
        painter.drawImage(inPixels(sketchMark(card, pixel)).topLeft(), marks.image(card.status, card.faded));
    }
    painter.restore();
    return drawn;
}

} // namespace Vesk
