#include "claude/AgentOptions.h"

#include <algorithm>

namespace Vesk
{

QString word(AgentPermissionMode mode)
{
    switch (mode) {
    case AgentPermissionMode::Plan:
        return QStringLiteral("plan");
    case AgentPermissionMode::Readonly:
        return QStringLiteral("default");
    case AgentPermissionMode::DontAsk:
        return QStringLiteral("dontAsk");
    case AgentPermissionMode::AcceptEdits:
        return QStringLiteral("acceptEdits");
    case AgentPermissionMode::Auto:
        return QStringLiteral("auto");
    case AgentPermissionMode::Full:
        return QStringLiteral("bypassPermissions");
    }
    Q_UNREACHABLE();
}

QString label(AgentPermissionMode mode)
{
    switch (mode) {
    case AgentPermissionMode::Plan:
        return QStringLiteral("Plan only");
    case AgentPermissionMode::Readonly:
        return QStringLiteral("Manual");
    case AgentPermissionMode::DontAsk:
        return QStringLiteral("Don't ask");
    case AgentPermissionMode::AcceptEdits:
        return QStringLiteral("Accept edits");
    case AgentPermissionMode::Auto:
        return QStringLiteral("Auto");
    case AgentPermissionMode::Full:
        return QStringLiteral("Full access");
    }
    Q_UNREACHABLE();
}

std::optional<AgentPermissionMode> permissionModeFromWord(const QString &text)
{
    const auto *found =
        std::ranges::find_if(allPermissionModes, [&](auto mode) { return word(mode) == text; });
    return found == allPermissionModes.end() ? std::nullopt : std::optional(*found);
}

QString word(ClaudeModel model)
{
    switch (model) {
    case ClaudeModel::Opus:
        return QStringLiteral("opus");
    case ClaudeModel::Fable:
        return QStringLiteral("fable");
    case ClaudeModel::Sonnet:
        return QStringLiteral("sonnet");
    case ClaudeModel::Haiku:
        return QStringLiteral("haiku");
    }
    Q_UNREACHABLE();
}

QString label(ClaudeModel model)
{
    switch (model) {
    case ClaudeModel::Opus:
        return QStringLiteral("Opus");
    case ClaudeModel::Fable:
        return QStringLiteral("Fable");
    case ClaudeModel::Sonnet:
        return QStringLiteral("Sonnet");
    case ClaudeModel::Haiku:
        return QStringLiteral("Haiku");
    }
    Q_UNREACHABLE();
}

QString word(AgentEffort effort)
{
    switch (effort) {
    case AgentEffort::Low:
        return QStringLiteral("low");
    case AgentEffort::Medium:
        return QStringLiteral("medium");
    case AgentEffort::High:
        return QStringLiteral("high");
    case AgentEffort::XHigh:
        return QStringLiteral("xhigh");
    case AgentEffort::Max:
    case AgentEffort::Ultracode:
        return QStringLiteral("max");
    }
    Q_UNREACHABLE();
}

QString label(AgentEffort effort)
{
    switch (effort) {
    case AgentEffort::Low:
        return QStringLiteral("Low");
    case AgentEffort::Medium:
        return QStringLiteral("Medium");
    case AgentEffort::High:
        return QStringLiteral("High");
    case AgentEffort::XHigh:
        return QStringLiteral("X-High");
    case AgentEffort::Max:
        return QStringLiteral("Max");
    case AgentEffort::Ultracode:
        return QStringLiteral("Ultracode");
    }
    Q_UNREACHABLE();
}

} // namespace Vesk
