// The two ways to draw the links of a graph, held against each other; the item in a window; and cards that
// are too small to be read.
#include "support/TestRegistry.h"
#include "ui/issues/CardSketchNodes.h"
#include "ui/issues/GraphLinksItem.h"
#include "ui/issues/LinkMesh.h"
#include "ui/issues/LinkRaster.h"
#include "ui/issues/LinkTiles.h"

#include <QDir>
#include <QPainter>
#include <QQuickWindow>
#include <QtTest>

#include <cmath>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

const LinkColors inks {QColor(0xBC, 0x2A, 0x35), QColor(0xAC, 0x4A, 0x0C), QColor(0x47, 0x50, 0x61)};

/** A, B and C behind each other, D beside B, with a long link, a resolved one and one that leads back. */
IssueGraph::Layout smallLayout()
{
    const auto issue = [](const QString &id, const QStringList &blockers, const QString &status = {}) {
        IssueGraph::Input input {.id = id, .title = id, .status = status};
        for (const QString &blocker : blockers) {
            input.blockedBy.append({.id = blocker});
        }
        return input;
    };
    return IssueGraph::layout(
        IssueGraph::build({issue(u"A"_s, {u"C"_s}), issue(u"B"_s, {u"A"_s, u"E"_s}),
                           issue(u"C"_s, {u"A"_s, u"B"_s, u"D"_s, u"E"_s}), issue(u"D"_s, {u"A"_s, u"E"_s}),
                           issue(u"E"_s, {}, u"done"_s)},
                          {}, {}));
}

LinkDrawing drawingOf(const IssueGraph::Layout &layout, const std::optional<QSet<QString>> &chain = {})
{
    LinkDrawing drawing;
    drawing.paths = std::make_shared<const std::vector<LinkPath>>(linkPaths(layout.links));
    for (const auto &turn : IssueLinkCurves::drawOrder(layout.links, chain, true)) {
        drawing.lines.push_back(
            {static_cast<size_t>(turn.link), IssueLinkCurves::stroke(layout.links[turn.link], turn.focused)});
    }
    return drawing;
}

QImage sheet(const QSizeF &size, double scale)
{
    QImage image((size * scale).toSize() + QSize(80, 0), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

QImage painted(const LinkDrawing &drawing, QImage image, double scale, QPoint origin = {})
{
    paintLinks(image, origin, scale, drawing, inks);
    return image;
}

/** The colour of a picture between its pixels, repeated to the right: four channels from 0 to 1. */
std::array<double, 4> sampled(const QImage &image, double u, double v)
{
    const double x = u * image.width() - 0.5;
    const double y = std::clamp(v * image.height() - 0.5, 0.0, image.height() - 1.0);
    std::array<double, 4> sum {};
    for (const int right : {0, 1}) {
        for (const int down : {0, 1}) {
            const int column = static_cast<int>(std::floor(x)) + right;
            const int row = std::min(static_cast<int>(std::floor(y)) + down, image.height() - 1);
            const QRgb pixel = reinterpret_cast<const QRgb *>(
                image.constScanLine(row))[((column % image.width()) + image.width()) % image.width()];
            const double weight = (right == 1 ? x - std::floor(x) : 1 - x + std::floor(x))
                * (down == 1 ? y - std::floor(y) : 1 - y + std::floor(y));
            const std::array channels {qRed(pixel), qGreen(pixel), qBlue(pixel), qAlpha(pixel)};
            for (size_t at = 0; at < 4; ++at) {
                sum.at(at) += weight * channels.at(at) / 255.0;
            }
        }
    }
    return sum;
}

/** What a graphics processor makes of triangles. */
QImage rastered(const LinkMesh &mesh, const LinkInk &ink, QImage image, double scale)
{
    constexpr double nudge = 1e-4; // no pixel's middle lies on an edge
    for (size_t at = 0; at < mesh.indices.size(); at += 3) {
        std::array<LinkVertex, 3> c {};
        QPolygonF outline;
        for (size_t corner = 0; corner < 3; ++corner) {
            c.at(corner) = mesh.vertices.at(mesh.indices.at(at + corner));
            outline.append(QPointF(c.at(corner).x, c.at(corner).y) * scale);
        }
        const auto cross = [](QPointF a, QPointF b, QPointF p) {
            return (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x());
        };
        const double area = cross(outline[0], outline[1], outline[2]);
        const QRect box = outline.boundingRect().toAlignedRect().intersected(image.rect());
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); area != 0 && x <= box.right(); ++x) {
                const QPointF p(x + 0.5 + nudge, y + 0.5 + nudge * 1.7);
                const double one = cross(outline[2], outline[0], p) / area;
                const double two = cross(outline[0], outline[1], p) / area;
                const double none = 1 - one - two;
                if (one < 0 || two < 0 || none < 0) {
                    continue;
                }
                const auto color = sampled(ink.image(), none * c[0].u + one * c[1].u + two * c[2].u,
                                           none * c[0].v + one * c[1].v + two * c[2].v);
                auto &pixel = reinterpret_cast<QRgb *>(image.scanLine(y))[x];
                const auto over = [&color](double source, int below) {
                    return static_cast<int>(std::lround(source * 255 + below * (1 - color[3])));
                };
                pixel = qRgb(over(color[0], qRed(pixel)), over(color[1], qGreen(pixel)),
                             over(color[2], qBlue(pixel)));
            }
        }
    }
    return image;
}

