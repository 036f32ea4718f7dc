// The scrolling view of a timeline: only what can be seen exists, and what is being read stays where it is.
#pragma once

#include "ui/chat/TimelineModel.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlListProperty>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <deque>
#include <vector>

namespace Vesk
{

/**
 * Lays rows of unknown and changing heights out around an anchor. At the end of the timeline the anchor is
 * the bottom: new rows and growing text push what is above them up. Anywhere else it is the first row that
 * can be seen: whatever is inserted, removed, folded or measured above or below, that row keeps its place. A
 * list view that keeps a content position instead has to correct it after every change, which shows as jumps.
 *
 * Heights of rows that were never on the screen are estimates; only the scroll bar knows of them.
 */
class TimelineView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::TimelineModel *model READ model WRITE setModel NOTIFY modelChanged)
    /** One component for each TimelineRow::Kind, in its order; each has a required property `row`. */
    Q_PROPERTY(QQmlListProperty<QQmlComponent> delegates READ delegates CONSTANT)
    Q_PROPERTY(qreal spacing MEMBER m_spacing NOTIFY metricsChanged)
    Q_PROPERTY(qreal margin MEMBER m_margin NOTIFY metricsChanged)
    Q_PROPERTY(qreal maximumRowWidth MEMBER m_maximumRowWidth NOTIFY metricsChanged)
    Q_PROPERTY(bool stickToBottom READ stickToBottom NOTIFY stickToBottomChanged)
    Q_PROPERTY(bool hasNewBelow READ hasNewBelow NOTIFY hasNewBelowChanged)
    Q_PROPERTY(QString jumpText READ jumpText NOTIFY hasNewBelowChanged)
    /** The focus came by the keyboard. */
    Q_PROPERTY(bool keyboardFocus READ keyboardFocus NOTIFY keyboardFocusChanged)
    Q_PROPERTY(qreal visibleStart READ visibleStart NOTIFY extentChanged)
    Q_PROPERTY(qreal visibleSize READ visibleSize NOTIFY extentChanged)

public:
    explicit TimelineView(QQuickItem *parent = nullptr);
    ~TimelineView() override;

    [[nodiscard]] TimelineModel *model() const { return m_model; }
    void setModel(TimelineModel *model);
    [[nodiscard]] QQmlListProperty<QQmlComponent> delegates();

    [[nodiscard]] bool stickToBottom() const { return m_stick; }
    [[nodiscard]] bool hasNewBelow() const { return m_newBelow; }
    [[nodiscard]] QString jumpText() const;
    [[nodiscard]] bool keyboardFocus() const { return m_keyboardFocus; }
    /** The seen part of the whole, for a scroll bar: 0 to 1. */
    [[nodiscard]] qreal visibleStart() const { return m_visibleStart; }
    [[nodiscard]] qreal visibleSize() const { return m_visibleSize; }

    /** Scrolls towards the end by this many pixels, or back when negative. */
    Q_INVOKABLE void scrollBy(qreal pixels);
    Q_INVOKABLE void scrollByPages(qreal pages);
    Q_INVOKABLE void scrollToEnd();
    Q_INVOKABLE void scrollToStart();
    /** Brings the place `start` of the whole (0 to 1) to the top. */
    Q_INVOKABLE void scrollToFraction(qreal start);
    /** Keeps the row that holds `item` in its place while it changes its height, also at the end. */
    Q_INVOKABLE void holdInPlace(QQuickItem *item);

    /** The live item of a row, null when it is not near the seen part. */
    [[nodiscard]] QQuickItem *itemAt(int position) const;
    [[nodiscard]] int liveCount() const { return static_cast<int>(m_live.size()); }

Q_SIGNALS:
    void modelChanged();
    void metricsChanged();
    void stickToBottomChanged();
    void hasNewBelowChanged();
    void extentChanged();
    void keyboardFocusChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void updatePolish() override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    struct LiveRow {
        QPointer<TimelineRow> row;
        QQuickItem *item = nullptr;
    };
    struct Span; // a run of rows and where it lies in the view

    [[nodiscard]] int count() const { return static_cast<int>(m_heights.size()); }
    [[nodiscard]] int liveEnd() const { return m_firstLive + static_cast<int>(m_live.size()); }
    [[nodiscard]] qreal rowWidth() const;
    [[nodiscard]] qreal estimate(int position) const;
    void grow(Span &span);
    qreal measure(int position);
    void create(LiveRow &live, int position);
    void drop(LiveRow &live);
    void dropAll();
    void place(const Span &span);
    void takeAnchor();
    void updateExtent(const Span &span);
    void setStick(bool stick);
    void setNewBelow(bool newBelow);
    void setKeyboardFocus(bool focus);
    void resetRows();
    void insertRows(int first, int last);
    void removeRows(int first, int last);
    void showFocusItem();

    QPointer<TimelineModel> m_model;
    QList<QQmlComponent *> m_delegates;
    std::deque<LiveRow> m_live; // the rows from m_firstLive on
    int m_firstLive = 0;
    std::vector<qreal> m_heights; // last known ones, negative when never measured
    qreal m_knownHeights = 0;     // the sum of the known ones, and their number
    int m_knownCount = 0;

    bool m_stick = true;
    bool m_newBelow = false;
    bool m_keyboardFocus = false;
    int m_anchor = 0;         // the row that stays in its place when not stuck to the bottom,
    qreal m_anchorOffset = 0; // and the distance of its top from the top of the view

    qreal m_spacing = 12;
    qreal m_margin = 16;
    qreal m_maximumRowWidth = 760;
    qreal m_visibleStart = 0;
    qreal m_visibleSize = 1;
    QMetaObject::Connection m_focusConnection;
};

} // namespace Vesk
