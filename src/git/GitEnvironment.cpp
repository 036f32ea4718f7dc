#include "git/GitEnvironment.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Vesk::GitEnvironment
{
namespace
{

// The folders of the user's own scopes (GIT_CONFIG_GLOBAL, GIT_CONFIG_SYSTEM, GIT_CONFIG_NOSYSTEM) and what
// the user says of transports (GIT_SSH, GIT_SSH_COMMAND, GIT_PROXY…) stay.
constexpr std::array removedVariables {
    // another repository, or another part of it
    "GIT_DIR", "GIT_WORK_TREE", "GIT_COMMON_DIR", "GIT_INDEX_FILE", "GIT_OBJECT_DIRECTORY",
    "GIT_ALTERNATE_OBJECT_DIRECTORIES", "GIT_NAMESPACE", "GIT_PREFIX", "GIT_INTERNAL_SUPER_PREFIX",
    "GIT_IMPLICIT_WORK_TREE", "GIT_QUARANTINE_PATH", "GIT_GRAFT_FILE", "GIT_SHALLOW_FILE",
    "GIT_REPLACE_REF_BASE", "GIT_ATTR_SOURCE", "GIT_DEFAULT_HASH",
    // another configuration; GIT_CONFIG_KEY_n and GIT_CONFIG_VALUE_n mean nothing without their count
    "GIT_CONFIG", "GIT_CONFIG_PARAMETERS", "GIT_CONFIG_COUNT",
    // programs and the form of the output
    "GIT_EXTERNAL_DIFF", "GIT_DIFF_OPTS", "GIT_PAGER", "GIT_PAGER_IN_USE", "GIT_EDITOR",
    "GIT_SEQUENCE_EDITOR", "GIT_LITERAL_PATHSPECS", "GIT_GLOB_PATHSPECS", "GIT_NOGLOB_PATHSPECS",
    "GIT_ICASE_PATHSPECS", "GIT_REDIRECT_STDIN", "GIT_REDIRECT_STDOUT", "GIT_REDIRECT_STDERR", "GIT_FLUSH",
    // prompts
    "GIT_ASKPASS", "SSH_ASKPASS", "SSH_ASKPASS_REQUIRE", "GIT_TERMINAL_PROMPT", "GIT_OPTIONAL_LOCKS"};

QByteArrayView nameOf(const QByteArray &variable)
{
    const qsizetype end = variable.indexOf('=');
    return QByteArrayView(variable).first(end < 0 ? variable.size() : end);
}

void put(QByteArrayList &environment, const QByteArray &name, const QByteArray &value)
{
    environment.removeIf([&](const QByteArray &variable) { return nameOf(variable) == name; });
    environment.append(name + '=' + value);
}

void putSettings(QByteArrayList &environment, const QList<Setting> &settings)
{
    for (qsizetype i = 0; i < settings.size(); ++i) {
        const QByteArray number = QByteArray::number(i);
        environment.append("GIT_CONFIG_KEY_" + number + '=' + settings[i].key);
        environment.append("GIT_CONFIG_VALUE_" + number + '=' + settings[i].value);
    }
    environment.append("GIT_CONFIG_COUNT=" + QByteArray::number(settings.size()));
}

/** A bare repository inside the work tree is a folder that anybody may have put there. */
const Setting noEmbeddedRepository {"safe.bareRepository", "explicit"};

const QList<Setting> &settingsOfReads()
{
    static const QList<Setting> settings {
        noEmbeddedRepository,
        {"core.hooksPath", "/dev/null"},
        {"log.showSignature", "false"},     // runs a program, and puts its words into the log
        {"diff.autoRefreshIndex", "false"}, // writes the index
        {"log.decorate", "short"},          // the rest is the form of what is parsed
        {"column.branch", "never"},
        {"core.quotePath", "false"}, // letters of other alphabets are no numbers for those who read them
        {"i18n.logOutputEncoding", "UTF-8"},
    };
    return settings;
}

/** "section.sub.section.name" in its parts; the subsection is absent with one dot. */
struct KeyParts {
    QByteArrayView section;
    std::optional<QByteArrayView> subsection;
    QByteArrayView name;
};

KeyParts partsOf(QByteArrayView key)
{
    const qsizetype first = key.indexOf('.');
    const qsizetype last = key.lastIndexOf('.');
    if (first < 0)
        return {key, std::nullopt, {}};
    if (first == last)
        return {key.first(first), std::nullopt, key.sliced(last + 1)};
    return {key.first(first), key.sliced(first + 1, last - first - 1), key.sliced(last + 1)};
}

/** What one filter driver has in the user's scopes, and what of it the repository defines too. */
struct Filter {
    QMap<QByteArray, QByteArray> ofUser;
    QSet<QByteArray> ofRepository;
};

void closeFilter(const QByteArray &driver, const Filter &filter, QList<Setting> &closed)
{
    const auto key = [&](const char *name) { return "filter." + driver + '.' + name; };
    bool isIncomplete = false;
    for (const char *name : {"clean", "smudge", "process"}) {
        if (!filter.ofRepository.contains(name))
            continue;
        isIncomplete |= !filter.ofUser.contains(name);
        closed.append({key(name), filter.ofUser.value(name)}); // an empty command is none
    }
    if (isIncomplete) // or git would fail for want of a filter that has to be there
        closed.append({key("required"), "false"});
    else if (filter.ofRepository.contains("required"))
        closed.append({key("required"), filter.ofUser.value("required", "false")});
}

} // namespace

bool ListedSetting::isOfRepository() const
{
    return scope != "system" && scope != "global" && scope != "command";
}

QByteArrayList inherited()
{
    QByteArrayList all;
    for (char **variable = environ; variable && *variable; ++variable)
        all.append(*variable);
    return all;
}

QByteArrayList base(const QByteArrayList &inherited)
{
    QByteArrayList environment;
    for (const QByteArray &variable : inherited) {
        const QByteArrayView name = nameOf(variable);
        const bool isRemoved =
            std::ranges::any_of(removedVariables, [&](const char *removed) { return name == removed; });
        if (!isRemoved && !name.startsWith("GIT_CONFIG_KEY_") && !name.startsWith("GIT_CONFIG_VALUE_"))
            environment.append(variable);
    }
    environment << "GIT_TERMINAL_PROMPT=0"
                << "GIT_OPTIONAL_LOCKS=0"
                << "GIT_ASKPASS=" // empty asks nobody, whatever the settings name
                << "SSH_ASKPASS_REQUIRE=never";
    return environment;
}

QByteArrayList forReading(const QByteArrayList &base, const QList<Setting> &closed)
{
    QByteArrayList environment = base;
    put(environment, "GIT_ALLOW_PROTOCOL", "");
    put(environment, "GIT_NO_LAZY_FETCH", "1");
    put(environment, "GIT_LITERAL_PATHSPECS", "1");
    putSettings(environment, settingsOfReads() + closed);
    return environment;
}

QByteArrayList forFetch(const QByteArrayList &base, const QList<Setting> &settings)
{
    QByteArrayList environment = base;
    for (QByteArray &variable : environment) {
        if (nameOf(variable) != "GIT_ALLOW_PROTOCOL")
            continue;
        QByteArrayList protocols = variable.sliced(variable.indexOf('=') + 1).split(':');
        protocols.removeAll("ext"); // the list would go above the settings
        variable = "GIT_ALLOW_PROTOCOL=" + protocols.join(':');
    }
    putSettings(environment, QList<Setting> {noEmbeddedRepository} + settings);
    return environment;
}

QList<ListedSetting> parseListing(QByteArrayView bytes)
{
    QList<ListedSetting> settings;
    const auto field = [&](QByteArrayView &rest) -> std::optional<QByteArrayView> {
        const qsizetype end = rest.indexOf('\0');
        if (end < 0)
            return std::nullopt;
        const QByteArrayView text = rest.first(end);
        rest = rest.sliced(end + 1);
        return text;
    };
    for (QByteArrayView rest = bytes;;) {
        const auto scope = field(rest);
        const auto origin = scope ? field(rest) : std::nullopt;
        const auto entry = origin ? field(rest) : std::nullopt;
        if (!entry)
            return settings;
        const qsizetype keyEnd = entry->indexOf('\n');
        settings.append({scope->toByteArray(), origin->toByteArray(),
                         (keyEnd < 0 ? *entry : entry->first(keyEnd)).toByteArray(),
                         keyEnd < 0 ? std::nullopt : std::optional(entry->sliced(keyEnd + 1).toByteArray())});
    }
}

QList<Setting> closedRoads(const QList<ListedSetting> &settings)
{
    QMap<QByteArray, Filter> filters;
    QByteArray submoduleDiff;
    for (const ListedSetting &setting : settings) {
        if (setting.scope == "command")
            continue;
        const KeyParts parts = partsOf(setting.key);
        const QByteArray name = parts.name.toByteArray();
        if (parts.section == "filter" && parts.subsection) {
            Filter &filter = filters[parts.subsection->toByteArray()];
            if (setting.isOfRepository())
                filter.ofRepository.insert(name);
            else
                filter.ofUser.insert(name, setting.value.value_or(QByteArray("true")));
        }
        if (setting.key == "diff.submodule" && !setting.isOfRepository())
            submoduleDiff = setting.value.value_or(QByteArray());
    }

    QList<Setting> closed;
    for (auto filter = filters.cbegin(); filter != filters.cend(); ++filter)
        closeFilter(filter.key(), *filter, closed);
    // "diff" starts git anew inside each submodule, without the options that keep programs out.
    closed.append({"diff.submodule", submoduleDiff == "log" ? submoduleDiff : QByteArray("short")});
    return closed;
}

} // namespace Vesk::GitEnvironment
