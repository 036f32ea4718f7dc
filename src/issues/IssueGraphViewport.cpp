#include "issues/IssueGraphViewport.h"

#include <algorithm>
#include <cmath>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double zoomInStep = 1.2;
constexpr double zoomOutStep = 5.0 / 6.0;
constexpr double smallZoom = 0.201; // counts as the least
constexpr double largeZoom = 1.999; // counts as the most
constexpr double keptInSight = 120;

double limitedPan(double pan, double content, double view, double kept)
{
    const double lowest = kept - content;
    const double highest = view - kept;
    return lowest > highest ? pan : std::clamp(pan, lowest, highest);
}

bool isLargerThan(QSizeF size, double length)
{
    return size.width() > length && size.height() > length;
}

QString withSize(const QString &name, QSizeF size)
{
    return name + u':' + QString::number(static_cast<qint64>(size.width())) + u'x'
        + QString::number(static_cast<qint64>(size.height()));
}

} // namespace

IssueGraphViewport IssueGraphViewport::fitted(QSizeF content, QSizeF viewport, double floor)
{
    if (!isLargerThan(content, 1) || !isLargerThan(viewport, 1)) {
        return {};
    }
    const double whole = std::min(viewport.width() / content.width(), viewport.height() / content.height());
    const double zoom = std::min(std::max(std::clamp(whole, leastZoom, mostZoom), floor), 1.0);
    return {.zoom = zoom,
            .pan = {std::max(0.0, (viewport.width() - content.width() * zoom) / 2),
                    std::max(0.0, (viewport.height() - content.height() * zoom) / 2)}};
}

IssueGraphViewport IssueGraphViewport::clamped(QSizeF content, QSizeF viewport) const
{
    if (!isLargerThan(content, 0) || !isLargerThan(viewport, 0)) {
        return *this;
    }
    const QSizeF scaled = content * zoom;
    const double kept = std::min({keptInSight, scaled.width(), scaled.height()});
    return {.zoom = zoom,
            .pan = {limitedPan(pan.x(), scaled.width(), viewport.width(), kept),
                    limitedPan(pan.y(), scaled.height(), viewport.height(), kept)}};
}

IssueGraphViewport IssueGraphViewport::zoomed(double newZoom, QPointF anchor, QSizeF content,
                                              QSizeF viewport) const
{
    IssueGraphViewport result {.zoom = std::clamp(newZoom, leastZoom, mostZoom), .pan = pan};
    if (zoom > 0) {
        result.pan = anchor - (anchor - pan) / zoom * result.zoom;
    }
    return result.clamped(content, viewport);
}

IssueGraphViewport IssueGraphViewport::zoomedIn(QSizeF content, QSizeF viewport) const
{
    return zoomed(zoom * zoomInStep, {viewport.width() / 2, viewport.height() / 2}, content, viewport);
}

IssueGraphViewport IssueGraphViewport::zoomedOut(QSizeF content, QSizeF viewport) const
{
    return zoomed(zoom * zoomOutStep, {viewport.width() / 2, viewport.height() / 2}, content, viewport);
}

bool IssueGraphViewport::canZoomIn() const
{
    return zoom < largeZoom;
}

bool IssueGraphViewport::canZoomOut() const
{
    return zoom > smallZoom;
}

int IssueGraphViewport::percent() const
{
    return static_cast<int>(std::lround(zoom * 100));
}

QString IssueGraphAutoFit::graphIdentity(const QString &milestone, QSizeF content)
{
    return withSize(milestone.isEmpty() ? u"*"_s : milestone, content);
}

QString IssueGraphAutoFit::boardIdentity(const std::optional<IssueStatus> &filter, QSizeF content)
{
    return withSize(u"*isolated:"_s + (filter ? filter->written() : u"*"_s), content);
}

std::optional<IssueGraphViewport> IssueGraphAutoFit::fit(const QString &identity, QSizeF content,
                                                         QSizeF viewport)
{
    if (identity == m_fitted || !isLargerThan(content, 0) || !isLargerThan(viewport, 0)) {
        return std::nullopt;
    }
    m_fitted = identity;
    return IssueGraphViewport::fitted(content, viewport, IssueGraphViewport::automaticFloor);
}

std::optional<IssueGraphViewport> IssueGraphDrag::move(const IssueGraphViewport &now, QPointF translation,
                                                       QSizeF content, QSizeF viewport)
{
    m_distance = std::max(m_distance, std::hypot(translation.x(), translation.y()));
    if (selects()) {
        return std::nullopt;
    }
    if (!m_start) {
        m_start = now.pan;
    }
    return IssueGraphViewport {.zoom = now.zoom, .pan = *m_start + translation}.clamped(content, viewport);
}

} // namespace Vesk
