// The arguments the agent program is started with, checked as it checks them.
#pragma once

#include <QHash>
#include <QStringList>

#include <optional>

namespace ScriptedAgent
{

struct CommandLine {
    QHash<QString, QStringList> options; ///< by name with its dashes; flags have no values
    QString prompt;                      ///< the argument that belongs to no option

    [[nodiscard]] bool has(const QString &name) const { return options.contains(name); }
    [[nodiscard]] QString value(const QString &name, const QString &absent = {}) const;
    [[nodiscard]] bool streams() const; ///< lines of JSON are wanted on standard output
};

struct ParsedCommandLine {
    CommandLine line;
    std::optional<QString> complaint; ///< for standard error; the program ends with code 1
};

[[nodiscard]] ParsedCommandLine parseCommandLine(const QStringList &arguments);

} // namespace ScriptedAgent
