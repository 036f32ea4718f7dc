#include "CommandLine.h"

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

namespace
{

enum class Takes { Nothing, One, Many };

const QHash<QString, Takes> &knownOptions()
{
    static const QHash<QString, Takes> options = {
        {u"-p"_s, Takes::Nothing},
        {u"--print"_s, Takes::Nothing},
        {u"--version"_s, Takes::Nothing},
        {u"--verbose"_s, Takes::Nothing},
        {u"--include-partial-messages"_s, Takes::Nothing},
        {u"--input-format"_s, Takes::One},
        {u"--output-format"_s, Takes::One},
        {u"--model"_s, Takes::One},
        {u"--effort"_s, Takes::One},
        {u"--setting-sources"_s, Takes::One},
        {u"--append-system-prompt"_s, Takes::One},
        {u"--resume"_s, Takes::One},
        {u"--permission-mode"_s, Takes::One},
        {u"--permission-prompt-tool"_s, Takes::One},
        {u"--fallback-model"_s, Takes::One},
        {u"--max-budget-usd"_s, Takes::One},
        {u"--mcp-config"_s, Takes::Many},
        {u"--allowedTools"_s, Takes::Many},
        {u"--disallowedTools"_s, Takes::Many},
    };
    return options;
}

std::optional<QString> complaintAbout(const CommandLine &line)
{
    static const QStringList modes = {u"plan"_s,        u"default"_s, u"dontAsk"_s,
                                      u"acceptEdits"_s, u"auto"_s,    u"bypassPermissions"_s};
    const QString mode = line.value(u"--permission-mode"_s, u"default"_s);
    if (!modes.contains(mode)) {
        return u"error: option '--permission-mode <mode>' argument '%1' is invalid. Allowed choices are %2."_s
            .arg(mode, modes.join(u", "_s));
    }
    if (line.streams() && !line.has(u"--verbose"_s))
        return u"Error: When using --print, --output-format=stream-json requires --verbose"_s;
    return {};
}

} // namespace

QString CommandLine::value(const QString &name, const QString &absent) const
{
    const QStringList values = options.value(name);
    return values.isEmpty() ? absent : values.first();
}

bool CommandLine::streams() const
{
    return value(u"--output-format"_s) == "stream-json"_L1;
}

ParsedCommandLine parseCommandLine(const QStringList &arguments)
{
    ParsedCommandLine parsed;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (!argument.startsWith(u'-')) {
            parsed.line.prompt = argument;
            continue;
        }
        const auto known = knownOptions().constFind(argument);
        if (known == knownOptions().cend()) {
            parsed.complaint = u"error: unknown option '%1'"_s.arg(argument);
            return parsed;
        }
        QStringList &values = parsed.line.options[argument];
        if (*known == Takes::One) {
            if (++i == arguments.size()) {
                parsed.complaint = u"error: option '%1 <value>' argument missing"_s.arg(argument);
                return parsed;
            }
            values.append(arguments[i]);
        }
        while (*known == Takes::Many && i + 1 < arguments.size() && !arguments[i + 1].startsWith(u'-'))
            values.append(arguments[++i]);
    }
    parsed.complaint = complaintAbout(parsed.line);
    return parsed;
}

} // namespace ScriptedAgent
