// What a scenario does with JSON: names for values, patterns, paths.
#pragma once

#include <QHash>
#include <QJsonValue>
#include <QString>

namespace ScriptedAgent
{

using Names = QHash<QString, QJsonValue>;

/** The value with every `${name}` filled in: a text that is nothing else becomes the named value itself, of
   any type; inside a text it is put as text. Unknown names stay as they are. */
[[nodiscard]] QJsonValue filledIn(const QJsonValue &value, const Names &names);

/** True when every key of the pattern is in the value and matches there; arrays match item by item; "*"
   matches anything; a text "*word*" matches a text that holds the word. */
[[nodiscard]] bool matches(const QJsonValue &value, const QJsonValue &pattern);

/** The value at a dotted path, "response.items.0.name"; undefined when there is none. */
[[nodiscard]] QJsonValue valueAt(const QJsonValue &root, const QString &path);

/** As one line of JSON; a text stays as it is. */
[[nodiscard]] QString asText(const QJsonValue &value);

} // namespace ScriptedAgent
