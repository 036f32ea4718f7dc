// What is being read stays where it is, whatever happens above and below it.
#include "ui/chat/TimelineView.h"

#include "support/TestRegistry.h"
#include "ui/ChatStage.h"

#include <QQmlEngine>
#include <QQuickWindow>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

// A row is as high as its text says, in lines of twenty pixels; a tall one settles only after it was made, as
// rows made of positioners do.
constexpr auto delegate = R"(
    import QtQuick
    import Vesk.Chat
    Item {
        id: item
        required property TimelineRow row
        Column {
            onHeightChanged: item.implicitHeight = height
            Repeater {
                model: item.row.text.split("\n").length
                Item { width: 10; height: 20 }
            }
        }
    }
)";

QString lines(int count)
{
    return QString(count - 1, u'\n');
}

} // namespace

class TimelineViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(u"qrc:/qt/qml"_s);
        m_component = std::make_unique<QQmlComponent>(m_engine.get());
        m_component->setData(delegate, {});
        QVERIFY2(m_component->isReady(), qPrintable(m_component->errorString()));
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(400, 600);
        m_transcript = std::make_unique<Transcript>();
        m_model = std::make_unique<TimelineModel>();
        m_model->setTranscript(m_transcript.get());
        m_view = new TimelineView(m_window->contentItem());
        auto delegates = m_view->delegates();
        for (int kind = 0; kind < 4; ++kind) {
            delegates.append(&delegates, m_component.get());
        }
        m_view->setSize({400, 600});
        m_view->setModel(m_model.get());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_model.reset();
        m_transcript.reset();
        m_component.reset();
        m_engine.reset();
    }

    void thousandsOfRowsCostOnlyTheSeenOnes()
    {
        fill(5000);
        settle();
        QVERIFY2(m_view->liveCount() < 60, qPrintable(QString::number(m_view->liveCount())));
        QCOMPARE(bottomOf(4999), 600.0 - 16);
        m_view->scrollToFraction(0.5);
        settle();
        QVERIFY(m_view->liveCount() < 60);
        QVERIFY(!m_view->stickToBottom());
        QTest::keyClick(m_window.get(), Qt::Key_Home);
        m_view->scrollToStart();
        settle();
        QCOMPARE(m_view->itemAt(0)->y(), 16.0);
        m_view->scrollToEnd();
        settle();
        QCOMPARE(bottomOf(4999), 600.0 - 16);
    }

    void fewRowsStandAtTheTop()
    {
        fill(3);
        settle();
        QCOMPARE(m_view->itemAt(0)->y(), 16.0);
        m_view->scrollBy(-200);
        settle();
        QCOMPARE(m_view->itemAt(0)->y(), 16.0);
        QVERIFY(m_view->stickToBottom());
    }

    void growthAtTheEndPushesUp()
    {
        fill(50);
        settle();
        m_transcript->appendText(m_transcript->rows().last().id, lines(8));
        settle();
        QCOMPARE(bottomOf(49), 600.0 - 16);
        m_transcript->append(Test::row(ChatMessage::Role::User, lines(3)));
        settle();
        QCOMPARE(bottomOf(50), 600.0 - 16);
        QVERIFY(!m_view->hasNewBelow());
        m_view->setSize({400, 500}); // the composer grew
        settle();
        QCOMPARE(bottomOf(50), 500.0 - 16);
    }

    void theRowUnderTheEyeStays_data()
    {
        QTest::addColumn<int>("scroll");
        QTest::newRow("just above the end") << 60;
        QTest::newRow("where the end is still ready") << 500;
        QTest::newRow("far from it") << 2000;
    }

    void theRowUnderTheEyeStays()
    {
        QFETCH(const int, scroll);
        fill(200);
        settle();
        m_view->scrollBy(-scroll);
        settle();
        const auto eye = rowUnderTheEye();
        const auto y = eye.item->y();
        const auto stays = [&](const char *what) {
            settle();
            const auto *item = m_view->itemAt(static_cast<int>(m_transcript->index(eye.id)));
            if (!item || item->y() != y) {
                qWarning("moved by %s: %f to %f", what, y, item ? item->y() : -1);
                return false;
            }
            return true;
        };
        QVERIFY(!m_view->hasNewBelow());
        QCOMPARE(m_view->jumpText(), u"맨 아래로 스크롤"_s);
        for (int i = 0; i < 20; ++i) {
            m_transcript->appendText(m_transcript->rows().last().id, u"\nmore"_s);
            QVERIFY(stays("streaming text"));
        }
        QVERIFY(m_view->hasNewBelow());
        QCOMPARE(m_view->jumpText(), u"새 응답으로 스크롤"_s);
        m_transcript->append(Test::row(ChatMessage::Role::Assistant, lines(30)));
        QVERIFY(stays("a row at the end"));
        m_transcript->insert(0, Test::row(ChatMessage::Role::Activity, lines(9)));
        QVERIFY(stays("a row at the beginning"));
        const auto position = m_transcript->index(eye.id);
        m_transcript->insert(position, Test::row(ChatMessage::Role::Activity, lines(4)));
        QVERIFY(stays("a row right above"));
        m_transcript->setText(m_transcript->rows().at(position - 2).id, lines(40));
        QVERIFY(stays("a row above growing"));
        m_transcript->setText(m_transcript->rows().at(position + 2).id, lines(40));
        QVERIFY(stays("a row below growing"));
        m_transcript->remove(m_transcript->rows().at(position - 1).id);
        QVERIFY(stays("a row above leaving"));
        m_view->setSize({400, 450});
        QVERIFY(stays("the view getting lower"));
        QVERIFY(!m_view->stickToBottom());
        m_view->scrollToEnd();
        settle();
        QVERIFY(!m_view->hasNewBelow());
    }

    void rowsMeasuredOnTheWayUpDoNotJump()
    {
        // The heights of rows above are unknown until they come near: scrolling must move by what was asked,
        // always.
        fill(300);
        settle();
        m_view->scrollBy(-100);
        settle();
        for (int step = 0; step < 100; ++step) {
            const auto eye = rowUnderTheEye();
            const auto before = eye.item->y();
            m_view->scrollBy(-37);
            settle();
            QCOMPARE(m_view->itemAt(static_cast<int>(m_transcript->index(eye.id)))->y(), before + 37);
        }
    }

    void wheelAndKeysScroll()
    {
        fill(100);
        settle();
        m_view->forceActiveFocus();
        const auto wheel = [this](int notches) {
            QWheelEvent event({50, 50}, {50, 50}, {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(m_window.get(), &event);
            settle();
        };
        wheel(1);
        QVERIFY(!m_view->stickToBottom());
        wheel(-3);
        QVERIFY(m_view->stickToBottom());
        QTest::keyClick(m_window.get(), Qt::Key_PageUp);
        settle();
        QVERIFY(!m_view->stickToBottom());
        QVERIFY(m_view->visibleStart() < 1 - m_view->visibleSize());
        QTest::keyClick(m_window.get(), Qt::Key_Home);
        settle();
        QCOMPARE(m_view->itemAt(0)->y(), 16.0);
        QCOMPARE(m_view->visibleStart(), 0.0);
        QTest::keyClick(m_window.get(), Qt::Key_End);
        settle();
        QVERIFY(m_view->stickToBottom());
    }

    void whatIsOpenedAtTheEndOpensDownwards()
    {
        fill(50);
        settle();
        auto *item = m_view->itemAt(48);
        const auto y = item->y();
        m_view->holdInPlace(item);
        m_transcript->setText(m_transcript->rows().at(48).id, lines(20));
        settle();
        QCOMPARE(m_view->itemAt(48)->y(), y);
        m_transcript->reset({});
        settle();
        QCOMPARE(m_view->liveCount(), 0);
    }

private:
    struct Eye {
        QUuid id;
        QQuickItem *item = nullptr;
    };

    void fill(int count)
    {
        QList<ChatMessage> rows;
        for (int i = 0; i < count; ++i) {
            rows << Test::row(i % 3 == 0 ? ChatMessage::Role::User : ChatMessage::Role::Assistant,
                              lines(1 + i * 7 % 11));
        }
        m_transcript->reset(rows);
    }

    // One frame: polishing is part of it.
    void settle() { m_window->grabWindow(); }

    [[nodiscard]] qreal bottomOf(int position) const
    {
        const auto *item = m_view->itemAt(position);
        return item ? item->y() + item->height() : -1;
    }

    // The first row that begins within the view.
    [[nodiscard]] Eye rowUnderTheEye() const
    {
        for (int i = 0; i < m_model->rowCount(); ++i) {
            auto *item = m_view->itemAt(i);
            if (item && item->y() >= 0) {
                return {m_transcript->rows().at(i).id, item};
            }
        }
        return {};
    }

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQmlComponent> m_component;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<Transcript> m_transcript;
    std::unique_ptr<TimelineModel> m_model;
    TimelineView *m_view = nullptr;
};

VESK_TEST(TimelineViewTest)
#include "TimelineViewTest.moc"
