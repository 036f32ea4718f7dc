#include "claude/ClaudeSettings.h"

#include "claude/SettingsFile_p.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <functional>
#include <vector>

namespace Vesk
{

namespace ClaudeSettingsMap
{

std::optional<ClaudeModel> model(const std::optional<QString> &text)
{
    static constexpr std::array families {ClaudeModel::Fable, ClaudeModel::Opus, ClaudeModel::Sonnet,
                                          ClaudeModel::Haiku};
    const QString name = text.value_or(QString()).toLower();
    const auto *found =
        std::ranges::find_if(families, [&](ClaudeModel family) { return name.contains(word(family)); });
    return found == families.end() ? std::nullopt : std::optional(*found);
}

std::optional<AgentPermissionMode> permissionMode(const std::optional<QString> &text)
{
    if (!text)
        return std::nullopt;
    if (*text == QLatin1StringView("manual"))
        return AgentPermissionMode::Readonly;
    return permissionModeFromWord(*text);
}

std::optional<AgentEffort> effort(const std::optional<QString> &effortLevel,
                                  const std::optional<bool> &ultracode)
{
    if (ultracode.value_or(false))
        return AgentEffort::Ultracode;
    static constexpr std::array levels {AgentEffort::Low, AgentEffort::Medium, AgentEffort::High,
                                        AgentEffort::XHigh, AgentEffort::Max};
    const auto *found = std::ranges::find_if(
        levels, [&](AgentEffort level) { return effortLevel.has_value() && word(level) == *effortLevel; });
    return found == levels.end() ? std::nullopt : std::optional(*found);
}

std::optional<UnknownMode> unknownPermissionMode(const std::optional<QString> &text)
{
    if (!text || text->isEmpty() || permissionMode(text))
        return std::nullopt;
    // A settings file comes with the project: it must not put words of its own into the transcript. A word
    // may bring the line end of the file that it was pasted from.
    static const QRegularExpression safe(QStringLiteral("\\A(?:[A-Za-z]|\\r\\n){1,32}\\z"));
    return UnknownMode {safe.match(*text).hasMatch() ? text : std::nullopt};
}

} // namespace ClaudeSettingsMap

namespace ClaudeSettingsResolver
{

namespace
{

QString settingsPath(const QString &folder, QLatin1StringView name)
{
    return folder + QStringLiteral("/.claude/") + name;
}

RawSettingsFile readSettings(const QString &path)
{
    const auto bytes = readFile(path, SettingsFile::maxBytes);
    return bytes ? parse(*bytes) : RawSettingsFile();
}

std::optional<QString> stringAt(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QStringList> stringsAt(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        return std::nullopt;
    QStringList strings;
    const QJsonArray array = value.toArray();
    for (const QJsonValue item : array) {
        if (item.isString())
            strings << item.toString();
    }
    return strings;
}

std::optional<QString> defaultMode(const RawSettingsFile &file)
{
    return file.permissions ? file.permissions->defaultMode : std::nullopt;
}

} // namespace

RawSettingsFile parse(const QByteArray &bytes)
{
    RawSettingsFile file;
    const auto object = SettingsFile::object(bytes);
    if (!object)
        return file;
    file.model = stringAt(*object, QLatin1StringView("model"));
    file.effortLevel = stringAt(*object, QLatin1StringView("effortLevel"));
    if (const QJsonValue ultracode = object->value(QLatin1StringView("ultracode")); ultracode.isBool())
        file.ultracode = ultracode.toBool();
    if (const QJsonValue permissions = object->value(QLatin1StringView("permissions"));
        permissions.isObject()) {
        const QJsonObject fields = permissions.toObject();
        file.permissions = RawSettingsFile::Permissions {stringAt(fields, QLatin1StringView("defaultMode")),
                                                         stringsAt(fields, QLatin1StringView("allow"))};
    }
    return file;
}

ClaudeProjectSettings resolve(const QString &projectPath, const QString &home, bool includeLocal)
{
    const QLatin1StringView shared("settings.json");
    std::vector<RawSettingsFile> files; // the one that counts most comes first
    if (includeLocal)
        files.push_back(readSettings(settingsPath(projectPath, QLatin1StringView("settings.local.json"))));
    files.push_back(readSettings(settingsPath(projectPath, shared)));
    files.push_back(readSettings(settingsPath(home, shared)));

    const auto firstSet = [&](auto field) {
        const auto found = std::ranges::find_if(
            files, [&](const auto &file) { return std::invoke(field, file).has_value(); });
        return found == files.end() ? std::decay_t<decltype(std::invoke(field, files.front()))>()
                                    : std::invoke(field, *found);
    };
    const auto mode = firstSet(defaultMode);
    return {ClaudeSettingsMap::model(firstSet(&RawSettingsFile::model)),
            ClaudeSettingsMap::permissionMode(mode),
            ClaudeSettingsMap::effort(firstSet(&RawSettingsFile::effortLevel),
                                      firstSet(&RawSettingsFile::ultracode)),
            ClaudeSettingsMap::unknownPermissionMode(mode)};
}

QStringList globalAllowRules(const QString &home)
{
    const RawSettingsFile file = readSettings(settingsPath(home, QLatin1StringView("settings.json")));
    return file.permissions ? file.permissions->allow.value_or(QStringList()) : QStringList();
}

} // namespace ClaudeSettingsResolver

} // namespace Vesk