void keep(const QImage &image, const QString &name)
{
    if (const QString folder = qEnvironmentVariable("VESK_SHOTS"); !folder.isEmpty()) {
        QDir().mkpath(folder);
        image.save(folder + u'/' + name + u".png"_s);
    }
}

/** How much ink lies on white paper: 1 for a black pixel. */
double inkOn(const QImage &image, const QRect &part)
{
    double ink = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            ink += 1 - qGray(image.pixel(x, y)) / 255.0;
        }
    }
    return ink;
}

} // namespace

class GraphLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trianglesLookAsPainted_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("allowed"); ///< difference of the ink in a square of 16 pixels, of 256
        QTest::newRow("twice") << 2.0 << 4.0;
        QTest::newRow("as it is") << 1.0 << 4.0;
        QTest::newRow("half") << 0.5 << 4.0;
        QTest::newRow("a quarter: no dashes") << 0.25 << 4.0;
    }
    void trianglesLookAsPainted()
    {
        QFETCH(double, scale);
        QFETCH(double, allowed);
        const IssueGraph::Layout layout = smallLayout();
        const LinkDrawing drawing = drawingOf(layout, QSet<QString> {u"a"_s, u"b"_s, u"c"_s});
        const LinkInk ink(inks, 1 / scale);
        const QImage byPainter = painted(drawing, sheet(layout.size, scale), scale);
        const QImage byTriangles = rastered(linkMesh(drawing, ink, {{-100, -100}, layout.size * 2}), ink,
                                            sheet(layout.size, scale), scale);
        keep(byPainter, u"links-painted-%1"_s.arg(scale));
        keep(byTriangles, u"links-triangles-%1"_s.arg(scale));
        QVERIFY(inkOn(byPainter, byPainter.rect()) > 20);
        constexpr int square = 16;
        for (int y = 0; y + square <= byPainter.height(); y += square) {
            for (int x = 0; x + square <= byPainter.width(); x += square) {
                const QRect part(x, y, square, square);
                const double difference = std::abs(inkOn(byPainter, part) - inkOn(byTriangles, part));
                QVERIFY2(difference <= allowed, qPrintable(u"%1 at %2, %3"_s.arg(difference).arg(x).arg(y)));
            }
        }
    }

    void partsMakeUpTheWhole()
    {
        const IssueGraph::Layout layout = smallLayout();
        const LinkDrawing drawing = drawingOf(layout);
        const QImage whole = painted(drawing, sheet(layout.size, 1), 1);
        keep(whole, u"links-whole"_s);
        QImage parts = sheet(layout.size, 1);
        constexpr int side = 61;
        for (int y = 0; y < whole.height(); y += side) {
            for (int x = 0; x < whole.width(); x += side) {
                QPainter(&parts).drawImage(x, y, painted(drawing, parts.copy(x, y, side, side), 1, {x, y}));
            }
        }
        keep(parts, u"links-parts"_s);
        qsizetype different = 0;
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x) {
                different += std::abs(qGray(whole.pixel(x, y)) - qGray(parts.pixel(x, y))) > 12 ? 1 : 0;
            }
        }
        QVERIFY2(different < 20, qPrintable(QString::number(different)));
        QImage corner(4, 4, QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(paintLinks(corner, {}, 1, drawing, inks), 0);

        const LinkInk ink(inks, 1);
        QVERIFY(linkMesh(drawing, ink, {0, 0, 4, 4}).vertices.empty());
        const QRect part(200, 40, 150, 60);
        const QImage all =
            rastered(linkMesh(drawing, ink, sheet(layout.size, 1).rect()), ink, sheet(layout.size, 1), 1);
        const QImage some = rastered(linkMesh(drawing, ink, part), ink, sheet(layout.size, 1), 1);
        QCOMPARE(some.copy(part), all.copy(part));
        QVERIFY(inkOn(some, some.rect()) < inkOn(all, all.rect()) * 0.9);
    }

    void squaresAreDrawnOnce()
    {
        const IssueGraph::Layout layout = smallLayout();
        const auto drawing = std::make_shared<const LinkDrawing>(drawingOf(layout));
        LinkTiles tiles;
        tiles.setDrawing(drawing, inks);
        const auto paintAt = [&](QPoint pan, double scale, QImage &image) {
            image = QImage(500, 400, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.translate(pan);
            painter.scale(scale, scale);
            return tiles.paint(painter, image.rect());
        };
        QImage image;
        QImage direct(500, 400, QImage::Format_ARGB32_Premultiplied);
        direct.fill(Qt::white);
        paintLinks(direct, {120, -30}, 1, *drawing, inks);
        QVERIFY(paintAt({-120, 30}, 1, image) > 0);
        keep(image, u"links-squares"_s);
        QVERIFY(inkOn(direct, direct.rect()) > 20);
        QVERIFY(std::abs(inkOn(image, image.rect()) - inkOn(direct, direct.rect())) < 2);
        QCOMPARE(paintAt({-110, 24}, 1, image), 0);
        const auto known = tiles.count();
        const int more = paintAt({-110 - LinkTiles::side, 24}, 1, image);
        QVERIFY(more > 0 && more < known);
        (void)paintAt({-5000, 24}, 1, image);
        QVERIFY(tiles.count() <= known + more); // what is far away is given up
        QVERIFY(paintAt({-110, 24}, 0.5, image) > 0);
    }

    void sketchesStayInTheirFrames()
    {
        const auto isIn = [](const QRectF &outer, const QRectF &inner) {
            return inner.isEmpty() || outer.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(inner);
        };
        IssueGraph::Placement placement {
            .node = {.id = u"BILL-0123"_s, .key = {}, .title = {}, .milestone = {}},
            .frame = {100, 50, 210, 56}};
        for (const QString &title : {QString(), u"짧은 제목"_s, QString(300, u'가')}) {
            placement.node.title = title;
            placement.node.id = title.size() > 100 ? title : u"BILL-0123"_s;
            for (double scale = 0.16; scale < 2; scale *= 1.1) {
                const CardSketch card = CardSketch::of(placement);
                const QRectF mark = sketchMark(card, 1 / scale);
                QVERIFY(isIn(card.frame, mark));
                QVERIFY(sketchMarkPixels(1 / scale) >= 4);
                const auto parts = sketchParts(card, {}, 1 / scale);
                for (size_t at = 0; at < parts.size(); ++at) {
                    QVERIFY(isIn(card.frame, parts.at(at).rect));
                    QVERIFY2(at < 3 || !parts.at(at).rect.intersects(mark),
                             qPrintable(QString::number(scale)));
                }
            }
        }
    }

    void sketchesAreDrawnInWholePixels()
    {
        SketchColors colors {.paper = Qt::white,
                             .ground = Qt::yellow,
                             .settledGround = Qt::gray,
                             .hoveredGround = Qt::cyan,
                             .edge = Qt::blue,
                             .focusedEdge = Qt::red,
                             .text = Qt::black,
                             .settledText = Qt::black,
                             .tones = {},
                             .statuses = {}};
        colors.statuses.fill(Qt::darkGreen);
        std::vector<CardSketch> cards {{.frame = {100, 100, 210, 56}}, {.frame = {400, 100, 210, 56}}};
        cards[1].faded = true;
        QImage image(200, 80, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        CardMarkImages marks;
        QPainter painter(&image);
        painter.translate(0.4, 0.3);
        painter.scale(0.25, 0.25);
        QCOMPARE(paintSketches(painter, cards, colors, marks, {0, 0, 800, 320}), 2);
        QCOMPARE(paintSketches(painter, cards, colors, marks, {0, 0, 350, 320}), 1);
        painter.end();
        keep(image, u"sketches"_s);
        QCOMPARE(image.pixelColor(25, 30),
                 QColor(Qt::blue)); // the edge is one pixel, its corners are left out
        QCOMPARE(image.pixelColor(26, 30), QColor(Qt::yellow));
        QCOMPARE(image.pixelColor(25, 25), QColor(Qt::white));
        const QColor faded = image.pixelColor(101, 30);
        QVERIFY(faded != QColor(Qt::yellow) && faded != QColor(Qt::white));
        QVERIFY(inkOn(image, {27, 26, 8, 12}) > inkOn(image, {60, 26, 8, 12}) + 2); // the mark
    }

    void showsWhatItIsGiven()
    {
        const IssueGraph::Layout layout = smallLayout();
        QQuickWindow window;
        window.resize(layout.size.toSize() + QSize(80, 0));
        window.setColor(Qt::white);
        GraphLinksItem item;
        item.setParentItem(window.contentItem());
        item.setBackwardColor(inks[0]);
        item.setOpenColor(inks[1]);
        item.setResolvedColor(inks[2]);
        item.setLayout(layout);
        QCOMPARE(item.size(), layout.size);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QImage whole = window.grabWindow();
        keep(whole, u"links-window"_s);
        const QRect all = whole.rect();
        QVERIFY(std::abs(inkOn(whole, all) - inkOn(painted(drawingOf(layout), sheet(layout.size, 1), 1), all))
                < 30);

        item.setShowsResolved(false);
        const double open = inkOn(window.grabWindow(), all);
        QVERIFY(open < inkOn(whole, all) - 20);
        item.setChain({u"a"_s, u"d"_s});
        QVERIFY(inkOn(window.grabWindow(), all) < open / 2);
        item.setLayout({});
        QCOMPARE(inkOn(window.grabWindow(), all), 0);
    }
};

VESK_TEST(GraphLinksTest)
#include "GraphLinksTest.moc"
