#include "git/GitFetch.h"

#include "base/Text.h"
#include "git/GitFields_p.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <limits>

namespace Vesk::GitFetch
{
namespace
{

constexpr std::array guardedScopes {"local", "worktree", "command"};

// A "*" stands for a subsection, which is never empty.
constexpr std::array commandKeyPatterns {
    QLatin1StringView("core.sshcommand"),     QLatin1StringView("core.gitproxy"),
    QLatin1StringView("core.askpass"),        QLatin1StringView("core.alternaterefscommand"),
    QLatin1StringView("credential.helper"),   QLatin1StringView("credential.*.helper"),
    QLatin1StringView("remote.*.uploadpack"), QLatin1StringView("remote.*.receivepack"),
    QLatin1StringView("remote.*.vcs"),        QLatin1StringView("http.cookiefile"),
    QLatin1StringView("http.*.cookiefile"),   QLatin1StringView("http.savecookies"),
    QLatin1StringView("http.*.savecookies")};

constexpr qint64 maxConfigBytes = qint64 {64} * 1024 * 1024;

Outcome failed(const QString &message)
{
    return {.kind = Outcome::Kind::Failed, .text = message};
}

GitProcess::CappedOutput readConfig(const GitSetting &setting, const QString &root,
                                    const QStringList &arguments)
{
    GitSetting reading = setting;
    reading.environment = GitEnvironment::forReading(setting.environment, {});
    auto output = GitProcess::runCapped(
        reading.call(QStringList {QStringLiteral("config")} + arguments, root), maxConfigBytes);
    if (output.totalOutputBytes > output.out.size())
        output.code = std::numeric_limits<int>::max(); // what is read in part is not read
    return output;
}

/** What the names of the settings tell of the remotes. */
struct RemoteSettings {
    QStringList optionKeys {};                   ///< of remotes that git would take for options
    QList<GitEnvironment::Setting> noPruning {}; ///< or what a configuration asks for would go on
    bool areComplete = true; ///< none without an address: git would look for it, and for refspecs, elsewhere
};

RemoteSettings remotesOf(QByteArrayView names)
{
    RemoteSettings remotes {.noPruning = {{"fetch.prune", "false"}, {"fetch.pruneTags", "false"}}};
    QHash<QByteArray, bool> hasAddress;
    GitFields fields(names, '\0');
    while (fields.next()) { // the scope
        const auto key = fields.next();
        const qsizetype nameEnd = key ? key->lastIndexOf('.') : -1;
        constexpr qsizetype nameStart = 7;
        if (nameEnd < nameStart || !key->startsWith("remote."))
            continue;
        const QByteArray name = key->sliced(nameStart, nameEnd - nameStart).toByteArray();
        const QByteArrayView variable = key->sliced(nameEnd + 1);
        hasAddress[name] |= variable == "url";
        // With several remotes each is fetched by a call of its own, whose argument is the name as it is.
        if (name.startsWith('-'))
            remotes.optionKeys.append(QString::fromUtf8(*key).toLower());
        if (variable == "prune" || variable == "prunetags")
            remotes.noPruning.append({key->toByteArray(), "false"});
    }
    remotes.areComplete = !hasAddress.values().contains(false);
    return remotes;
}

} // namespace

GitTask run(const QString &root, bool hasRemote, QObject *context, std::function<void(const Outcome &)> done)
{
    return startGitTask(
        context, [root, hasRemote](const GitSetting &setting) { return perform(setting, root, hasRemote); },
        std::move(done));
}

Outcome perform(const GitSetting &setting, const QString &root, bool hasRemote, std::chrono::seconds limit)
{
    if (!hasRemote)
        return {.kind = Outcome::Kind::NoRemote};
    if (setting.git.isEmpty())
        return failed(GitProcess::notFoundMessage());

    const auto names = readConfig(setting, root,
                                  {QStringLiteral("--list"), QStringLiteral("--show-scope"),
                                   QStringLiteral("--name-only"), QStringLiteral("-z")});
    if (names.code != 0)
        return failed(QStringLiteral("저장소 설정을 읽지 못해 fetch하지 않았습니다"));
    const RemoteSettings remotes = remotesOf(names.out);
    if (const QStringList keys = blockingKeys(names.out) + remotes.optionKeys; !keys.isEmpty())
        return {.kind = Outcome::Kind::Blocked, .keys = keys};

    const auto refspecs = readConfig(
        setting, root,
        {QStringLiteral("-z"), QStringLiteral("--get-regexp"), QStringLiteral("^remote\\..*\\.fetch$")});
    const bool prunes =
        refspecs.code < 2 && pruneIsSafe(refspecs.out) && remotes.areComplete; // 1: there are none

    QStringList arguments {QStringLiteral("-c"),
                           QStringLiteral("core.hooksPath=/dev/null"),
                           QStringLiteral("-c"),
                           QStringLiteral("protocol.ext.allow=never"),
                           QStringLiteral("fetch"),
                           QStringLiteral("--all"),
                           QStringLiteral("--no-recurse-submodules")};
    if (prunes)
        arguments << QStringLiteral("--prune") << QStringLiteral("--no-prune-tags");
    GitSetting fetching = setting;
    fetching.environment = GitEnvironment::forFetch(
        setting.environment, prunes ? QList<GitEnvironment::Setting>() : remotes.noPruning);
    GitProcess::Call call = fetching.call(arguments, root);
    call.timeout = limit;
    const auto output = GitProcess::run(call);
    if (output.code == 0)
        return {.kind = Outcome::Kind::Fetched, .text = summary(output.err, !prunes)};
    if (output.code == GitProcess::timedOutCode)
        return failed(QStringLiteral("%1초 안에 끝나지 않아 멈췄습니다").arg(limit.count()));
    return failed(GitProcess::failureText(output.err, QStringLiteral("fetch"), output.code));
}

bool isCommandKey(const QString &key)
{
    const QString name = key.toLower();
    return std::ranges::any_of(commandKeyPatterns, [&](QLatin1StringView pattern) {
        const qsizetype star = pattern.indexOf(QLatin1StringView(".*."));
        if (star < 0)
            return name == pattern;
        const QLatin1StringView first = pattern.first(star + 1);
        const QLatin1StringView last = pattern.sliced(star + 2);
        return name.startsWith(first) && name.endsWith(last) && name.size() > first.size() + last.size();
    });
}

QStringList blockingKeys(QByteArrayView text)
{
    QStringList keys;
    GitFields fields(text, '\0');
    while (const auto scope = fields.next()) {
        const auto name = fields.next();
        if (!name)
            break;
        const QString key = QString::fromUtf8(*name).toLower();
        const bool isGuarded =
            std::ranges::any_of(guardedScopes, [&](const char *guarded) { return *scope == guarded; });
        if (isGuarded && isCommandKey(key) && !keys.contains(key))
            keys.append(key);
    }
    return keys;
}

bool pruneIsSafe(QByteArrayView fetchRefspecs)
{
    GitFields records(fetchRefspecs, '\0');
    while (const auto record = records.next()) {
        const qsizetype keyEnd = record->indexOf('\n');
        if (keyEnd < 0)
            continue;
        QString refspec = Text::trimBlanks(QString::fromUtf8(record->sliced(keyEnd + 1)));
        if (refspec.startsWith(u'^')) // only takes away
            continue;
        if (refspec.startsWith(u'+'))
            refspec.remove(0, 1);
        const qsizetype colon = refspec.indexOf(u':');
        const QString destination = colon < 0 ? QString() : refspec.mid(colon + 1);
        if (!destination.isEmpty() && !destination.startsWith(QLatin1StringView("refs/remotes/")))
            return false;
    }
    return true;
}

QString summary(const QString &error, bool pruneSkipped)
{
    int updated = 0;
    int pruned = 0;
    for (const QString &each : error.split(u'\n', Qt::SkipEmptyParts)) {
        const QString line = Text::trimBlanks(each);
        if (line.contains(QLatin1StringView("->")))
            ++(line.startsWith(QLatin1StringView("- ")) ? pruned : updated);
    }
    QStringList parts;
    if (updated > 0)
        parts << QStringLiteral("원격 참조 %1개를 갱신했습니다").arg(updated);
    if (pruned > 0)
        parts << QStringLiteral("원격에서 지워진 브랜치 %1개를 정리했습니다").arg(pruned);
    if (parts.isEmpty())
        parts << QStringLiteral("새로 받은 것이 없습니다");
    if (pruneSkipped)
        parts << QStringLiteral("저장소의 fetch refspec이 원격 추적 밖을 가리켜 정리는 건너뛰었습니다");
    return parts.join(QStringLiteral(" · "));
}

} // namespace Vesk::GitFetch
