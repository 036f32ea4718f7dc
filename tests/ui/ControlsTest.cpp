#include "support/TestRegistry.h"
#include "ui/controls/Composition.h"
#include "ui/controls/IconProvider.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"
#include "ui/controls/WindowClock.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace Vesk
{

namespace
{

/** A window with one piece of QML in it. */
struct Stage {
    explicit Stage(const QString &body)
    {
        installUi(engine);
        QQmlComponent component(&engine);
        component.setData(
            u"import QtQuick\nimport Vesk.Controls\nItem {\n"_s.toUtf8() + body.toUtf8() + "\n}", {});
        item.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!item) {
            qWarning() << component.errors();
            return;
        }
        window.resize(400, 300);
        item->setParentItem(window.contentItem());
        window.show();
    }
    [[nodiscard]] QQuickItem *part(const char *name) const
    {
        return item->findChild<QQuickItem *>(QString::fromLatin1(name));
    }

    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> item;
};

double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

} // namespace

class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        Theme::shared().setMode(u"light"_s);
        Theme::shared().setScale(1);
        RunningClock::shared().setReduceMotion(false);
    }

    void textCanBeReadOnItsGround_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("dark") << true;
        QTest::newRow("light") << false;
    }
    void textCanBeReadOnItsGround()
    {
        QFETCH(const bool, dark);
        const auto &c = themeColors(dark);
        for (const auto &ground : {c.canvas, c.panel, c.raised, c.mine, c.hover, c.well}) {
            for (const auto &ink :
                 {c.text, c.text2, c.text3, c.accent, c.success, c.warning, c.danger, c.info, c.wait})
                QVERIFY2(contrast(ink, ground) >= 4.5, qPrintable(ink.name() + u" on "_s + ground.name()));
            for (const auto &ink : c.modes)
                QVERIFY2(contrast(ink, ground) >= 4.5, qPrintable(ink.name() + u" on "_s + ground.name()));
        }
        const std::pair<QColor, QColor> pairs[] = {
            {c.onAccent, c.accentFill}, {c.onAccent, c.accentHover}, {c.onAccent, c.dangerFill},
            {c.onWait, c.waitFill},     {c.success, c.successSoft},  {c.warning, c.warningSoft},
            {c.danger, c.dangerSoft},   {c.info, c.infoSoft},        {c.wait, c.waitSoft},
            {c.text2, c.accentSoft},    {c.text, c.selected}};
        for (const auto &[ink, ground] : pairs)
            QVERIFY2(contrast(ink, ground) >= 4.5, qPrintable(ink.name() + u" on "_s + ground.name()));
    }

    void bindingsFollowTheme()
    {
        Theme::shared().setMode(u"light"_s);
        const Stage stage(uR"(property color plain: Theme.text; property color mode: Theme.modeColor(5)
            property color lane: Theme.lane(9); property color gauge: Theme.gaugeColor(90); property int px: Theme.px(28))"_s);
        QVERIFY(stage.item);
        const auto is = [&](const char *name, const QColor &color) {
            return stage.item->property(name).value<QColor>() == color;
        };
        for (const auto &mode : {u"dark"_s, u"light"_s}) {
            Theme::shared().setMode(mode);
            const auto &colors = themeColors(mode == u"dark"_s);
            QVERIFY(is("plain", colors.text));
            QVERIFY(is("mode", colors.modes.at(5)));
            QVERIFY(is("lane", colors.lanes.at(1)));
            QVERIFY(is("gauge", colors.gaugeFull));
        }
        Theme::shared().setScale(1.6);
        QCOMPARE(stage.item->property("px").toInt(), 45);
    }

    void textSizeKeepsItsLimits()
    {
        auto &theme = Theme::shared();
        for (int i = 0; i < 20; ++i)
            theme.zoomIn();
        QCOMPARE(theme.scale(), 1.6);
        QCOMPARE(theme.ui().pixelSize(), 21);
        for (int i = 0; i < 20; ++i)
            theme.zoomOut();
        QCOMPARE(theme.scale(), 0.8);
        theme.setScale(std::nan(""));
        QCOMPARE(theme.scale(), 0.8);
        theme.zoomReset();
        QCOMPARE(theme.scale(), 1.0);
    }

    void everyIconTakesAColour()
    {
        const auto names = QDir(u":/qt/qml/Vesk/Controls/icons"_s).entryList({u"*.svg"_s});
        QVERIFY(names.size() >= 70);
        for (const auto &name : names) {
            const auto image = renderIcon(name.chopped(4), QColor(255, 0, 0), {32, 32});
            int painted = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const auto pixel = image.pixel(x, y);
                    QVERIFY2(qAlpha(pixel) == 0 || (qGreen(pixel) == 0 && qBlue(pixel) == 0),
                             qPrintable(name));
                    painted += qAlpha(pixel) > 0 ? 1 : 0;
                }
            }
            QVERIFY2(painted > 10, qPrintable(name));
        }
        QVERIFY(renderIcon(u"no-such-icon"_s, Qt::black, {16, 16}).isNull());
    }

    void clockRunsOnlyForWhatIsSeen()
    {
        auto &clock = RunningClock::shared();
        {
            Stage stage(uR"(SessionMark { objectName: "mark"; kind: SessionMarks.Running })"_s);
            QVERIFY(stage.item);
            auto *mark = stage.part("mark");
            QTRY_VERIFY(clock.ticking());
            const int position = clock.position();
            QTRY_VERIFY(clock.position() != position);

            mark->setVisible(false);
            QTRY_VERIFY(!clock.ticking());
            mark->setVisible(true);
            QTRY_VERIFY(clock.ticking());
            clock.setReduceMotion(true);
            QVERIFY(!clock.ticking());
            clock.setReduceMotion(false);
            QVERIFY(clock.ticking());
            stage.window.hide();
            QTRY_VERIFY(!clock.ticking());
            stage.window.show();
            QTRY_VERIFY(clock.ticking());
            mark->setProperty("kind", 0);
            QTRY_VERIFY(!clock.ticking());
            mark->setProperty("kind", 3);
            QTRY_VERIFY(clock.ticking());
        }
        QVERIFY(!clock.ticking());
    }

    void keyboardWorksButtonsAndSegments()
    {
        Stage stage(uR"(property int clicks: 0; property int chosen: -1
            VButton { objectName: "button"; text: "a"; onClicked: ++parent.clicks }
            VButton { objectName: "card"; enterClicks: false; text: "b"; onClicked: ++parent.clicks }
            SegmentedControl { objectName: "segments"; labels: ["a", "b"]; onActivated: index => parent.chosen = index })"_s);
        QVERIFY(stage.item);
        stage.window.requestActivate();
        QTRY_VERIFY(stage.window.isActive());
        stage.part("button")->forceActiveFocus();
        QTest::keyClick(&stage.window, Qt::Key_Return);
        QTest::keyClick(&stage.window, Qt::Key_Space);
        QTest::keyClick(&stage.window, Qt::Key_Return, Qt::ControlModifier); // a form's own
        QCOMPARE(stage.item->property("clicks").toInt(), 2);
        stage.part("card")->forceActiveFocus();
        QTest::keyClick(&stage.window, Qt::Key_Return);
        QCOMPARE(stage.item->property("clicks").toInt(), 2);
        stage.part("segments")->forceActiveFocus();
        QTest::keyClick(&stage.window, Qt::Key_Left);
        QCOMPARE(stage.item->property("chosen").toInt(), -1);
        QTest::keyClick(&stage.window, Qt::Key_Right);
        QCOMPARE(stage.item->property("chosen").toInt(), 1);
    }

    void aPopupGivesTheKeysBack()
    {
        Stage stage(uR"(FocusScope {
                focus: true
                TextField { objectName: "field" }
                VButton { objectName: "button"; y: 60; text: "b"; onClicked: menu.open()
                    Menu { id: menu; objectName: "menu"; MenuRow { text: "row" } } }
            }
            Popup { id: first; objectName: "first"; focus: true
                contentItem: VButton { text: "inner"; focus: true; onClicked: second.open() } }
            Popup { id: second; objectName: "second"; focus: true; contentItem: TextField { focus: true } })"_s);
        QVERIFY(stage.item);
        stage.window.requestActivate();
        QTRY_VERIFY(stage.window.isActive());
        const auto opens = [&](const char *popup) {
            auto *object = stage.item->findChild<QObject *>(QString::fromLatin1(popup));
            QMetaObject::invokeMethod(object, "open");
            return QTest::qWaitFor([&] { return object->property("opened").toBool(); });
        };
        auto *field = stage.part("field");
        field->forceActiveFocus();
        for (const char *popup : {"menu", "first"}) {
            QVERIFY(opens(popup));
            QTRY_VERIFY(!field->hasActiveFocus());
            QTest::keyClick(&stage.window, Qt::Key_Escape);
            QVERIFY(field->hasActiveFocus()); // at once, not after the popup has faded
        }

        // From one popup to the next and back, the ring of the keyboard too.
        stage.part("button")->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(opens("first"));
        QVERIFY(opens("second"));
        QTest::keyClick(&stage.window, Qt::Key_Escape);
        QTRY_VERIFY(!stage.item->findChild<QObject *>(u"second"_s)->property("visible").toBool());
        QCOMPARE(stage.window.activeFocusItem()->property("text").toString(), u"inner"_s);
        QTest::keyClick(&stage.window, Qt::Key_Escape);
        QVERIFY(stage.part("button")->hasActiveFocus());
        QVERIFY(stage.part("button")->property("visualFocus").toBool());

        // Who took the keys meanwhile keeps them.
        QVERIFY(opens("menu"));
        field->forceActiveFocus();
        QMetaObject::invokeMethod(stage.item->findChild<QObject *>(u"menu"_s), "close");
        QVERIFY(field->hasActiveFocus());
    }

    void enterBelongsToASyllable()
    {
        Stage stage(uR"(property int submits: 0
            TextField { objectName: "field"; onSubmitted: ++parent.submits })"_s);
        QVERIFY(stage.item);
        stage.window.requestActivate();
        QTRY_VERIFY(stage.window.isActive());
        auto *field = stage.part("field");
        field->forceActiveFocus();
        QInputMethodEvent composing(u"하"_s, {});
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(field->property("composing").toBool());
        QTest::keyClick(&stage.window, Qt::Key_Return);
        QCOMPARE(stage.item->property("submits").toInt(), 0);
        QInputMethodEvent done;
        done.setCommitString(u"하"_s);
        QCoreApplication::sendEvent(field, &done);
        QVERIFY(!field->property("composing").toBool());
        QTest::keyClick(&stage.window, Qt::Key_Return); // handed on by the input method
        QCOMPARE(stage.item->property("submits").toInt(), 0);
        QTest::qWait(compositionEndMs + 10);
        QTest::keyClick(&stage.window, Qt::Key_Return);
        QCOMPARE(stage.item->property("submits").toInt(), 1);
        QCOMPARE(field->property("text").toString(), u"하"_s);
    }
};

VESK_TEST(ControlsTest)

} // namespace Vesk

#include "ControlsTest.moc"
