// Which entries of an index are submodules.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

#include <optional>

namespace Vesk::GitIndex
{

/**
 * The paths of the submodules in an index file of version 2, 3 or 4 (gitformat-index), whose hashes have
 * `hashBytes` bytes. Absent for what is none, and for one that is split over two files.
 */
[[nodiscard]] std::optional<QByteArrayList> submodules(QByteArrayView bytes, qsizetype hashBytes);

/** The same from the output of `git ls-files -s -z`. */
[[nodiscard]] QByteArrayList submodulesOfListing(QByteArrayView bytes);

} // namespace Vesk::GitIndex
