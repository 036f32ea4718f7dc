// Which panes the window is divided into, and which sessions are in which: a value, and what can be done to
// it.
#pragma once

#include <QList>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <vector>

class QByteArray;

namespace Vesk
{

/** A side of a pane, in the order of Panes::Side. */
enum class PaneSide { Left, Right, Above, Below };

/** A conversation that has a place in a pane. */
struct PanePlace {
    QString conversation; ///< its id; empty for none
    QString project;
    QString title;

    bool operator==(const PanePlace &) const = default;
};

/** A pane, or a split with two parts; never both. Ids are above zero and stay as long as the node does. */
struct PaneNode {
    int id = 0;

    // A split:
    std::vector<PaneNode> parts;                ///< two, or none in a pane
    Qt::Orientation direction = Qt::Horizontal; ///< horizontal: its parts lie side by side
    double ratio = 0.5;                         ///< the first part's share

    // A pane:
    QList<QUuid> tabs;
    QUuid shown;             ///< one of the tabs; null only without any
    QList<PanePlace> places; ///< who was here in an earlier run and would come back here
    QString shownPlace;      ///< the conversation among them that was shown
    bool kept = false;       ///< without tabs, but there since an earlier run

    [[nodiscard]] bool isPane() const { return parts.empty(); }
};

/**
 * Every session is in exactly one pane. A pane without tabs is the only one, or one that was kept from an
 * earlier run. Each operation says whether it changed anything; one that makes no sense changes nothing.
 */
class PaneTree
{
public:
    static constexpr int maximumPanes = 12;
    static constexpr double leastRatio = 0.05;
    static constexpr double greatestRatio = 0.95;

    PaneTree();

    [[nodiscard]] const PaneNode &root() const { return m_root; }
    /** The pane that the keys act on. */
    [[nodiscard]] const PaneNode &focused() const;
    [[nodiscard]] const PaneNode *node(int id) const;
    [[nodiscard]] const PaneNode *paneOf(const QUuid &session) const;
    /** From left to right, from top to bottom. */
    [[nodiscard]] QList<const PaneNode *> panes() const;

    /** Into the pane that kept a place for this conversation, else behind the tabs of the focused one. */
    bool add(const QUuid &session, const QString &conversation = {});
    /** Its neighbour is shown then; the last one's pane closes. */
    bool remove(const QUuid &session);
    /** Brings it to the front of its pane, and the focus there. */
    bool show(const QUuid &session);
    bool focus(int pane);
    /** Nobody comes back any more. */
    bool forgetPlaces();
    /** Before the tab that is now at `position`, behind the last one without it; shown and focused there. */
    bool move(const QUuid &session, int pane, int position = -1);
    /** Into a new pane that takes half of this one. */
    bool split(int pane, PaneSide side, const QUuid &session);
    /** A pane without tabs goes. */
    bool close(int pane);
    bool resize(int split, double ratio);
    /** All panes that lie in this split's direction become as long as each other. */
    bool even(int split);

    /** What can be there again in a later run, as JSON; empty for one pane in which that is nobody. */
    [[nodiscard]] QByteArray toJson(const std::function<PanePlace(const QUuid &)> &placeOf) const;
    /** Text that is not a whole layout within the limits yields one pane without places. */
    [[nodiscard]] static PaneTree fromJson(const QByteArray &json);

private:
    [[nodiscard]] PaneNode *held(int id);
    void detach(PaneNode &pane, const QUuid &session);
    void closeNode(int pane);

    PaneNode m_root;
    int m_focused = 1;
    int m_lastId = 1;
};

} // namespace Vesk
