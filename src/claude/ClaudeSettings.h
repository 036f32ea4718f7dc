// The agent program's own settings files, read so that a new session starts as the program itself would.
#pragma once

#include "claude/AgentOptions.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** One settings file, as far as it concerns Vesk. A missing key and one of another type are absent. */
struct RawSettingsFile {
    struct Permissions {
        std::optional<QString> defaultMode;
        std::optional<QStringList> allow;
    };

    std::optional<QString> model;
    std::optional<QString> effortLevel;
    std::optional<bool> ultracode;
    std::optional<Permissions> permissions;
};

/** From the words of the settings to the choices of a session. */
namespace ClaudeSettingsMap
{

/** A mode that Vesk does not know. */
struct UnknownMode {
    std::optional<QString> text; ///< absent when the word is not safe to show

    bool operator==(const UnknownMode &) const = default;
};

/** The model family that the text names, as in "claude-opus-4". */
[[nodiscard]] std::optional<ClaudeModel> model(const std::optional<QString> &text);
[[nodiscard]] std::optional<AgentPermissionMode> permissionMode(const std::optional<QString> &text);
/** `ultracode` goes before any level. */
[[nodiscard]] std::optional<AgentEffort> effort(const std::optional<QString> &effortLevel,
                                                const std::optional<bool> &ultracode);
/** Present for a mode that is set and does not map. */
[[nodiscard]] std::optional<UnknownMode> unknownPermissionMode(const std::optional<QString> &text);

} // namespace ClaudeSettingsMap

/** What the settings files say for one project; absent where they say nothing. */
struct ClaudeProjectSettings {
    std::optional<ClaudeModel> model;
    std::optional<AgentPermissionMode> permissionMode;
    std::optional<AgentEffort> effort;
    std::optional<ClaudeSettingsMap::UnknownMode> unknownMode;
};

namespace ClaudeSettingsResolver
{

/** The settings of a project: of each key the first that is set in the local, the project's and the user's
   file. Files that are missing, unreadable, over 8 MiB or no JSON object count as empty. */
[[nodiscard]] ClaudeProjectSettings resolve(const QString &projectPath, const QString &home,
                                            bool includeLocal);

/** The record of a file's bytes; an empty one when they are no JSON object. */
[[nodiscard]] RawSettingsFile parse(const QByteArray &bytes);

/** The rules that the user's global settings allow for every project. */
[[nodiscard]] QStringList globalAllowRules(const QString &home);

} // namespace ClaudeSettingsResolver

} // namespace Vesk
