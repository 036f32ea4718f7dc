#include "ui/version/VersionMeasures.h"

#include "core/Preferences.h"

#include <algorithm>

namespace Vesk
{

namespace
{

constexpr qreal mostPixels = 4000; // whatever the file says

QString measureKey(const char *name)
{
    return QStringLiteral("vesk.window.version.") + QLatin1StringView(name);
}

} // namespace

VersionMeasures::VersionMeasures(Preferences &preferences, QObject *parent)
    : QObject(parent)
    , m_preferences(preferences)
{
    connect(&preferences, &Preferences::changed, this, [this](const QString &key) {
        if (key.startsWith(measureKey("")))
            Q_EMIT changed();
    });
}

qreal VersionMeasures::value(const char *name, qreal fallback) const
{
    return std::clamp(m_preferences.doubleValue(measureKey(name), fallback), 0.0, mostPixels);
}

void VersionMeasures::setValue(const char *name, qreal value)
{
    m_preferences.setValue(measureKey(name), value);
}

} // namespace Vesk
