// The user's list of project folders, each known by a short alias.
#pragma once

#include "base/Result.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace Vesk
{

/** One project. The alias is its key everywhere. */
struct ProjectCatalogEntry {
    QString alias;
    QString path;                         ///< absolute
    QMap<QString, QString> extraEnv = {}; ///< may be empty
    std::optional<QString> colorHex = {}; ///< colour in the sidebar, in hexadecimal text

    [[nodiscard]] bool operator==(const ProjectCatalogEntry &) const = default;
};

/** Reads a catalog file's bytes. Strict: one bad entry fails the whole, and the error names entry and key. */
[[nodiscard]] Result<QList<ProjectCatalogEntry>> decodeProjectCatalog(const QByteArray &json);
/** Pretty-printed, keys sorted, an absent colour left out. */
[[nodiscard]] QByteArray encodeProjectCatalog(const QList<ProjectCatalogEntry> &entries);

/** The names of the projects, in their order. */
[[nodiscard]] QStringList projectAliases(const QList<ProjectCatalogEntry> &entries);

/** The catalog in memory and its file, which is rewritten whole at each change. Main thread only. */
class ProjectCatalog
{
public:
    explicit ProjectCatalog(QString storeURL);

    /** Reads the file into entries(). No file is an empty catalog; after an error entries() is empty. */
    Result<void> load();

    /** The first entry with this alias. */
    [[nodiscard]] std::optional<ProjectCatalogEntry> entry(const QString &alias) const;

    /** Replaces the entry of this alias in its place, or appends; then writes. */
    Result<void> upsert(const ProjectCatalogEntry &entry);
    /** Takes out every entry of this alias; then writes, also when there was none. */
    Result<void> remove(const QString &alias);

    /** In file order. After a failed write these are ahead of the file. */
    [[nodiscard]] const QList<ProjectCatalogEntry> &entries() const { return m_entries; }
    [[nodiscard]] const QString &storeURL() const { return m_storeURL; }

private:
    [[nodiscard]] Result<void> persist() const;

    QList<ProjectCatalogEntry> m_entries;
    QString m_storeURL;
};

} // namespace Vesk
