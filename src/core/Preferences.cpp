#include "core/Preferences.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto lightTheme = "light"_L1;
constexpr auto darkTheme = "dark"_L1;
constexpr auto systemTheme = "system"_L1;

/** A key as QSettings takes it: its separators would split a project's name that holds one. */
QString fileKey(const QString &key)
{
    QString escaped = key;
    escaped.replace(u'%', "%25"_L1).replace(u'/', "%2F"_L1).replace(u'\\', "%5C"_L1);
    return escaped;
}

/** Values from the file are text, whatever they were when they were set. */
bool isSame(const QVariant &stored, const QVariant &value)
{
    if (stored.isValid() != value.isValid())
        return false;
    if (stored.canConvert<QString>() && value.canConvert<QString>())
        return stored.toString() == value.toString();
    return stored == value;
}

} // namespace

Preferences::Preferences(const QString &path, QObject *parent)
    : QObject(parent)
    , m_settings(path, QSettings::IniFormat)
{
    switch (m_settings.status()) {
    case QSettings::NoError:
        break;
    case QSettings::AccessError:
        m_fileProblem = path + u": cannot be opened; changes last for this run only"_s;
        break;
    case QSettings::FormatError: {
        const QString aside = path + u".broken"_s;
        QFile::remove(aside);
        m_fileProblem = QFile::copy(path, aside)
            ? path + u": not well-formed; a copy is at "_s + aside
            : path + u": not well-formed, and no copy could be put aside"_s;
        break;
    }
    }
}

bool Preferences::contains(const QString &key) const
{
    return m_settings.contains(fileKey(key));
}

QVariant Preferences::value(const QString &key) const
{
    return m_settings.value(fileKey(key));
}

bool Preferences::boolValue(const QString &key, bool fallback) const
{
    // From the file everything comes as text; "1" and "0" are what an imported number becomes.
    const QString text = value(key).toString();
    if (text == "true"_L1 || text == "1"_L1)
        return true;
    if (text == "false"_L1 || text == "0"_L1)
        return false;
    return fallback;
}

double Preferences::doubleValue(const QString &key, double fallback) const
{
    bool isNumber = false;
    const double number = value(key).toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? number : fallback;
}

QString Preferences::stringValue(const QString &key, const QString &fallback) const
{
    const QVariant stored = value(key);
    return stored.isValid() && stored.canConvert<QString>() ? stored.toString() : fallback;
}

void Preferences::setValue(const QString &key, const QVariant &newValue)
{
    if (isSame(value(key), newValue))
        return;
    if (newValue.isValid())
        m_settings.setValue(fileKey(key), newValue);
    else
        m_settings.remove(fileKey(key));
    Q_EMIT changed(key);
}

AnswerLanguage Preferences::answerLanguage() const
{
    return answerLanguageFromStored(stringValue(PreferenceKey::answerLanguage));
}

void Preferences::setAnswerLanguage(AnswerLanguage language)
{
    setValue(PreferenceKey::answerLanguage, storedValue(language));
}

bool Preferences::keepAwake() const
{
    return boolValue(PreferenceKey::keepAwake);
}

void Preferences::setKeepAwake(bool keepAwake)
{
    setValue(PreferenceKey::keepAwake, keepAwake);
}

bool Preferences::noticeMyTurn() const
{
    return boolValue(PreferenceKey::noticeMyTurn, true);
}

void Preferences::setNoticeMyTurn(bool told)
{
    setValue(PreferenceKey::noticeMyTurn, told);
}

bool Preferences::noticeFinished() const
{
    return boolValue(PreferenceKey::noticeFinished, true);
}

void Preferences::setNoticeFinished(bool told)
{
    setValue(PreferenceKey::noticeFinished, told);
}

int Preferences::textSize() const
{
    const double percent = doubleValue(PreferenceKey::windowTextSize, defaultTextSize);
    return static_cast<int>(std::lround(std::clamp<double>(percent, minimumTextSize, maximumTextSize)));
}

void Preferences::setTextSize(int percent)
{
    setValue(PreferenceKey::windowTextSize, std::clamp(percent, minimumTextSize, maximumTextSize));
}

ThemeChoice Preferences::theme() const
{
    const QString stored = stringValue(PreferenceKey::windowTheme);
    if (stored == lightTheme)
        return ThemeChoice::Light;
    if (stored == darkTheme)
        return ThemeChoice::Dark;
    return ThemeChoice::System;
}

void Preferences::setTheme(ThemeChoice theme)
{
    switch (theme) {
    case ThemeChoice::System:
        setValue(PreferenceKey::windowTheme, QString(systemTheme));
        break;
    case ThemeChoice::Light:
        setValue(PreferenceKey::windowTheme, QString(lightTheme));
        break;
    case ThemeChoice::Dark:
        setValue(PreferenceKey::windowTheme, QString(darkTheme));
        break;
    }
}

std::optional<QRect> Preferences::windowGeometry() const
{
    const QRect geometry = value(PreferenceKey::windowGeometry).toRect();
    return geometry.isEmpty() ? std::nullopt : std::optional(geometry);
}

void Preferences::setWindowGeometry(const QRect &geometry)
{
    setValue(PreferenceKey::windowGeometry, geometry);
}

double Preferences::sidebarWidth() const
{
    const double width = doubleValue(PreferenceKey::windowSidebarWidth, defaultSidebarWidth);
    return std::clamp(width, minimumSidebarWidth, maximumSidebarWidth);
}

void Preferences::setSidebarWidth(double width)
{
    setValue(PreferenceKey::windowSidebarWidth, std::clamp(width, minimumSidebarWidth, maximumSidebarWidth));
}

double Preferences::backgroundWidth() const
{
    const double width = doubleValue(PreferenceKey::windowBackgroundWidth, defaultBackgroundWidth);
    return std::clamp(width, minimumBackgroundWidth, maximumBackgroundWidth);
}

void Preferences::setBackgroundWidth(double width)
{
    setValue(PreferenceKey::windowBackgroundWidth,
             std::clamp(width, minimumBackgroundWidth, maximumBackgroundWidth));
}

QString Preferences::settingsPane() const
{
    return stringValue(PreferenceKey::settingsPane, u"general"_s);
}

void Preferences::setSettingsPane(const QString &id)
{
    setValue(PreferenceKey::settingsPane, id);
}

void Preferences::sync()
{
    m_settings.sync();
}

} // namespace Vesk
