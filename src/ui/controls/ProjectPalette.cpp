#include "ui/controls/ProjectPalette.h"

#include <algorithm>
#include <array>

namespace Vesk::ProjectPalette
{

using namespace Qt::StringLiterals;

namespace
{

const std::array<QString, laneCount> &lanes()
{
    static const std::array<QString, laneCount> hexes {u"#61A3E6"_s, u"#E0AF3B"_s, u"#C93F76"_s,
                                                       u"#59D6FA"_s, u"#C48139"_s, u"#BEEDBE"_s,
                                                       u"#6A6BD6"_s, u"#F7E04F"_s};
    return hexes;
}

} // namespace

QString hexForLane(int lane)
{
    return lanes().at(static_cast<std::size_t>(((lane % laneCount) + laneCount) % laneCount));
}

int laneForHex(const QString &hex)
{
    const auto it = std::ranges::find_if(
        lanes(), [&hex](const QString &lane) { return lane.compare(hex, Qt::CaseInsensitive) == 0; });
    return it == lanes().end() ? -1 : static_cast<int>(it - lanes().begin());
}

int laneOf(const ProjectCatalogEntry &entry, qsizetype position)
{
    if (!entry.colorHex || !QColor::isValidColor(*entry.colorHex)) {
        return static_cast<int>(position % laneCount);
    }
    return laneForHex(*entry.colorHex);
}

ProjectColor colorOf(const QList<ProjectCatalogEntry> &entries, const QString &alias)
{
    const auto entry = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
    if (entry == entries.end())
        return {};
    const int lane = laneOf(*entry, entry - entries.begin());
    return {lane, lane < 0 ? QColor(*entry->colorHex) : QColor()};
}

int nextLane(const QList<ProjectCatalogEntry> &entries)
{
    std::array<bool, laneCount> taken {};
    for (qsizetype position = 0; position < entries.size(); ++position) {
        const int lane = laneOf(entries[position], position);
        if (lane >= 0) {
            taken.at(static_cast<std::size_t>(lane)) = true;
        }
    }
    const auto free = std::ranges::find(taken, false);
    return free == taken.end() ? static_cast<int>(entries.size() % laneCount)
                               : static_cast<int>(free - taken.begin());
}

QString shortenedPath(const QString &path, const QString &home)
{
    if (home.size() > 1 && path == home) {
        return u"~"_s;
    }
    return home.size() > 1 && path.startsWith(home + u'/') ? u"~"_s + path.mid(home.size()) : path;
}

} // namespace Vesk::ProjectPalette
