// Where the rows lie: which of them exist, and how they are arranged around the one that keeps its place.
#include "ui/chat/TimelineView.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace Vesk
{

namespace
{

constexpr qreal bufferPixels = 400; // what lies ready above and below the seen part
constexpr qreal unknownHeight = 80; // until any row was measured

} // namespace

struct TimelineView::Span {
    int first = 0;
    int last = 0;
    qreal start = 0; // the top of `first`
    qreal end = 0;   // the bottom of `last`
};

void TimelineView::updatePolish()
{
    if (!isComponentComplete() || width() <= 0 || height() <= 0) {
        return;
    }
    if (count() == 0) {
        setStick(true);
        updateExtent({});
        return;
    }
    m_anchor = std::clamp(m_anchor, 0, count() - 1);
    const int origin = m_stick ? count() - 1 : m_anchor;
    if (origin < m_firstLive || origin >= liveEnd()) {
        if (origin != liveEnd() && origin != m_firstLive - 1) {
            dropAll();
            m_firstLive = origin;
        }
    }
    const qreal bottom = height() - m_margin;
    Span span {origin, origin, 0, 0};
    const auto originHeight = measure(origin);
    span.start = m_stick ? bottom - originHeight : m_anchorOffset;
    span.end = span.start + originHeight;
    grow(span);
    // What must not be seen: ground below the last row, and above the first one where the rows fill the view.
    const auto moveBy = [this, &span](qreal distance) {
        span.start += distance;
        span.end += distance;
        grow(span);
    };
    if (span.last == count() - 1 && span.end <= bottom) {
        setStick(true);
        moveBy(bottom - span.end);
    }
    if (span.first == 0 && span.start > m_margin) {
        moveBy(m_margin - span.start);
        if (span.last == count() - 1 && span.end <= bottom) {
            setStick(true);
        }
    }
    while (m_firstLive < span.first) {
        drop(m_live.front());
        m_live.pop_front();
        ++m_firstLive;
    }
    while (liveEnd() - 1 > span.last) {
        drop(m_live.back());
        m_live.pop_back();
    }
    place(span);
    if (!m_stick) {
        takeAnchor();
    }
    updateExtent(span);
}

qreal TimelineView::rowWidth() const
{
    return std::max(std::min(width() - 2 * m_margin, m_maximumRowWidth), 0.0);
}

qreal TimelineView::estimate(int position) const
{
    const auto known = m_heights[static_cast<size_t>(position)];
    if (known >= 0) {
        return known;
    }
    return m_knownCount > 0 ? m_knownHeights / m_knownCount : unknownHeight;
}

void TimelineView::grow(Span &span)
{
    while (span.first > 0 && span.start > -bufferPixels) {
        --span.first;
        span.start -= m_spacing + measure(span.first);
    }
    while (span.last < count() - 1 && span.end < height() + bufferPixels) {
        ++span.last;
        span.end += m_spacing + measure(span.last);
    }
}

// The height of a row, which is made for it if it must be. It is asked for in an order that keeps the live
// rows without gaps.
qreal TimelineView::measure(int position)
{
    if (position == m_firstLive - 1) {
        m_live.emplace_front();
        --m_firstLive;
    } else if (position == liveEnd()) {
        m_live.emplace_back();
    }
    auto &live = m_live[static_cast<size_t>(position - m_firstLive)];
    if (!live.item) {
        create(live, position);
    } else if (live.item->width() != rowWidth()) {
        live.item->setWidth(rowWidth());
    }
    auto &known = m_heights[static_cast<size_t>(position)];
    // A row that lays its parts out later has no height yet; what is thought of it must not fill the view
    // with rows.
    const auto height = live.item && live.item->height() > 0 ? std::ceil(live.item->height()) : -1;
    if (height >= 0 && height != known) {
        m_knownHeights += height - std::max(known, 0.0);
        m_knownCount += known < 0 ? 1 : 0;
        known = height;
    }
    return height >= 0 ? height : estimate(position);
}

void TimelineView::create(LiveRow &live, int position)
{
    live.row = m_model->borrow(position);
    auto *component = live.row ? m_delegates.value(static_cast<int>(live.row->kind())) : nullptr;
    if (!component) {
        return;
    }
    auto *context = component->creationContext();
    auto *object = component->beginCreate(context ? context : component->engine()->rootContext());
    live.item = qobject_cast<QQuickItem *>(object);
    if (!live.item) {
        qWarning("A timeline delegate cannot be made: %s", qPrintable(component->errorString()));
        delete object;
        return;
    }
    QQmlEngine::setObjectOwnership(live.item, QQmlEngine::CppOwnership);
    live.item->setParent(this);
    live.item->setParentItem(this);
    component->setInitialProperties(live.item,
                                    {{QStringLiteral("row"), QVariant::fromValue(live.row.data())},
                                     {QStringLiteral("width"), rowWidth()}});
    component->completeCreate();
    connect(live.item, &QQuickItem::heightChanged, this, &QQuickItem::polish);
}

void TimelineView::drop(LiveRow &live)
{
    if (live.item) {
        if (live.item->isAncestorOf(window() ? window()->activeFocusItem() : nullptr)) {
            forceActiveFocus();
        }
        live.item->setVisible(false);
        live.item->deleteLater();
        live.item = nullptr;
    }
    if (m_model && live.row) {
        m_model->release(live.row);
    }
    live.row = nullptr;
}

void TimelineView::dropAll()
{
    for (auto &live : m_live) {
        drop(live);
    }
    m_live.clear();
    m_firstLive = 0;
}

void TimelineView::place(const Span &span)
{
    auto y = span.start;
    for (int i = span.first; i <= span.last; ++i) {
        if (auto *item = itemAt(i)) {
            item->setPosition({m_margin, std::round(y)});
        }
        y += measure(i) + m_spacing;
    }
}

// The row to keep in place from now on: the first that is read as a whole, unless one that begins above the
// view fills the upper part of it.
void TimelineView::takeAnchor()
{
    int chosen = -1;
    for (int i = m_firstLive; i < liveEnd(); ++i) {
        const auto *item = itemAt(i);
        if (!item || item->y() + item->height() <= 0) {
            continue;
        }
        if (chosen < 0 || item->y() <= height() / 3) {
            chosen = i;
        }
        if (item->y() >= 0) {
            break;
        }
    }
    if (const auto *item = itemAt(chosen < 0 ? liveEnd() - 1 : chosen)) {
        m_anchor = chosen < 0 ? liveEnd() - 1 : chosen;
        m_anchorOffset = item->y();
    }
}

void TimelineView::updateExtent(const Span &span)
{
    qreal above = m_margin;
    qreal whole = 2 * m_margin - (count() > 0 ? m_spacing : 0);
    for (int i = 0; i < count(); ++i) {
        const auto rowHeight = estimate(i) + m_spacing;
        above += i < span.first ? rowHeight : 0;
        whole += rowHeight;
    }
    const auto size = whole > 0 ? std::min(height() / whole, 1.0) : 1.0;
    const auto start = m_stick ? 1.0 - size : std::clamp((above - span.start) / whole, 0.0, 1.0 - size);
    if (size != m_visibleSize || start != m_visibleStart) {
        m_visibleSize = size;
        m_visibleStart = start;
        Q_EMIT extentChanged();
    }
}

} // namespace Vesk
