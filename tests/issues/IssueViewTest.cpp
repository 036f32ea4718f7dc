// The kanban's columns, and where pictures stand in their view.
#include "issues/GraphSketch.h"
#include "issues/IssueGraphViewport.h"
#include "issues/IssueKanban.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;

namespace
{

QString listed(const IssueKanban::Board &board)
{
    QStringList columns;
    for (const IssueKanban::Column &column : board.columns) {
        QStringList ids;
        for (const IssueGraph::Node &card : column.cards) {
            ids.append(card.id);
        }
        columns.append(column.status.written() + u':' + ids.join(u','));
    }
    for (const IssueStatus &status : board.emptyKnownStatuses) {
        columns.append(u'-' + status.written());
    }
    return columns.join(u' ');
}

IssueKanban::Board sketchedBoard(const QString &text)
{
    return IssueKanban::board(sketchedGraph(text).isolatedNodes);
}

QSizeF anySize(int least)
{
    return {static_cast<double>(*rc::gen::inRange(least, 5000)),
            static_cast<double>(*rc::gen::inRange(least, 5000))};
}

} // namespace

class IssueViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sortsTheBoard_data()
    {
        QTest::addColumn<QString>("sketch");
        QTest::addColumn<QString>("board");
        QTest::newRow("empty") << QString() << u"-todo -doing -blocked -review -done -cancelled"_s;
        QTest::newRow("numbers by value, none last")
            << u"A-10=done A-9=완료 B A-2=doing"_s
            << u"doing:A-2 done:A-9,A-10 :B -todo -blocked -review -cancelled"_s;
        QTest::newRow("other words by name")
            << u"A=보류10 B=보류9 C D=cancelled E=보류10"_s
            << u"cancelled:D 보류9:B 보류10:A,E :C -todo -doing -blocked -review -done"_s;
    }
    void sortsTheBoard()
    {
        QFETCH(QString, sketch);
        QTEST(listed(sketchedBoard(sketch)), "board");
    }

    void filtersTheBoard()
    {
        const auto board = sketchedBoard(u"A=done B C=보류"_s);
        QCOMPARE(board.filtered(std::nullopt), board);
        QCOMPARE(listed(board.filtered(IssueStatus {})), u":B"_s);
        QCOMPARE(listed(board.filtered(IssueStatus::parse(u"보류"_s))), u"보류:C"_s);
        QCOMPARE(board.filtered(IssueStatus::parse(u"todo"_s)), IssueKanban::Board {});
        QCOMPARE(board.cards(IssueStatus::parse(u"done"_s)).size(), 1);
        QVERIFY(board.cards(IssueStatus::parse(u"todo"_s)).isEmpty());
    }

    void fits_data()
    {
        QTest::addColumn<QSizeF>("content");
        QTest::addColumn<double>("floor");
        QTest::addColumn<double>("zoom");
        QTest::addColumn<QPointF>("pan");
        QTest::newRow("small") << QSizeF(200, 100) << 0.2 << 1.0 << QPointF(300, 250);
        QTest::newRow("wide") << QSizeF(1600, 100) << 0.2 << 0.5 << QPointF(0, 275);
        QTest::newRow("wide, not below the floor") << QSizeF(1600, 100) << 0.55 << 0.55 << QPointF(0, 272.5);
        QTest::newRow("huge") << QSizeF(80000, 60000) << 0.1 << 0.2 << QPointF(0, 0);
        QTest::newRow("a floor above 1") << QSizeF(1600, 100) << 3.0 << 1.0 << QPointF(0, 250);
        QTest::newRow("nothing") << QSizeF(1, 600) << 0.2 << 1.0 << QPointF(0, 0);
    }
    void fits()
    {
        QFETCH(QSizeF, content);
        QFETCH(double, floor);
        const auto fitted = IssueGraphViewport::fitted(content, {800, 600}, floor);
        QTEST(fitted.zoom, "zoom");
        QTEST(fitted.pan, "pan");
    }

    void keepsContentInSight()
    {
        QVERIFY(rc::check("whatever is done, some of the content is in view", [] {
            const QSizeF content = anySize(1);
            const QSizeF view = anySize(120);
            auto now = IssueGraphViewport::fitted(content, view);
            for (int step = *rc::gen::inRange(1, 8); step > 0; --step) {
                const QPointF point(*rc::gen::inRange(-9000, 9000), *rc::gen::inRange(-9000, 9000));
                switch (*rc::gen::inRange(0, 4)) {
                case 0:
                    now = now.zoomedIn(content, view);
                    break;
                case 1:
                    now = now.zoomedOut(content, view);
                    break;
                case 2:
                    now = now.zoomed(*rc::gen::inRange(0, 50) / 10.0, point, content, view);
                    break;
                default:
                    now = IssueGraphViewport {now.zoom, point}.clamped(content, view);
                }
                RC_ASSERT(now.zoom >= 0.2 && now.zoom <= 2);
                const QRectF seen = QRectF(now.pan, content * now.zoom).intersected({{0, 0}, view});
                const QSizeF scaled = content * now.zoom;
                const double kept = std::min({120.0, scaled.width(), scaled.height()});
                RC_ASSERT(seen.width() > kept - 0.001 && seen.height() > kept - 0.001);
                RC_ASSERT(now.clamped(content, view) == now);
            }
        }));
    }

    void zoomsAboutItsAnchor()
    {
        const QSizeF content(3000, 2000);
        const QSizeF view(800, 600);
        const IssueGraphViewport before {.zoom = 0.5, .pan = {-100, -50}};
        const auto after = before.zoomed(1, {300, 200}, content, view);
        QCOMPARE(after.pan, QPointF(-500, -300));
        QCOMPARE(before.zoomedIn(content, view).zoom, 0.6);
        QCOMPARE(before.zoomedIn(content, view).zoomedOut(content, view).percent(), 50);
        QCOMPARE((IssueGraphViewport {.zoom = 0, .pan = {7, 8}}.zoomed(1, {300, 200}, content, view).pan),
                 QPointF(7, 8));
        QVERIFY((!IssueGraphViewport {.zoom = 0.201}.canZoomOut()));
        QVERIFY((!IssueGraphViewport {.zoom = 1.999}.canZoomIn()));
        QVERIFY(before.canZoomIn() && before.canZoomOut());
    }

    void fitsAPictureOnce()
    {
        IssueGraphAutoFit fit;
        const QSizeF content(1600.7, 100.2);
        const QString graph = IssueGraphAutoFit::graphIdentity(QString(), content);
        QCOMPARE(graph, u"*:1600x100"_s);
        QCOMPARE(IssueGraphAutoFit::boardIdentity(std::nullopt, content), u"*isolated:*:1600x100"_s);
        QCOMPARE(IssueGraphAutoFit::boardIdentity(IssueStatus {}, content), u"*isolated::1600x100"_s);
        QVERIFY(!fit.fit(graph, content, {0, 600}));
        QCOMPARE(fit.fit(graph, content, {800, 600}).value().zoom, 0.55);
        QVERIFY(!fit.fit(graph, content, {400, 300}));
        QVERIFY(fit.fit(IssueGraphAutoFit::graphIdentity(u"M1"_s, content), content, {400, 300}));
    }

    void aDragIsNoClick()
    {
        const QSizeF size(1000, 1000);
        IssueGraphViewport now {.zoom = 1, .pan = {10, 10}};
        IssueGraphDrag drag;
        QVERIFY(!drag.move(now, {2, 3}, size, size));
        QVERIFY(drag.selects());
        now = drag.move(now, {30, 0}, size, size).value();
        QCOMPARE(now.pan, QPointF(40, 10));
        now = drag.move(now, {1, 0}, size, size).value(); // back again, from where it began
        QCOMPARE(now.pan, QPointF(11, 10));
        drag.end();
        QVERIFY(!drag.selects());
        drag.forget();
        QVERIFY(drag.selects());
    }
};

VESK_TEST(IssueViewTest)
#include "IssueViewTest.moc"
