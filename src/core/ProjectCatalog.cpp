#include "core/ProjectCatalog.h"

#include "base/Files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype maxFileBytes = qsizetype {64} * 1024 * 1024;

constexpr auto aliasKey = "alias"_L1;
constexpr auto pathKey = "path"_L1;
constexpr auto extraEnvKey = "extraEnv"_L1;
constexpr auto colorHexKey = "colorHex"_L1;

tl::unexpected<Error> malformedEntry(qsizetype index, const QString &what)
{
    return failure(ErrorKind::Malformed, u"projects.json, entry %1: "_s.arg(index + 1) + what);
}

Result<QString> requiredString(const QJsonObject &object, QLatin1StringView key, qsizetype index)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined())
        return malformedEntry(index, u"\"%1\" is missing"_s.arg(key));
    if (!value.isString())
        return malformedEntry(index, u"\"%1\" is not a string"_s.arg(key));
    return value.toString();
}

Result<QMap<QString, QString>> requiredEnvironment(const QJsonObject &object, qsizetype index)
{
    const QJsonValue value = object.value(extraEnvKey);
    if (value.isUndefined())
        return malformedEntry(index, u"\"%1\" is missing"_s.arg(extraEnvKey));
    if (!value.isObject())
        return malformedEntry(index, u"\"%1\" is not an object"_s.arg(extraEnvKey));
    QMap<QString, QString> environment;
    const QJsonObject pairs = value.toObject();
    for (auto pair = pairs.begin(); pair != pairs.end(); ++pair) {
        if (!pair.value().isString())
            return malformedEntry(index, u"\"%1.%2\" is not a string"_s.arg(extraEnvKey, pair.key()));
        environment.insert(pair.key(), pair.value().toString());
    }
    return environment;
}

Result<ProjectCatalogEntry> decodeEntry(const QJsonValue &value, qsizetype index)
{
    if (!value.isObject())
        return malformedEntry(index, u"not an object"_s);
    const QJsonObject object = value.toObject();
    ProjectCatalogEntry entry;
    auto alias = requiredString(object, aliasKey, index);
    if (!alias)
        return tl::unexpected(std::move(alias.error()));
    entry.alias = *std::move(alias);
    auto path = requiredString(object, pathKey, index);
    if (!path)
        return tl::unexpected(std::move(path.error()));
    entry.path = *std::move(path);
    auto environment = requiredEnvironment(object, index);
    if (!environment)
        return tl::unexpected(std::move(environment.error()));
    entry.extraEnv = *std::move(environment);
    const QJsonValue color = object.value(colorHexKey);
    if (color.isString())
        entry.colorHex = color.toString();
    else if (!color.isUndefined() && !color.isNull())
        return malformedEntry(index, u"\"%1\" is not a string"_s.arg(colorHexKey));
    return entry;
}

} // namespace

Result<QList<ProjectCatalogEntry>> decodeProjectCatalog(const QByteArray &json)
{
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(json, &problem);
    if (problem.error != QJsonParseError::NoError) {
        return failure(ErrorKind::Malformed,
                       u"projects.json: %1 at byte %2"_s.arg(problem.errorString()).arg(problem.offset));
    }
    if (!document.isArray())
        return failure(ErrorKind::Malformed, u"projects.json: not an array"_s);
    const QJsonArray array = document.array();
    QList<ProjectCatalogEntry> entries;
    entries.reserve(array.size());
    for (const QJsonValue value : array) {
        auto entry = decodeEntry(value, entries.size());
        if (!entry)
            return tl::unexpected(std::move(entry.error()));
        entries.append(*std::move(entry));
    }
    return entries;
}

QByteArray encodeProjectCatalog(const QList<ProjectCatalogEntry> &entries)
{
    QJsonArray array;
    for (const ProjectCatalogEntry &entry : entries) {
        QJsonObject environment;
        for (auto pair = entry.extraEnv.begin(); pair != entry.extraEnv.end(); ++pair)
            environment.insert(pair.key(), pair.value());
        QJsonObject object {{aliasKey, entry.alias}, {pathKey, entry.path}, {extraEnvKey, environment}};
        if (entry.colorHex)
            object.insert(colorHexKey, *entry.colorHex);
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

QStringList projectAliases(const QList<ProjectCatalogEntry> &entries)
{
    QStringList aliases;
    for (const auto &entry : entries)
        aliases.append(entry.alias);
    return aliases;
}

ProjectCatalog::ProjectCatalog(QString storeURL)
    : m_storeURL(std::move(storeURL))
{
}

Result<void> ProjectCatalog::load()
{
    m_entries.clear();
    auto json = readFile(m_storeURL, maxFileBytes);
    if (!json && json.error().kind == ErrorKind::NotFound)
        return {};
    if (!json)
        return tl::unexpected(std::move(json.error()));
    auto entries = decodeProjectCatalog(*json);
    if (!entries)
        return tl::unexpected(std::move(entries.error()));
    m_entries = *std::move(entries);
    return {};
}

std::optional<ProjectCatalogEntry> ProjectCatalog::entry(const QString &alias) const
{
    for (const ProjectCatalogEntry &candidate : m_entries) {
        if (candidate.alias == alias)
            return candidate;
    }
    return std::nullopt;
}

Result<void> ProjectCatalog::upsert(const ProjectCatalogEntry &entry)
{
    const auto known = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const ProjectCatalogEntry &e) { return e.alias == entry.alias; });
    if (known != m_entries.end())
        *known = entry;
    else
        m_entries.append(entry);
    return persist();
}

Result<void> ProjectCatalog::remove(const QString &alias)
{
    m_entries.removeIf([&](const ProjectCatalogEntry &e) { return e.alias == alias; });
    return persist();
}

Result<void> ProjectCatalog::persist() const
{
    return writeAtomically(m_storeURL, encodeProjectCatalog(m_entries), 0600); // extraEnv may hold secrets
}

} // namespace Vesk
