#include "claude/LaunchArguments.h"

#include "base/Text.h"
#include "claude/SettingsFile_p.h"
#include "claude/UnsupervisedToolDenylist.h"

#include <cmath>

namespace Vesk
{

namespace
{

QStringList usableFallbackModels(const QStringList &models)
{
    QStringList usable;
    for (const QString &model : models) {
        const bool breaksTheList =
            model.startsWith(u'-') || model.contains(u',') || model.contains(u'\n') || model.contains(u'\r');
        if (!breaksTheList && !Text::trimBlanks(model).isEmpty())
            usable.append(model);
    }
    return usable;
}

QStringList unattendedLimits(const LaunchOptions &options)
{
    QStringList args;
    if (const QStringList models = usableFallbackModels(options.unattendedFallbackModels); !models.isEmpty())
        args << QStringLiteral("--fallback-model") << models.join(u',');
    if (options.unattendedMaxBudgetUSD) {
        if (const auto budget = budgetArgument(*options.unattendedMaxBudgetUSD))
            args << QStringLiteral("--max-budget-usd") << *budget;
    }
    return args;
}

QStringList allowedTools(const LaunchOptions &options, AgentPermissionMode mode, bool remote,
                         const QStringList &attachments)
{
    QStringList tools;
    if (mode == AgentPermissionMode::Readonly)
        tools << QStringLiteral("Read") << QStringLiteral("Grep") << QStringLiteral("Glob");
    if (!remote) {
        for (const QString &rule : options.extraAllowedTools) {
            if (!rule.startsWith(u'-')) // it would be taken for a flag
                tools << rule;
        }
    }
    return tools + attachmentReadRules(attachments);
}

} // namespace

AgentPermissionMode effectiveMode(AgentPermissionMode mode, bool remote)
{
    const bool needsAPerson = mode == AgentPermissionMode::Auto || mode == AgentPermissionMode::Full;
    return remote && needsAPerson ? AgentPermissionMode::AcceptEdits : mode;
}

QStringList buildArgs(const LaunchOptions &options, bool remote, const QStringList &attachments,
                      AnswerLanguage language, bool interactive)
{
    const AgentPermissionMode mode = effectiveMode(options.permissionMode, remote);

    // Without --verbose the program refuses this output format.
    QStringList args {QStringLiteral("-p"),          QStringLiteral("--input-format"),
                      QStringLiteral("stream-json"), QStringLiteral("--output-format"),
                      QStringLiteral("stream-json"), QStringLiteral("--include-partial-messages"),
                      QStringLiteral("--verbose"),   QStringLiteral("--model"),
                      word(options.model),           QStringLiteral("--effort"),
                      word(options.effort)};

    // A project's local settings never govern a run that nobody watches.
    args << QStringLiteral("--setting-sources")
         << (remote || options.isUnattendedSchedule ? QStringLiteral("user,project")
                                                    : QStringLiteral("user,project,local"));
    args << mcpConfigArgs(options.cwd);
    if (const auto instruction = systemPromptInstruction(language))
        args << QStringLiteral("--append-system-prompt") << *instruction;
    if (!options.sessionId.isEmpty())
        args << QStringLiteral("--resume") << options.sessionId;
    args << QStringLiteral("--permission-mode") << word(mode);
    if (interactive && mode != AgentPermissionMode::Full)
        args << QStringLiteral("--permission-prompt-tool") << QStringLiteral("stdio");

    const bool unattended = options.isUnattendedSchedule && !interactive;
    if (unattended && !remote)
        args << unattendedLimits(options);
    if (unattended || remote) {
        const QStringList denied =
            UnsupervisedToolDenylist::denied(remote ? QStringList() : options.extraAllowedTools);
        if (!denied.isEmpty())
            args << QStringLiteral("--disallowedTools") << denied;
    }
    if (const QStringList allowed = allowedTools(options, mode, remote, attachments); !allowed.isEmpty())
        args << QStringLiteral("--allowedTools") << allowed;
    return args;
}

QProcessEnvironment buildEnvironment(QProcessEnvironment base, const QHash<QString, QString> &overrides)
{
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
        base.insert(it.key(), it.value());
    return base;
}

QStringList mcpConfigArgs(const QString &projectPath)
{
    const QString path = projectPath + QStringLiteral("/.mcp.json");
    const auto config = SettingsFile::readObject(path);
    if (!config || !config->value(QStringLiteral("mcpServers")).isObject())
        return {};
    return {QStringLiteral("--mcp-config"), path};
}

std::optional<QString> budgetArgument(double value)
{
    if (!std::isfinite(value) || value < 1e-6)
        return std::nullopt;
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

QStringList attachmentReadRules(const QStringList &attachments)
{
    QStringList rules;
    rules.reserve(attachments.size());
    for (const QString &path : attachments) {
        QString escaped;
        escaped.reserve(path.size());
        for (const QChar c : path) {
            if (QStringView(u"*?[]\\()").contains(c))
                escaped += u'\\';
            escaped += c;
        }
        // With the path's own slash this makes the double one that stands for an absolute path.
        rules << QStringLiteral("Read(/") + escaped + u')';
    }
    return rules;
}

} // namespace Vesk
