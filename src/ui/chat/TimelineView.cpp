#include "ui/chat/TimelineView.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStyleHints>

#include <algorithm>
#include <numeric>

namespace Vesk
{

namespace
{

constexpr qreal linePixels = 22; // a line of reading text

} // namespace

TimelineView::TimelineView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setClip(true);
    setActiveFocusOnTab(true);
    connect(this, &TimelineView::metricsChanged, this, &QQuickItem::polish);
}

TimelineView::~TimelineView() = default;

void TimelineView::setModel(TimelineModel *model)
{
    if (m_model == model) {
        return;
    }
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
        dropAll();
    }
    m_model = model;
    if (m_model) {
        connect(m_model, &QAbstractItemModel::modelReset, this, &TimelineView::resetRows);
        connect(m_model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) { insertRows(first, last); });
        connect(m_model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { removeRows(first, last); });
        connect(m_model, &TimelineModel::arrived, this, [this] { setNewBelow(!m_stick); });
    }
    resetRows();
    Q_EMIT modelChanged();
}

QQmlListProperty<QQmlComponent> TimelineView::delegates()
{
    return {this, &m_delegates};
}

QString TimelineView::jumpText() const
{
    return m_newBelow ? QStringLiteral("새 응답으로 스크롤") : QStringLiteral("맨 아래로 스크롤");
}

void TimelineView::scrollBy(qreal pixels)
{
    if (count() == 0 || (m_stick && pixels >= 0)) {
        return;
    }
    if (m_stick) {
        takeAnchor();
        setStick(false);
    }
    m_anchorOffset -= pixels;
    polish();
}

void TimelineView::scrollByPages(qreal pages)
{
    scrollBy(pages * std::max(height() - 2 * linePixels, linePixels));
}

void TimelineView::scrollToEnd()
{
    setStick(true);
    polish();
}

void TimelineView::scrollToStart()
{
    setStick(false);
    m_anchor = 0;
    m_anchorOffset = m_margin;
    polish();
}

void TimelineView::scrollToFraction(qreal start)
{
    if (count() == 0) {
        return;
    }
    const auto whole =
        std::accumulate(m_heights.begin(), m_heights.end(), 2 * m_margin,
                        [this, i = 0](qreal sum, qreal) mutable { return sum + estimate(i++); })
        + m_spacing * (count() - 1);
    auto rest = std::clamp(start, 0.0, 1.0) * whole - m_margin;
    int position = 0;
    while (position < count() - 1 && rest > estimate(position) + m_spacing) {
        rest -= estimate(position) + m_spacing;
        ++position;
    }
    setStick(false);
    m_anchor = position;
    m_anchorOffset = -rest;
    polish();
}

void TimelineView::holdInPlace(QQuickItem *item)
{
    for (int i = m_firstLive; i < liveEnd(); ++i) {
        auto *candidate = itemAt(i);
        if (candidate && (candidate == item || candidate->isAncestorOf(item))) {
            m_anchor = i;
            m_anchorOffset = candidate->y();
            setStick(false);
            polish();
            return;
        }
    }
}

QQuickItem *TimelineView::itemAt(int position) const
{
    return position >= m_firstLive && position < liveEnd()
        ? m_live[static_cast<size_t>(position - m_firstLive)].item
        : nullptr;
}

void TimelineView::componentComplete()
{
    QQuickItem::componentComplete();
    polish();
}

void TimelineView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        polish();
    }
}

void TimelineView::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange) {
        disconnect(m_focusConnection);
        if (value.window) {
            m_focusConnection = connect(value.window, &QQuickWindow::activeFocusItemChanged, this,
                                        &TimelineView::showFocusItem);
        }
    }
}

void TimelineView::wheelEvent(QWheelEvent *event)
{
    const auto pixels = event->pixelDelta().isNull() ? static_cast<qreal>(event->angleDelta().y()) / 120.0
            * QGuiApplication::styleHints()->wheelScrollLines() * linePixels
                                                     : static_cast<qreal>(event->pixelDelta().y());
    if (pixels != 0) {
        scrollBy(-pixels);
    }
    event->setAccepted(pixels != 0);
}

void TimelineView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return scrollBy(-2 * linePixels);
    case Qt::Key_Down:
        return scrollBy(2 * linePixels);
    case Qt::Key_PageUp:
        return scrollByPages(-1);
    case Qt::Key_PageDown:
        return scrollByPages(1);
    case Qt::Key_Home:
        return scrollToStart();
    case Qt::Key_End:
        return scrollToEnd();
    default:
        QQuickItem::keyPressEvent(event);
    }
}

void TimelineView::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    setKeyboardFocus(event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason);
}

void TimelineView::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    setKeyboardFocus(false);
}

void TimelineView::setStick(bool stick)
{
    if (stick) {
        setNewBelow(false);
    }
    if (m_stick != stick) {
        m_stick = stick;
        Q_EMIT stickToBottomChanged();
    }
}

void TimelineView::setNewBelow(bool newBelow)
{
    if (m_newBelow != newBelow) {
        m_newBelow = newBelow;
        Q_EMIT hasNewBelowChanged();
    }
}

void TimelineView::setKeyboardFocus(bool focus)
{
    if (m_keyboardFocus != focus) {
        m_keyboardFocus = focus;
        Q_EMIT keyboardFocusChanged();
    }
}

void TimelineView::resetRows()
{
    dropAll();
    m_heights.assign(m_model ? static_cast<size_t>(m_model->rowCount()) : 0, -1);
    m_knownHeights = 0;
    m_knownCount = 0;
    m_anchor = 0;
    m_anchorOffset = 0;
    setStick(true);
    polish();
}

void TimelineView::insertRows(int first, int last)
{
    const int added = last - first + 1;
    m_heights.insert(m_heights.begin() + first, static_cast<size_t>(added), -1);
    if (first <= m_firstLive) {
        m_firstLive += added;
    } else if (first < liveEnd()) {
        m_live.insert(m_live.begin() + (first - m_firstLive), static_cast<size_t>(added), LiveRow {});
    }
    if (first <= m_anchor) {
        m_anchor += added;
    }
    polish();
}

void TimelineView::removeRows(int first, int last)
{
    for (int i = last; i >= first; --i) {
        const auto known = m_heights[static_cast<size_t>(i)];
        m_knownHeights -= std::max(known, 0.0);
        m_knownCount -= known >= 0 ? 1 : 0;
        if (i < m_firstLive) {
            --m_firstLive;
        } else if (i < liveEnd()) {
            const auto live = m_live.begin() + (i - m_firstLive);
            drop(*live);
            m_live.erase(live);
        }
        if (i < m_anchor) {
            --m_anchor;
        }
    }
    m_heights.erase(m_heights.begin() + first, m_heights.begin() + last + 1);
    polish();
}

// A row's button that takes the focus by Tab may lie in the ready part outside the view.
void TimelineView::showFocusItem()
{
    const auto *item = window() ? window()->activeFocusItem() : nullptr;
    if (!item || !isAncestorOf(item)) {
        return;
    }
    const auto top = item->mapToItem(this, QPointF()).y();
    const auto bottom = top + item->height();
    if (top < 0) {
        scrollBy(top - m_spacing);
    } else if (bottom > height() && item->height() < height()) {
        scrollBy(bottom - height() + m_spacing);
    }
}

} // namespace Vesk
