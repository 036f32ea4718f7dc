// A wheel that goes on upwards where nothing is left to scroll, as a pull.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <optional>

namespace Vesk
{

/** What one movement of the wheel has come to so far. */
struct PullTurns {
    std::optional<std::chrono::milliseconds> last {}; ///< when it turned last
    bool isPull = false; ///< it began at the top and went nowhere but up; not the run-out of scrolling
    qreal distance = 0;  ///< in pixels

    bool operator==(const PullTurns &) const = default;
};

/** A wheel that rests this long begins anew. */
inline constexpr std::chrono::milliseconds pullRest {400};

/** After a turn of `pixels`, upwards when positive. */
[[nodiscard]] PullTurns turned(const PullTurns &before, qreal pixels, bool atTop,
                               std::chrono::milliseconds now);

/** The same for a list: asks once for each pull that went far enough. */
class WheelPull : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal needed MEMBER m_needed REQUIRED)
    Q_PROPERTY(qreal distance READ distance NOTIFY distanceChanged)
    Q_PROPERTY(int restMs READ restMs CONSTANT)

public:
    explicit WheelPull(QObject *parent = nullptr);

    [[nodiscard]] qreal distance() const { return m_turns.distance; }
    [[nodiscard]] static int restMs() { return static_cast<int>(pullRest.count()); }

    Q_INVOKABLE void turn(qreal pixels, bool atTop);
    /** The wheel has come to rest. */
    Q_INVOKABLE void rest();

Q_SIGNALS:
    void distanceChanged();
    void pulled();

private:
    PullTurns m_turns;
    qreal m_needed = 0;
    QElapsedTimer m_clock;
};

} // namespace Vesk
