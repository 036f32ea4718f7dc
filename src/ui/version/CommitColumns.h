// Where the columns of the commit table lie.
#pragma once

#include "ui/version/VersionMeasures.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Widths in pixels; 0 for a column that there is no room for. */
struct ColumnWidths {
    qreal graph = 0;
    qreal subject = 0;
    qreal author = 0;
    qreal hash = 0;
    qreal date = 0;

    bool operator==(const ColumnWidths &) const = default;
};

/**
 * What each column gets of `room` when `wanted` is asked for. The subject gets the rest, and goes before
 * number, author and date, which give way in this order. Without a wanted width the graph follows from its
 * lanes. `scale` is that of the text.
 */
[[nodiscard]] ColumnWidths columnWidths(const ColumnWidths &wanted, int lanes, qreal room, qreal scale);

/** The same for a table that is shown, and where each column begins. */
class CommitColumns : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::VersionMeasures *measures MEMBER m_measures WRITE setMeasures NOTIFY changed REQUIRED)
    Q_PROPERTY(int lanes MEMBER m_lanes WRITE setLanes NOTIFY changed REQUIRED)
    Q_PROPERTY(qreal room MEMBER m_room WRITE setRoom NOTIFY changed REQUIRED)
    Q_PROPERTY(qreal graph READ graph NOTIFY changed)
    Q_PROPERTY(qreal subject READ subject NOTIFY changed)
    Q_PROPERTY(qreal author READ author NOTIFY changed)
    Q_PROPERTY(qreal hash READ hash NOTIFY changed)
    Q_PROPERTY(qreal date READ date NOTIFY changed)
    Q_PROPERTY(qreal subjectX READ subjectX NOTIFY changed)
    Q_PROPERTY(qreal authorX READ authorX NOTIFY changed)
    Q_PROPERTY(qreal hashX READ hashX NOTIFY changed)
    Q_PROPERTY(qreal dateX READ dateX NOTIFY changed)
    /** What the subject can still give to others. */
    Q_PROPERTY(qreal spare READ spare NOTIFY changed)
    /** How many names of a commit stand before its subject. */
    Q_PROPERTY(int mostNames READ mostNames NOTIFY changed)

public:
    explicit CommitColumns(QObject *parent = nullptr);

    void setMeasures(VersionMeasures *measures);
    void setLanes(int lanes);
    void setRoom(qreal room);

    [[nodiscard]] qreal graph() const { return m_widths.graph; }
    [[nodiscard]] qreal subject() const { return m_widths.subject; }
    [[nodiscard]] qreal author() const { return m_widths.author; }
    [[nodiscard]] qreal hash() const { return m_widths.hash; }
    [[nodiscard]] qreal date() const { return m_widths.date; }
    [[nodiscard]] qreal subjectX() const;
    [[nodiscard]] qreal authorX() const;
    [[nodiscard]] qreal hashX() const { return authorX() + author(); }
    [[nodiscard]] qreal dateX() const { return hashX() + hash(); }
    [[nodiscard]] qreal spare() const;
    [[nodiscard]] int mostNames() const;

Q_SIGNALS:
    void changed();

private:
    void update();

    VersionMeasures *m_measures = nullptr;
    int m_lanes = 1;
    qreal m_room = 0;
    ColumnWidths m_widths;
};

} // namespace Vesk
