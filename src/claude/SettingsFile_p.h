// Reading the small JSON files that the agent program and its users keep.
#pragma once

#include "base/Files.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace Vesk::SettingsFile
{

/** A settings file is written by people: one beyond this is something else. */
inline constexpr qsizetype maxBytes = 8 * 1024 * 1024;

/** The object in these bytes; absent when they hold none. */
[[nodiscard]] inline std::optional<QJsonObject> object(const QByteArray &bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

/** The object in a file; absent when the file or the object is not there. */
[[nodiscard]] inline std::optional<QJsonObject> readObject(const QString &path)
{
    const Result<QByteArray> bytes = readFile(path, maxBytes);
    return bytes ? object(*bytes) : std::nullopt;
}

} // namespace Vesk::SettingsFile
