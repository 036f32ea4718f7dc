#include "sessions/ComposerAtFileSearch.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

namespace Vesk::ComposerAtFileSearch
{

namespace fs = std::filesystem;

namespace
{

constexpr std::array<std::string_view, 17> skippedFolders {
    ".git",        ".build",      ".svn",          ".hg",   "node_modules", "dist",
    "build",       "DerivedData", ".next",         ".nuxt", ".venv",        "venv",
    "__pycache__", ".mypy_cache", ".pytest_cache", "Pods",  "vendor"};

constexpr std::size_t maxDepth = 200; // a path below would not fit a file name any more

/** Empty for a name that cannot stand in a message. */
QString readableName(const std::string &name)
{
    const QByteArray bytes = QByteArray::fromRawData(name.data(), static_cast<qsizetype>(name.size()));
    const QString text = QFile::decodeName(bytes);
    const bool isPlain = std::none_of(text.cbegin(), text.cend(),
                                      [](QChar c) { return c.category() == QChar::Other_Control; });
    return isPlain && text.toUtf8() == bytes ? text : QString();
}

/** One folder on the way down. */
struct OpenFolder {
    QString prefix; ///< relative to where the walk began, with its slash
    fs::directory_iterator entry;
};

fs::directory_iterator entriesOf(const fs::path &folder)
{
    std::error_code error;
    fs::directory_iterator entries(folder, fs::directory_options::skip_permission_denied, error);
    return error ? fs::directory_iterator() : entries;
}

// Nothing here ever reads a link's target, so that a walk goes down a tree and cannot run in circles.
QStringList pathsBelow(const QString &cwd, const std::stop_token &stop)
{
    QStringList paths;
    std::vector<OpenFolder> open {{{}, entriesOf(QFile::encodeName(cwd).toStdString())}};
    while (!open.empty() && paths.size() < maxPaths && !stop.stop_requested()) {
        auto &folder = open.back();
        if (folder.entry == fs::directory_iterator()) {
            open.pop_back();
            continue;
        }
        const fs::directory_entry entry = *folder.entry;
        std::error_code error;
        folder.entry.increment(error);
        if (error)
            folder.entry = {};
        const std::string name = entry.path().filename().string();
        if (name.starts_with('.'))
            continue;
        const fs::file_type type = entry.symlink_status(error).type();
        const QString readable = error ? QString() : readableName(name);
        if (readable.isEmpty())
            continue;
        const QString path = folder.prefix + readable;
        if (type == fs::file_type::regular) {
            paths.append(path);
        } else if (type == fs::file_type::directory && open.size() < maxDepth
                   && std::ranges::find(skippedFolders, name) == skippedFolders.end()) {
            open.push_back({path + u'/', entriesOf(entry.path())});
        }
    }
    return paths;
}

// Names may be stored decomposed, and are typed composed.
QString folded(const QString &text)
{
    return text.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace

QStringList search(const QString &query, const QString &cwd, qsizetype limit, const std::stop_token &stop)
{
    const QStringList paths = pathsBelow(cwd, stop);
    return stop.stop_requested() ? QStringList() : rank(query, paths, limit);
}

QStringList rank(const QString &query, const QStringList &paths, qsizetype limit)
{
    struct Ranked {
        int tier = 0;
        qsizetype length = 0; // of no weight without a query
        QString path;
    };
    const QString wanted = folded(query);
    std::vector<Ranked> ranked;
    for (const QString &path : paths) {
        if (wanted.isEmpty()) {
            ranked.push_back({0, 0, path});
            continue;
        }
        const QString whole = folded(path);
        const QStringView name = QStringView(whole).sliced(whole.lastIndexOf(u'/') + 1);
        if (name.startsWith(wanted))
            ranked.push_back({0, path.size(), path});
        else if (name.contains(wanted))
            ranked.push_back({1, path.size(), path});
        else if (whole.contains(wanted))
            ranked.push_back({2, path.size(), path});
    }
    std::ranges::sort(ranked, {}, [](const Ranked &r) { return std::tie(r.tier, r.length, r.path); });
    QStringList best;
    for (const Ranked &entry : ranked) {
        if (best.size() >= limit)
            break;
        best.append(entry.path);
    }
    return best;
}

} // namespace Vesk::ComposerAtFileSearch
