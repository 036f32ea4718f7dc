// Where a picture stands in its view: zoom and pan, and the rules that keep it in sight.
#pragma once

#include "issues/IssueStatus.h"

#include <QPointF>
#include <QSizeF>
#include <QString>

#include <optional>

namespace Vesk
{

/** A point p of the content stands at p × zoom + pan. Sizes of content are unscaled. */
struct IssueGraphViewport {
    static constexpr double leastZoom = 0.2;
    static constexpr double mostZoom = 2;
    static constexpr double automaticFloor = 0.55; ///< the least zoom at which a new picture is shown

    double zoom = 1;
    QPointF pan {};

    bool operator==(const IssueGraphViewport &) const = default;

    /** All of the content in the middle, but no smaller than `floor` and never magnified. */
    [[nodiscard]] static IssueGraphViewport fitted(QSizeF content, QSizeF viewport, double floor = leastZoom);

    /** With the pan limited so that some of the content stays in view. */
    [[nodiscard]] IssueGraphViewport clamped(QSizeF content, QSizeF viewport) const;

    /** With another zoom, within the limits; the content under `anchor`, a point of the view, stays there. */
    [[nodiscard]] IssueGraphViewport zoomed(double newZoom, QPointF anchor, QSizeF content,
                                            QSizeF viewport) const;
    /** One step, about the middle of the view. */
    [[nodiscard]] IssueGraphViewport zoomedIn(QSizeF content, QSizeF viewport) const;
    [[nodiscard]] IssueGraphViewport zoomedOut(QSizeF content, QSizeF viewport) const;
    [[nodiscard]] bool canZoomIn() const;
    [[nodiscard]] bool canZoomOut() const;

    [[nodiscard]] int percent() const;
};

/** Fits a picture once: an unchanged one keeps the person's zoom and pan. */
class IssueGraphAutoFit
{
public:
    /** The identity of the graph's picture; an empty milestone is all of them. */
    [[nodiscard]] static QString graphIdentity(const QString &milestone, QSizeF content);
    /** The identity of the kanban's picture. */
    [[nodiscard]] static QString boardIdentity(const std::optional<IssueStatus> &filter, QSizeF content);

    /** Where to show a picture that was not fitted before; absent for the one fitted last, and while one of
       the sizes is empty. */
    [[nodiscard]] std::optional<IssueGraphViewport> fit(const QString &identity, QSizeF content,
                                                        QSizeF viewport);

private:
    QString m_fitted;
};

/** A drag of the picture. A press that went this far is no click on the card where it ends. */
class IssueGraphDrag
{
public:
    static constexpr double threshold = 4;

    /** The view after a drag by `translation`, seen from where it began; absent before the threshold. */
    [[nodiscard]] std::optional<IssueGraphViewport> move(const IssueGraphViewport &now, QPointF translation,
                                                         QSizeF content, QSizeF viewport);
    /** The drag is over; its distance still counts until `forget`, which is for the next turn of the event
     * loop. */
    void end() { m_start.reset(); }
    void forget() { m_distance = 0; }

    [[nodiscard]] bool selects() const { return m_distance < threshold; }

private:
    std::optional<QPointF> m_start; // the pan
    double m_distance = 0;          // the furthest
};

} // namespace Vesk
