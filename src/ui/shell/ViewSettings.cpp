#include "ui/shell/ViewSettings.h"

#include "core/KeepAwakeController.h"
#include "core/Preferences.h"
#include "ui/controls/Theme.h"

#include <QGuiApplication>
#include <QScreen>

namespace Vesk
{

namespace
{

constexpr int textStep = 10;
constexpr QSize leastSize(900, 600);
constexpr QSize defaultSize(1440, 900);
// So much of the title bar's width must be on a screen that the window can be grabbed.
constexpr int grabbable = 120;

} // namespace

ViewSettings::ViewSettings(Preferences &preferences, KeepAwakeController &keepAwake, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
    , m_keepAwake(keepAwake)
{
    connect(&preferences, &Preferences::changed, this, [this] {
        applyToTheme();
        Q_EMIT changed();
    });
    applyToTheme();
}

QString ViewSettings::theme() const
{
    switch (m_preferences.theme()) {
    case ThemeChoice::Light:
        return QStringLiteral("light");
    case ThemeChoice::Dark:
        return QStringLiteral("dark");
    case ThemeChoice::System:
        break;
    }
    return QStringLiteral("system");
}

void ViewSettings::setTheme(const QString &theme)
{
    m_preferences.setTheme(theme == QLatin1StringView("light")      ? ThemeChoice::Light
                               : theme == QLatin1StringView("dark") ? ThemeChoice::Dark
                                                                    : ThemeChoice::System);
}

int ViewSettings::textSize() const
{
    return m_preferences.textSize();
}

void ViewSettings::setTextSize(int percent)
{
    m_preferences.setTextSize(
        std::clamp(percent, Preferences::minimumTextSize, Preferences::maximumTextSize));
}

void ViewSettings::enlargeText()
{
    setTextSize(textSize() + textStep);
}

void ViewSettings::shrinkText()
{
    setTextSize(textSize() - textStep);
}

void ViewSettings::resetText()
{
    setTextSize(Preferences::defaultTextSize);
}

bool ViewSettings::keepAwake() const
{
    return m_preferences.keepAwake();
}

void ViewSettings::setKeepAwake(bool keepAwake)
{
    m_preferences.setKeepAwake(keepAwake);
    m_keepAwake.reconcile();
}

QString ViewSettings::answerLanguage() const
{
    return storedValue(m_preferences.answerLanguage());
}

void ViewSettings::setAnswerLanguage(const QString &language)
{
    m_preferences.setAnswerLanguage(answerLanguageFromStored(language));
}

bool ViewSettings::noticeMyTurn() const
{
    return m_preferences.noticeMyTurn();
}

void ViewSettings::setNoticeMyTurn(bool told)
{
    m_preferences.setNoticeMyTurn(told);
}

bool ViewSettings::noticeFinished() const
{
    return m_preferences.noticeFinished();
}

void ViewSettings::setNoticeFinished(bool told)
{
    m_preferences.setNoticeFinished(told);
}

double ViewSettings::sidebarWidth() const
{
    return m_preferences.sidebarWidth();
}

void ViewSettings::setSidebarWidth(double width)
{
    m_preferences.setSidebarWidth(width);
}

double ViewSettings::backgroundWidth() const
{
    return m_preferences.backgroundWidth();
}

void ViewSettings::setBackgroundWidth(double width)
{
    m_preferences.setBackgroundWidth(width);
}

QRect ViewSettings::windowGeometry() const
{
    QList<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens()) {
        screens.append(screen->availableGeometry());
    }
    return fittingGeometry(m_preferences.windowGeometry(), screens);
}

void ViewSettings::keepWindowGeometry(int x, int y, int width, int height)
{
    m_preferences.setWindowGeometry(QRect(x, y, width, height));
}

void ViewSettings::applyToTheme()
{
    Theme::shared().setMode(theme());
    Theme::shared().setScale(textSize() / 100.0);
}

QRect fittingGeometry(const std::optional<QRect> &remembered, const QList<QRect> &screens)
{
    if (remembered) {
        const QRect wanted(remembered->topLeft(), remembered->size().expandedTo(leastSize));
        const bool reachable = std::ranges::any_of(screens, [&wanted](const QRect &screen) {
            const QRect seen = screen.intersected(wanted);
            return seen.width() >= grabbable && screen.contains(QPoint(seen.left(), wanted.top()));
        });
        if (reachable || screens.isEmpty()) {
            return wanted;
        }
    }
    if (screens.isEmpty()) {
        return {QPoint(), defaultSize};
    }
    const QRect &screen = screens.constFirst();
    QRect centred(QPoint(), defaultSize.boundedTo(screen.size()).expandedTo(leastSize));
    centred.moveCenter(screen.center());
    centred.moveTopLeft({std::max(centred.left(), screen.left()), std::max(centred.top(), screen.top())});
    return centred;
}

} // namespace Vesk
