// The files of a project that an "@" can name.
#pragma once

#include <QString>
#include <QStringList>

#include <stop_token>

namespace Vesk::ComposerAtFileSearch
{

/** So many paths are collected and no more: a huge tree can't hold up typing. */
inline constexpr qsizetype maxPaths = 6000;

/**
 * The best `limit` files below `cwd`, as paths relative to it. Blocks: not for the main thread. A request to
 * stop ends it with nothing.
 *
 * Hidden entries and folders of builds and dependencies are left out, links are not followed, folders that
 * cannot be read are empty. Names that no message could hold (bad UTF-8, control characters) are left out.
 */
[[nodiscard]] QStringList search(const QString &query, const QString &cwd, qsizetype limit,
                                 const std::stop_token &stop = {});

/** The best `limit` of these paths in any case: names that begin with the query, names with it, paths with
    it; among equals the shorter first. In plain order for an empty query. */
[[nodiscard]] QStringList rank(const QString &query, const QStringList &paths, qsizetype limit);

} // namespace Vesk::ComposerAtFileSearch
