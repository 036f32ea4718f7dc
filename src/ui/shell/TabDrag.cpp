#include "ui/shell/TabDrag.h"

#include <utility>

namespace Vesk
{

TabDrag::TabDrag(Panes &panes, QObject *parent)
    : QObject(parent)
    , m_panes(panes)
{
    connect(&panes, &Panes::treeChanged, this, [this] {
        if (active() && !m_panes.tree().paneOf(m_session)) {
            cancel(); // closed meanwhile
        }
    });
}

void TabDrag::begin(const QString &key, const QString &title)
{
    m_session = QUuid::fromString(key);
    m_title = title;
    m_drop = {};
    Q_EMIT changed();
}

void TabDrag::moveTo(const QPointF &point, double strip)
{
    if (active()) {
        m_point = point;
        m_position = -1;
        m_drop = paneDropAt(m_panes.tree(), m_panes.layout(), m_session, point, strip);
        Q_EMIT changed();
    }
}

void TabDrag::aimBetweenTabs(int position, const QRectF &mark)
{
    if (stripPane() != 0) {
        m_position = position;
        m_drop.mark = mark;
        Q_EMIT changed();
    }
}

void TabDrag::drop()
{
    const QUuid session = m_session;
    const PaneDrop target = m_drop;
    const int position = m_position;
    cancel();
    if (session.isNull() || target.pane == 0) {
        return;
    }
    if (target.side) {
        m_panes.change(&PaneTree::split, target.pane, *target.side, session);
    } else {
        m_panes.change(&PaneTree::move, session, target.pane, position);
    }
}

void TabDrag::cancel()
{
    m_session = QUuid();
    m_drop = {};
    m_position = -1;
    Q_EMIT changed();
}

} // namespace Vesk
