#include "claude/UnsupervisedToolDenylist.h"

#include "base/Text.h"

#include <QSet>

namespace Vesk::UnsupervisedToolDenylist
{

namespace
{

QStringList listedTools()
{
    return {QStringLiteral("Bash"), QStringLiteral("WebFetch"), QStringLiteral("WebSearch")};
}

QSet<QString> toolNames(const QStringList &rules)
{
    QSet<QString> names;
    for (const QString &rule : rules) {
        if (const auto name = toolName(rule))
            names.insert(*name);
    }
    return names;
}

} // namespace

std::optional<QString> toolName(const QString &rule)
{
    const QString name = Text::trimBlanks(rule.section(u'(', 0, 0));
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

QStringList denied(const QStringList &sessionAllowed)
{
    const QSet<QString> opened = toolNames(sessionAllowed);
    QStringList tools = listedTools();
    tools.removeIf([&](const QString &tool) { return opened.contains(tool); });
    return tools;
}

QStringList openedByGlobalAllow(const QStringList &rules)
{
    const QSet<QString> opened = toolNames(rules);
    QStringList tools = listedTools();
    tools.removeIf([&](const QString &tool) { return !opened.contains(tool); });
    return tools;
}

} // namespace Vesk::UnsupervisedToolDenylist
