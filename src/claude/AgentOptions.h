// The choices a session makes for its agent: permission mode, model, effort. Words are the agent program's
// own, labels are those of the pickers.
#pragma once

#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

namespace Vesk
{
Q_NAMESPACE

enum class AgentPermissionMode { Plan, Readonly, DontAsk, AcceptEdits, Auto, Full };
Q_ENUM_NS(AgentPermissionMode)

enum class ClaudeModel { Opus, Fable, Sonnet, Haiku };
Q_ENUM_NS(ClaudeModel)

enum class AgentEffort { Low, Medium, High, XHigh, Max, Ultracode };
Q_ENUM_NS(AgentEffort)

inline constexpr std::array allPermissionModes {
    AgentPermissionMode::Plan,        AgentPermissionMode::Readonly, AgentPermissionMode::DontAsk,
    AgentPermissionMode::AcceptEdits, AgentPermissionMode::Auto,     AgentPermissionMode::Full};
inline constexpr std::array allModels {ClaudeModel::Opus, ClaudeModel::Fable, ClaudeModel::Sonnet,
                                       ClaudeModel::Haiku};
inline constexpr std::array allEfforts {AgentEffort::Low,   AgentEffort::Medium, AgentEffort::High,
                                        AgentEffort::XHigh, AgentEffort::Max,    AgentEffort::Ultracode};

/** The word for `--permission-mode`; the wire uses the same words. */
[[nodiscard]] QString word(AgentPermissionMode mode);
[[nodiscard]] QString label(AgentPermissionMode mode);
/** The mode whose command-line word this is; absent for any other text. */
[[nodiscard]] std::optional<AgentPermissionMode> permissionModeFromWord(const QString &word);

/** The word for `--model`. */
[[nodiscard]] QString word(ClaudeModel model);
[[nodiscard]] QString label(ClaudeModel model);

/** The word for `--effort`; Ultracode is told as "max". */
[[nodiscard]] QString word(AgentEffort effort);
[[nodiscard]] QString label(AgentEffort effort);

} // namespace Vesk
