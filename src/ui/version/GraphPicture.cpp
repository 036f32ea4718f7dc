#include "ui/version/GraphPicture.h"

#include <algorithm>

namespace Vesk
{

namespace
{

using GitStatusReader::GraphRow;

constexpr qsizetype farthestHead = 200;

GraphPicture pictureOf(const GraphRow &row, QStringList &waiting)
{
    GraphPicture picture {.node = row.commit.parents.size() > 1 ? GraphPicture::Node::Merge
                                                                : GraphPicture::Node::Commit,
                          .lane = row.lane};
    for (int lane = 0; lane < waiting.size(); ++lane) {
        if (waiting[lane].isEmpty())
            continue;
        const bool ends = waiting[lane] == row.commit.hash;
        picture.lines.append({.kind = ends ? GraphLine::Kind::In : GraphLine::Kind::Pass, .lane = lane});
        if (ends)
            waiting[lane].clear();
    }
    const qsizetype carried = std::min(row.parentLanes.size(), row.commit.parents.size());
    for (qsizetype i = 0; i < carried; ++i) {
        const int lane = row.parentLanes[i];
        while (waiting.size() <= lane)
            waiting.append(QString());
        waiting[lane] = row.commit.parents[i];
        picture.lines.append({.kind = GraphLine::Kind::Out, .lane = lane});
    }
    while (!waiting.isEmpty() && waiting.last().isEmpty())
        waiting.removeLast();
    return picture;
}

bool isTaken(const GraphPicture &picture, int lane)
{
    return picture.lane == lane
        || std::ranges::any_of(picture.lines, [lane](const GraphLine &line) { return line.lane == lane; });
}

/** Leads a dashed line from the work tree down to the row of HEAD. */
void connectWorkTree(QList<GraphPicture> &pictures, qsizetype headRow)
{
    const int lane = pictures[headRow].lane;
    pictures[0].lane = lane;
    for (qsizetype i = 1; i < headRow; ++i) {
        if (isTaken(pictures[i], lane))
            return;
    }
    const bool hasChild = std::ranges::any_of(pictures[headRow].lines, [lane](const GraphLine &line) {
        return line.lane == lane && line.kind == GraphLine::Kind::In;
    });
    if (hasChild)
        return;
    pictures[0].lines.append({.kind = GraphLine::Kind::Out, .lane = lane, .isDashed = true});
    for (qsizetype i = 1; i < headRow; ++i)
        pictures[i].lines.append({.kind = GraphLine::Kind::Pass, .lane = lane, .isDashed = true});
    pictures[headRow].lines.append({.kind = GraphLine::Kind::In, .lane = lane, .isDashed = true});
}

} // namespace

QList<GraphPicture> graphPictures(const QList<GraphRow> &rows, const QString &head)
{
    QList<GraphPicture> pictures;
    pictures.reserve(rows.size() + 1);
    pictures.append({.node = GraphPicture::Node::WorkTree});
    QStringList waiting;
    qsizetype headRow = -1;
    for (const GraphRow &row : rows) {
        if (headRow < 0 && row.commit.hash == head)
            headRow = pictures.size();
        pictures.append(pictureOf(row, waiting));
    }
    if (headRow >= 0 && headRow <= farthestHead)
        connectWorkTree(pictures, headRow);
    return pictures;
}

int laneCount(const QList<GraphRow> &rows)
{
    int count = 1;
    for (const GraphRow &row : rows)
        count = std::max(count, row.laneCount);
    return count;
}

} // namespace Vesk
