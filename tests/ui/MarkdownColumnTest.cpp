// Texts of any size on the screen: as one item a block, in slices, with what is left out said.
#include "ui/chat/MarkdownColumn.h"

#include "support/TestRegistry.h"
#include "ui/chat/MarkdownCells.h"
#include "ui/controls/InstallUi.h"

#include <QAbstractItemModelTester>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class MarkdownColumnTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_engine = std::make_unique<QQmlEngine>();
        installUi(*m_engine);
        QQmlComponent component(m_engine.get());
        component.setData("import Vesk.Chat\nMarkdownBlocks { width: 600 }", {});
        m_item.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{u"blocks"_s, QVariant::fromValue(&m_blocks)}})));
        QVERIFY2(m_item, qPrintable(component.errorString()));
        m_column = m_item->findChild<MarkdownColumn *>();
        QVERIFY(m_column);
    }

    void cleanup()
    {
        m_item.reset();
        m_engine.reset();
    }

    void aGrowingTextKeepsItsBlocks()
    {
        m_blocks.setText(u"하나\n\n- 둘"_s, false);
        QCOMPARE(m_column->builtCount(), 2);
        const qreal height = m_column->height();
        auto *first = m_column->childItems().first();
        m_blocks.setText(u"하나\n\n- 둘\n- 셋\n\n> 넷\n\n```cpp\nint x;\n```\n\n|a|\n|-|\n|b|\n\n---"_s,
                         false);
        QCOMPARE(m_column->builtCount(), 7);
        QCOMPARE(m_column->childItems().first(), first);
        QVERIFY(m_column->height() > height);
        m_blocks.setText(u"# 다른 것"_s, false);
        QCOMPARE(m_column->builtCount(), 1);
    }

    void blocksBelowAnEditStay()
    {
        const QAbstractItemModelTester tester(&m_blocks,
                                              QAbstractItemModelTester::FailureReportingMode::QtTest);
        QString rest;
        for (int number = 0; number < 30; ++number) {
            rest += u"## %1\n\n- [ ] 할 일 %1\n\n> 인용 %1\n\n"_s.arg(number);
        }
        const auto written = [this] {
            QStringList texts;
            for (const auto *item : m_column->childItems()) {
                if (item->isVisible() && item->property("html").isValid()) {
                    texts.append(item->property("html").toString());
                }
            }
            return texts;
        };
        m_blocks.setText(rest, false);
        QTRY_COMPARE(m_column->builtCount(), m_blocks.rowCount());
        const QStringList before = written();
        auto *last = m_column->childItems().last();
        const qreal height = m_column->height();
        m_blocks.setText(u"하나\n\n"_s + rest, false);
        QCOMPARE(m_column->builtCount(), m_blocks.rowCount());
        QCOMPARE(written(), QStringList(u"하나"_s) + before);
        QVERIFY(m_column->height() > height);
        m_blocks.setText(u"# 하나\n\n"_s + rest, false); // a block of another kind
        QCOMPARE(written(), QStringList(u"하나"_s) + before);
        m_blocks.setText(rest, false);
        QCOMPARE(written(), before);
        QCOMPARE(m_column->childItems().last(), last);
        QCOMPARE(m_column->height(), height);
        QCOMPARE(m_blocks.taskAt(1), rest.indexOf(u"[ ]") + 1);
        m_blocks.setText(u"하나\n\n"_s + rest, false);
        QCOMPARE(m_blocks.taskAt(2), rest.indexOf(u"[ ]") + 5); // it stands elsewhere now
    }

    void manyBlocksComeInSlicesAndOnDemand()
    {
        m_blocks.setText(u"- 항목\n"_s.repeated(1000), false);
        QVERIFY2(m_column->builtCount() < 100, "the first frame must not wait for all of them");
        QTRY_COMPARE(m_column->builtCount(), MarkdownColumn::shownAtOnce);
        QCOMPARE(m_column->hiddenCount(), 600);
        m_column->showMore();
        QTRY_COMPARE(m_column->builtCount(), 2 * MarkdownColumn::shownAtOnce);
        QCOMPARE(m_column->hiddenCount(), 200);
    }

    void longCodeIsDrawnInPart()
    {
        m_blocks.setText(u"```cpp\n"_s + u"int x;\n"_s.repeated(1000) + u"```"_s, false);
        const auto code = m_blocks.index(0);
        QCOMPARE(code.data(MarkdownBlockModel::ShownCodeRole).toString().count(u'\n'),
                 MarkdownBlockModel::maxCodeLines - 1);
        QVERIFY(code.data(MarkdownBlockModel::CodeRestRole).toString().contains(u"700줄"_s));
        QCOMPARE(code.data(MarkdownBlockModel::TextRole).toString().count(u'\n'), 999);
    }

    void tellsWhereLinksStand()
    {
        m_blocks.setText(u"하나 "_s.repeated(8) + u"[둘](a.md)\n\n- 셋\n\n|넷|\n|-|\n|[다섯](b.md)|"_s,
                         false);
        QTRY_VERIFY(m_column->hasLinkIn({0, m_column->height() - 30, 100, 30}));
        QVERIFY(m_column->hasLinkIn({0, 0, 600, 20}));
        QVERIFY(!m_column->hasLinkIn({0, 0, 100, 20}));
        QVERIFY(!m_column->hasLinkIn({400, 0, 200, 20}));
        QVERIFY(!m_column->hasLinkIn({0, 30, 600, 15}));
    }

    void cellsTellTheirRoom()
    {
        MarkdownCells cells;
        const QAbstractItemModelTester tester(&cells, QAbstractItemModelTester::FailureReportingMode::QtTest);
        cells.setColumns(2);
        cells.setCells({u"a"_s, u"b"_s, u"<b>짧음</b>"_s, u"긴 글 "_s.repeated(200), u"x<br>y"_s, {}});
        QCOMPARE(cells.rowCount(), 3);
        QVERIFY(cells.columnWidth(0) < 100);
        QCOMPARE(cells.columnWidth(1), MarkdownCells::widestCell + 2 * MarkdownCells::sidePadding);
        QVERIFY(cells.rowHeight(1) > 3 * cells.rowHeight(2));
        QVERIFY(cells.rowHeight(2) > cells.rowHeight(0));
        QCOMPARE(cells.columnWidth(7), -1.0);
        cells.setCells({});
        QCOMPARE(cells.columnCount(), 0);
    }

private:
    MarkdownBlockModel m_blocks;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickItem> m_item;
    MarkdownColumn *m_column = nullptr;
};

VESK_TEST(MarkdownColumnTest)
#include "MarkdownColumnTest.moc"
