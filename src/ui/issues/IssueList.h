// The list of an issue window: its rows, and the filter chips above them.
#pragma once

#include "ui/controls/KeyedRowsModel.h"
#include "ui/issues/IssueListRows.h"
#include "ui/issues/IssuesView.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** The statuses that can be filtered by; the first row stands for all. */
class IssueStatusFilter : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueList")

public:
    enum Role { KindRole = Qt::UserRole + 1, WordRole, CountRole, ChosenRole };

    using Vesk::KeyedRowsModel::KeyedRowsModel;

    void show(const QList<std::pair<IssueStatus, int>> &counts, const std::optional<IssueStatus> &chosen);
    /** Absent for the row that stands for all. */
    [[nodiscard]] std::optional<IssueStatus> statusAt(int row) const;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Chip {
        std::optional<IssueStatus> status;
        int count = 0;
        bool chosen = false;
    };
    QList<Chip> m_chips;
};

/** Follows the store, the query of the view and what is folded. Rows keep their places over a reload. */
class IssueList : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(Vesk::IssueStatusFilter *filter READ filter CONSTANT)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectedRowChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY emptyTextChanged)

public:
    enum Role {
        KindRole = Qt::UserRole + 1,
        KeyRole,
        PathRole,
        IdRole,
        TitleRole,
        MetaRole,
        StatusRole,
        StatusWordRole,
        EndingRole,
        ToneRole,
        DoneRole,
        TotalRole,
        FoldedRole,
        UnreadableRole,
    };

    explicit IssueList(QObject *parent = nullptr);

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] IssueStatusFilter *filter() { return &m_filter; }
    [[nodiscard]] int selectedRow() const; ///< of the issue in the detail; -1 while it is not listed
    /** Why nothing is listed; empty while something is. */
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] const QList<IssueListRow> &rows() const { return m_rows; }

    /** Lists one status alone, by its row in the filter; the chosen one again lists all. */
    Q_INVOKABLE void filterBy(int chip);
    /** Folds or unfolds a group, or a group's settled issues, whose row this is. */
    Q_INVOKABLE void toggleFold(int row);
    Q_INVOKABLE void setFolded(int row, bool folded);
    /** Enter on a row: an issue is shown, a group is folded. */
    Q_INVOKABLE void activate(int row);
    /** The nearest row by this step that is an issue; `row` itself when there is none. */
    Q_INVOKABLE int issueFrom(int row, int step) const;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void viewChanged();
    void selectedRowChanged();
    void emptyTextChanged();

private:
    void regroup();
    void refresh();
    void unfoldFor(const QString &path);

    IssuesView *m_view = nullptr;
    QList<IssueGroup> m_groups;
    IssueListChoice m_choice;
    QList<IssueListRow> m_rows;
    QHash<QString, IssueListRow> m_byKey;
    IssueStatusFilter m_filter;
};

} // namespace Vesk
