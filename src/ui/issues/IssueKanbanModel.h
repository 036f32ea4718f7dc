// The kanban of an issue window: the issues without relations, in a column for each status.
#pragma once

#include "ui/controls/KeyedRowsModel.h"
#include "ui/issues/IssuesView.h"
#include "ui/issues/KanbanCards.h"

#include <QHash>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <memory>

namespace Vesk
{

/** The cards of a column. */
class IssueKanbanCards : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueKanbanModel")

public:
    enum Role {
        KeyRole = Qt::UserRole + 1,
        IdRole,
        TitleRole,
        StatusRole, ///< IssueStatus::Kind
        PathRole,   ///< empty when it cannot be moved
        PriorityRole,
        MetaRole,
        DoneRole,
        TotalRole,
        SessionMarkRole, ///< SessionMarks::Kind; -1 without a session
        SessionTextRole,
        SessionSinceRole,
    };

    using Vesk::KeyedRowsModel::KeyedRowsModel;
    void show(const QList<KanbanCard> &cards);
    [[nodiscard]] const QList<KanbanCard> &cards() const { return m_cards; }
    [[nodiscard]] const QStringList &cardKeys() const { return keys(); }
    Q_INVOKABLE int rowOf(const QString &key) const { return static_cast<int>(keys().indexOf(key)); }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<KanbanCard> m_cards;
    QHash<QString, KanbanCard> m_byKey;
};

/** The statuses to filter by: all, those of the columns, then the known ones without an issue. */
class IssueKanbanChips : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueKanbanModel")

public:
    enum Role { WordRole = Qt::UserRole + 1, LabelRole, StatusRole, CountRole, ChosenRole, VacantRole };
    struct Row {
        std::optional<IssueStatus> status; ///< absent for all
        int count = 0;
        bool chosen = false;
        bool vacant = false;
        bool operator==(const Row &) const = default;
    };

    using Vesk::KeyedRowsModel::KeyedRowsModel;
    void show(const QList<Row> &rows);
    [[nodiscard]] const QList<Row> &rows() const { return m_rows; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<Row> m_rows;
    QHash<QString, Row> m_byKey;
};

/** Rows are the columns. */
class IssueKanbanModel : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(Vesk::IssueKanbanChips *chips READ chips CONSTANT)
    /** Where the others are; empty when there are none. */
    Q_PROPERTY(QString relatedText READ relatedText NOTIFY boardChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY boardChanged)
    /** The card that the keys act on. */
    Q_PROPERTY(QString currentKey READ currentKey WRITE setCurrentKey NOTIFY currentChanged)
    Q_PROPERTY(int currentColumn READ currentColumn NOTIFY currentChanged)
    Q_PROPERTY(QString currentText READ currentText NOTIFY currentChanged)

public:
    enum Role {
        WordRole = Qt::UserRole + 1, ///< as a file has it; empty for no status
        LabelRole,
        StatusRole, ///< IssueStatus::Kind
        CountRole,
        CardsRole,
    };

    explicit IssueKanbanModel(QObject *parent = nullptr);

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] IssueKanbanChips *chips() { return &m_chips; }
    [[nodiscard]] QString relatedText() const;
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] const QString &currentKey() const { return m_currentKey; }
    void setCurrentKey(const QString &key);
    [[nodiscard]] int currentColumn() const; ///< -1 without a current card
    [[nodiscard]] QString currentText() const;

    /** Shows the column of this chip alone, or all for the chosen one and for the first. */
    Q_INVOKABLE void filterBy(int chip);
    /** Makes the card the current one and shows its issue in the detail. */
    Q_INVOKABLE void choose(const QString &key);
    /** Shows it in the list section. */
    Q_INVOKABLE void open(const QString &key);
    /** An arrow key. */
    Q_INVOKABLE void step(int across, int down);
    /** Moves the current card to the next status on that side. */
    Q_INVOKABLE void shift(int by);
    /** Only what has a file has a status to write. */
    Q_INVOKABLE bool canMove(const QString &key) const;
    /** Whether letting the card go over this status does something. */
    Q_INVOKABLE bool takes(const QString &key, const QString &word) const;
    /** Sets the status; what stands in the way is told by the view. */
    Q_INVOKABLE void move(const QString &key, const QString &word);
    /** Says why a card without a file stays where it is. */
    Q_INVOKABLE void refuse(const QString &key);
    /** The status of the column at a place of the board; "-" between the columns and beside them. */
    Q_INVOKABLE QString wordAt(qreal x, qreal columnWidth, qreal gap) const;
    Q_INVOKABLE qreal columnWidth(qreal available, qreal gap, qreal least) const;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /** A status in words. */
    [[nodiscard]] static QString label(const IssueStatus &status);

Q_SIGNALS:
    void viewChanged();
    void boardChanged();
    void currentChanged();

private:
    void update();
    void followSessions(const QList<KanbanCard> &cards);
    void showChips(const QHash<IssueStatus, int> &counts);
    [[nodiscard]] const KanbanCard *card(const QString &key) const;

    IssuesView *m_view = nullptr;
    std::shared_ptr<const IssueKanban::Board> m_board;
    std::optional<IssueStatus> m_filter;
    QList<IssueStatus> m_columns;
    std::map<QString, std::unique_ptr<IssueKanbanCards>> m_cards; // by a column's key
    IssueKanbanChips m_chips;
    QString m_currentKey;
    QTimer m_soon; // sessions say much at once
    QList<QMetaObject::Connection> m_sessionLinks;
};

} // namespace Vesk
