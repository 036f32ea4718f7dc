// The lines that pass through one row of the commit graph.
#pragma once

#include "git/GitStatusReader.h"

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** A line within the height of a row; it has its lane's place and colour. */
struct GraphLine {
    enum class Kind {
        Pass, ///< from top to bottom
        In,   ///< from the top to the row's node
        Out   ///< from the row's node to the bottom
    };

    Kind kind = Kind::Pass;
    int lane = 0;
    bool isDashed = false; ///< leads to what is not committed yet

    bool operator==(const GraphLine &) const = default;
};

/** All that is drawn in a row. */
struct GraphPicture {
    Q_GADGET
    Q_PROPERTY(int lane MEMBER lane)

public:
    enum class Node { None, Commit, Merge, WorkTree };

    Node node = Node::None;
    int lane = 0; ///< of the node
    QList<GraphLine> lines {};

    bool operator==(const GraphPicture &) const = default;
};

/** One for the work tree, which stands above, and one for each row. `head` is the hash that the work tree
    continues; where it is far below, or its lane is taken, nothing leads there. */
[[nodiscard]] QList<GraphPicture> graphPictures(const QList<GitStatusReader::GraphRow> &rows,
                                                const QString &head);

/** How many lanes have to be drawn for all of the rows. */
[[nodiscard]] int laneCount(const QList<GitStatusReader::GraphRow> &rows);

} // namespace Vesk
