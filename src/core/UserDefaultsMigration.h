// Takes the preferences of the older domain over, once.
#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

namespace Vesk
{

class Preferences;

namespace UserDefaultsMigration
{

/**
 * Copies every value of the older property list for which there is none yet. Marked as done before the file
 * is read: a missing or unreadable file ends it silently, and it is not tried again.
 */
void runOnce(Preferences &into, const QString &olderPreferencesFile);

/** The strings, numbers and booleans of an XML property list's flat dictionary; other values are skipped. */
[[nodiscard]] Result<QVariantMap> parsePropertyList(const QByteArray &xml);

} // namespace UserDefaultsMigration
} // namespace Vesk
