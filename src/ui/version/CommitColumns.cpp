#include "ui/version/CommitColumns.h"

#include "ui/controls/Theme.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

namespace
{

constexpr qreal laneWidth = 16;
constexpr qreal leastGraph = 72;
constexpr qreal leastSubject = 160;
constexpr qreal columnGap = 12;
constexpr qreal endInset = 16;
constexpr qreal roomForManyNames = 480; // of the subject

} // namespace

ColumnWidths columnWidths(const ColumnWidths &wanted, int lanes, qreal room, qreal scale)
{
    const auto scaled = [scale](qreal width) { return std::round(width * scale); };
    ColumnWidths widths = wanted;
    const qreal least = scaled(leastGraph);
    widths.graph = wanted.graph > 0
        ? std::min(wanted.graph, room / 2)
        : std::clamp(scaled(lanes * laneWidth + 20), least, std::max(least, std::floor(room / 4)));
    const qreal rest = room - widths.graph - 2 * columnGap - endInset;
    for (qreal ColumnWidths::*column : {&ColumnWidths::hash, &ColumnWidths::author, &ColumnWidths::date}) {
        if (rest - widths.author - widths.hash - widths.date < scaled(leastSubject))
            widths.*column = 0;
    }
    widths.subject = std::max<qreal>(0, rest - widths.author - widths.hash - widths.date);
    return widths;
}

CommitColumns::CommitColumns(QObject *parent)
    : QObject(parent)
{
    connect(&Theme::shared(), &Theme::scaleChanged, this, &CommitColumns::update);
}

void CommitColumns::setMeasures(VersionMeasures *measures)
{
    if (m_measures)
        m_measures->disconnect(this);
    m_measures = measures;
    if (m_measures)
        connect(m_measures, &VersionMeasures::changed, this, &CommitColumns::update);
    update();
}

void CommitColumns::setLanes(int lanes)
{
    m_lanes = lanes;
    update();
}

void CommitColumns::setRoom(qreal room)
{
    m_room = room;
    update();
}

void CommitColumns::update()
{
    if (!m_measures)
        return;
    const qreal scale = Theme::shared().scale();
    const ColumnWidths wanted {.graph = m_measures->graph(),
                               .author = std::round(m_measures->author() * scale),
                               .hash = std::round(m_measures->hash() * scale),
                               .date = std::round(m_measures->date() * scale)};
    m_widths = columnWidths(wanted, m_lanes, m_room, scale);
    Q_EMIT changed();
}

qreal CommitColumns::subjectX() const
{
    return graph() + columnGap;
}

qreal CommitColumns::authorX() const
{
    return subjectX() + subject() + columnGap;
}

qreal CommitColumns::spare() const
{
    return std::max<qreal>(0, subject() - std::round(leastSubject * Theme::shared().scale()));
}

int CommitColumns::mostNames() const
{
    return subject() < roomForManyNames * Theme::shared().scale() ? 2 : 4;
}

} // namespace Vesk
