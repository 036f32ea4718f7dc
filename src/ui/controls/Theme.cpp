#include "ui/controls/Theme.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQmlEngine>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;

constexpr int smallestTenths = 8;
constexpr int plainTenths = 10;
constexpr int largestTenths = 16;

} // namespace

Theme &Theme::shared()
{
    // A child of the application, so that it goes before the platform does.
    static QPointer<Theme> theme;
    if (!theme)
        theme = new Theme(qGuiApp);
    return *theme;
}

Theme *Theme::create(QQmlEngine * /*engine*/, QJSEngine *scriptEngine)
{
    auto &theme = shared();
    QJSEngine::setObjectOwnership(&theme, QJSEngine::CppOwnership);
    theme.m_self = scriptEngine->newQObject(&theme);
    return &theme;
}

Theme::Theme(QObject *parent)
    : QObject(parent)
    , m_mode(u"system"_s)
    , m_fonts(themeFonts(1.0))
{
    m_dark = m_system.dark();
    connect(&m_system, &SystemColorScheme::changed, this, &Theme::updateDark);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, [this] {
        m_fonts = themeFonts(scale());
        Q_EMIT scaleChanged();
    });
}

Theme::~Theme() = default;

void Theme::setMode(const QString &mode)
{
    const auto known = mode == u"light"_s || mode == u"dark"_s ? mode : u"system"_s;
    if (known == m_mode)
        return;
    m_mode = known;
    Q_EMIT modeChanged();
    updateDark();
}

void Theme::updateDark()
{
    const bool dark = m_mode == u"system"_s ? m_system.dark() : m_mode == u"dark"_s;
    if (dark == m_dark)
        return;
    m_dark = dark;
    Q_EMIT colorsChanged();
}

void Theme::setScale(qreal scale)
{
    if (std::isfinite(scale))
        setTenths(int(std::lround(std::clamp(scale, 0.1, 10.0) * 10)));
}

void Theme::zoomIn()
{
    setTenths(m_tenths + 1);
}

void Theme::zoomOut()
{
    setTenths(m_tenths - 1);
}

void Theme::zoomReset()
{
    setTenths(plainTenths);
}

void Theme::setTenths(int tenths)
{
    const int bounded = std::clamp(tenths, smallestTenths, largestTenths);
    if (bounded == m_tenths)
        return;
    m_tenths = bounded;
    m_fonts = themeFonts(scale());
    Q_EMIT scaleChanged();
}

int Theme::px(qreal pixels) const
{
    follow(u"scale"_s);
    return qRound(pixels * scale());
}

QColor Theme::modeColor(int mode) const
{
    follow(u"dark"_s);
    return colors().modes.value(mode, colors().text2);
}

QColor Theme::statusColor(int kind) const
{
    follow(u"dark"_s);
    return colors().statuses.value(kind, colors().text3);
}

QColor Theme::lane(int n) const
{
    follow(u"dark"_s);
    const auto &lanes = colors().lanes;
    const auto count = int(lanes.size());
    return lanes.at(((n % count) + count) % count);
}

QColor Theme::gaugeColor(qreal percent, bool reset) const
{
    follow(u"dark"_s);
    if (reset)
        return colors().gaugeReset;
    if (percent >= 90)
        return colors().gaugeFull;
    return percent >= 75 ? colors().gaugeWarn : colors().gaugeLow;
}

void Theme::follow(const QString &property) const
{
    // A binding learns what it depends on from the properties that are read through its engine while it runs;
    // a call alone tells it nothing, and it would keep the old theme's colour.
    m_self.property(property);
}

} // namespace Vesk
