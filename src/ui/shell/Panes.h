// The panes of the main window as lists that the window follows.
#pragma once

#include "ui/shell/PaneLayout.h"
#include "ui/shell/ShellModels.h"

#include <QSizeF>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <memory>

namespace Vesk
{

/** The tabs of one pane. */
class PaneTabs : public Vesk::SessionRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Panes")

public:
    using SessionRowsModel::SessionRowsModel;

    void setSessions(const QList<QUuid> &sessions);
};

/** The lines between the panes. */
class PaneSplits : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Panes")

public:
    enum Role {
        SplitRole = Qt::UserRole + 1, ///< its id
        SideBySideRole,
        LineRole, ///< a rectangle
        ValueRole,
        FromRole,
        ToRole,
    };

    using KeyedRowsModel::KeyedRowsModel;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setSplits(const QList<PaneLayout::Split> &splits);

private:
    QHash<QString, PaneLayout::Split> m_splits;
};

/**
 * The panes in reading order, and what the person does to them. Sessions are named by RosterSession::key(). A
 * session's view never moves between items: it lies above the panes, where its own pane is.
 */
class Panes : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Workspace")
    Q_PROPERTY(QSizeF area READ area WRITE setArea NOTIFY areaChanged)
    Q_PROPERTY(Vesk::PaneSplits *splits READ splits CONSTANT)
    Q_PROPERTY(int focusedPane READ focusedPane NOTIFY treeChanged)
    Q_PROPERTY(int focusedRow READ focusedRow NOTIFY treeChanged)

public:
    enum Side { Left, Right, Above, Below };
    Q_ENUM(Side)
    enum Role {
        PaneRole = Qt::UserRole + 1, ///< its id
        PlaceRole,                   ///< a rectangle
        TabsRole,
        ShownIndexRole, ///< -1 in a pane without tabs
        FocusedRole,
        ExpectingRole, ///< without tabs yet, but soon with those of an earlier run
    };

    Panes(Runtime &runtime, SessionRoster &roster, QObject *parent);
    ~Panes() override;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] const PaneTree &tree() const { return m_tree; }
    [[nodiscard]] const PaneLayout &layout() const { return m_layout; }
    /** What treeChanged() is about, at once. */
    void setTree(PaneTree tree);
    /** Asks the tree for a change, as `panes.change(&PaneTree::show, id)`. */
    template <typename Operation, typename... Values>
    bool change(Operation operation, const Values &...values)
    {
        PaneTree next = m_tree;
        const bool changed = (next.*operation)(values...);
        if (changed) {
            setTree(std::move(next));
        }
        return changed;
    }

    /** All that `work` changes is shown by one treeChanged() after it. */
    template <typename Work>
    void inOneGo(Work work)
    {
        m_inOneGo = true;
        work();
        m_inOneGo = false;
        update();
    }
    /** Who was here in an earlier run is about to come back. */
    void setExpecting(bool expecting);

    [[nodiscard]] QSizeF area() const { return m_area; }
    void setArea(const QSizeF &area);
    [[nodiscard]] PaneSplits *splits() { return &m_splits; }
    [[nodiscard]] int focusedPane() const { return m_tree.focused().id; }
    [[nodiscard]] int focusedRow() const;
    /** The tabs of the focused pane. */
    [[nodiscard]] const PaneTabs &focusedTabs() const;

    Q_INVOKABLE void focusPane(int pane);
    Q_INVOKABLE void focusBeside(Vesk::Panes::Side side);
    [[nodiscard]] Q_INVOKABLE int paneOf(const QString &key) const;
    /** Whether the pane of this session has another one on this side. */
    [[nodiscard]] Q_INVOKABLE bool hasPaneBeside(const QString &key, Vesk::Panes::Side side) const;
    /** Whether a new pane with this session fits on this side of its own. */
    [[nodiscard]] Q_INVOKABLE bool canSplit(const QString &key, Vesk::Panes::Side side) const;
    /** Into the pane on this side; into a new one where there is none. */
    Q_INVOKABLE void moveTowards(const QString &key, Vesk::Panes::Side side);
    /** So many places along its own tabs, to the right or, negative, to the left. */
    Q_INVOKABLE void shift(const QString &key, int places);
    [[nodiscard]] Q_INVOKABLE bool canShift(const QString &key, int places) const;
    Q_INVOKABLE void closePane(int pane);
    /** The first part becomes so many pixels long. */
    Q_INVOKABLE void resize(int split, double value);
    Q_INVOKABLE void even(int split);

Q_SIGNALS:
    void areaChanged();
    /** The tree or its place in the window is another. */
    void treeChanged();

private:
    void update();

    Runtime &m_runtime;
    SessionRoster &m_roster;
    PaneTree m_tree;
    PaneLayout m_layout;
    QSizeF m_area;
    bool m_inOneGo = false;
    bool m_expecting = false;
    PaneSplits m_splits;
    std::map<int, std::unique_ptr<PaneTabs>> m_tabs;
};

} // namespace Vesk
