// What a child is started with: its argument vector and its environment.
#pragma once

#include "claude/AgentOptions.h"
#include "core/AnswerLanguage.h"

#include <QHash>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** The settings of a session that its children are started by. */
struct LaunchOptions {
    QString cwd;
    ClaudeModel model = ClaudeModel::Opus;
    AgentPermissionMode permissionMode = AgentPermissionMode::Readonly;
    AgentEffort effort = AgentEffort::High;
    bool isUnattendedSchedule = false;
    QStringList extraAllowedTools; ///< permission rules, as in `Bash(git log:*)`
    std::optional<double> unattendedMaxBudgetUSD;
    QStringList unattendedFallbackModels;
    QString sessionId; ///< the conversation to resume; empty for a new one
};

/** The mode that a child really gets: a remote run is never handed Auto or Full. */
[[nodiscard]] AgentPermissionMode effectiveMode(AgentPermissionMode mode, bool remote);

/** The arguments of one run. Reads `<cwd>/.mcp.json`, and nothing else from outside. */
[[nodiscard]] QStringList buildArgs(const LaunchOptions &options, bool remote, const QStringList &attachments,
                                    AnswerLanguage language, bool interactive);

/** `base` with every override set over it. */
[[nodiscard]] QProcessEnvironment buildEnvironment(QProcessEnvironment base,
                                                   const QHash<QString, QString> &overrides);

/** `--mcp-config` and the project's `.mcp.json`, when that file is an object with an object `mcpServers`. */
[[nodiscard]] QStringList mcpConfigArgs(const QString &projectPath);

/** The value of `--max-budget-usd`, as in "1.5"; absent for one that is no sum of money. */
[[nodiscard]] std::optional<QString> budgetArgument(double value);

/** The permission rules that let the child read the attached files. */
[[nodiscard]] QStringList attachmentReadRules(const QStringList &attachments);

} // namespace Vesk
