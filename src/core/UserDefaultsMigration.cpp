#include "core/UserDefaultsMigration.h"

#include "base/Files.h"
#include "core/Preferences.h"

#include <QXmlStreamReader>

namespace Vesk::UserDefaultsMigration
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype maxFileBytes = qsizetype {16} * 1024 * 1024;

/** The value of the element that the reader stands on, which is left behind it; invalid for what is skipped.
 */
QVariant readValue(QXmlStreamReader &xml)
{
    const QString type = xml.name().toString();
    if (type == "true"_L1 || type == "false"_L1) {
        xml.skipCurrentElement();
        return type == "true"_L1;
    }
    bool isNumber = false;
    if (type == "string"_L1)
        return xml.readElementText();
    if (type == "integer"_L1) {
        const qlonglong number = xml.readElementText().trimmed().toLongLong(&isNumber);
        return isNumber ? QVariant(number) : QVariant();
    }
    if (type == "real"_L1) {
        const double number = xml.readElementText().trimmed().toDouble(&isNumber);
        return isNumber ? QVariant(number) : QVariant();
    }
    xml.skipCurrentElement();
    return {};
}

} // namespace

Result<QVariantMap> parsePropertyList(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    if (!xml.readNextStartElement() || xml.name() != "plist"_L1 || !xml.readNextStartElement()
        || xml.name() != "dict"_L1)
        return failure(ErrorKind::Malformed, u"no property list with a dictionary"_s);
    QVariantMap values;
    while (xml.readNextStartElement()) {
        if (xml.name() != "key"_L1)
            return failure(ErrorKind::Malformed, u"a value without a key"_s);
        const QString key = xml.readElementText();
        if (!xml.readNextStartElement())
            break;
        const QVariant value = readValue(xml);
        if (value.isValid())
            values.insert(key, value);
    }
    if (xml.hasError())
        return failure(ErrorKind::Malformed, xml.errorString());
    return values;
}

void runOnce(Preferences &into, const QString &olderPreferencesFile)
{
    if (into.boolValue(PreferenceKey::migratedUserDefaults))
        return;
    into.setValue(PreferenceKey::migratedUserDefaults, true);
    into.sync();
    const auto bytes = readFile(olderPreferencesFile, maxFileBytes);
    if (!bytes)
        return;
    const auto older = parsePropertyList(*bytes);
    if (!older)
        return;
    for (auto pair = older->begin(); pair != older->end(); ++pair) {
        if (!pair.key().isEmpty() && !into.contains(pair.key()))
            into.setValue(pair.key(), pair.value());
    }
}

} // namespace Vesk::UserDefaultsMigration
