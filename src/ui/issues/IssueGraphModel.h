// The dependency graph of an issue window: its cards in sight, what is in focus, and its counts.
#pragma once

#include "issues/IssueGraphMemo.h"
#include "ui/controls/KeyedRowsModel.h"
#include "ui/issues/GraphCardsItem.h"
#include "ui/issues/GraphLinksItem.h"
#include "ui/issues/GraphStage.h"
#include "ui/issues/IssuesView.h"

#include <QAbstractListModel>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace Vesk
{

/** What is wrong with the declarations, worst first. */
class IssueProblemRows : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueGraphModel")

public:
    enum Role { MessageRole = Qt::UserRole + 1, IssueRole /**< the id to open */ };

    using Vesk::KeyedRowsModel::KeyedRowsModel;
    void show(const QList<IssueGraph::Problem> &problems);
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<IssueGraph::Problem> m_problems;
    QHash<QString, IssueGraph::Problem> m_byKey;
};

/**
 * Rows are the cards in sight, in no order: a row that is not needed any more becomes the next card that is.
 * When many come into sight at once some of them are rows only a moment later, and while the picture is tiny
 * rows stay as they are; the sketches show what is no row, or not shown. Points are the layout's, but where a
 * function says that they are the pane's.
 */
class IssueGraphModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(Vesk::GraphStage *stage READ stage CONSTANT)
    Q_PROPERTY(Vesk::IssueProblemRows *problems READ problems CONSTANT)
    /** The scope; empty for all. */
    Q_PROPERTY(QString milestone READ milestone WRITE setMilestone NOTIFY pictureChanged)
    Q_PROPERTY(QStringList milestones READ milestones NOTIFY pictureChanged)
    Q_PROPERTY(bool showsResolved READ showsResolved WRITE setShowsResolved NOTIFY showsResolvedChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY pictureChanged)
    Q_PROPERTY(int readyCount READ readyCount NOTIFY pictureChanged)
    Q_PROPERTY(int blockedCount READ blockedCount NOTIFY pictureChanged)
    /** The issue whose chain is in focus, by its key; empty for none. */
    Q_PROPERTY(QString focusKey READ focusKey NOTIFY focusChanged)
    /** In words, for who does not see the picture. */
    Q_PROPERTY(QString focusText READ focusText NOTIFY focusChanged)
    /** The card under the pointer while the picture is tiny, in words. */
    Q_PROPERTY(QString hoverText READ hoverText NOTIFY hoverChanged)
    Q_PROPERTY(QRectF hoverFrame READ hoverFrame NOTIFY hoverChanged)

public:
    enum Role {
        KeyRole = Qt::UserRole + 1,
        IdRole,
        TitleRole,
        StatusRole, ///< IssueStatus::Kind
        NoteRole,
        ToneRole, ///< GraphCards::Tone
        MilestoneRole,
        FrameRole,
        InChainRole, ///< also without a chain
        FocusedRole,
        ContextRole,
        SettledRole,
    };
    /** As in GraphCards. */
    enum class Direction { Left, Right, Up, Down };
    Q_ENUM(Direction)

    explicit IssueGraphModel(QObject *parent = nullptr);

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] GraphStage *stage() { return &m_stage; }
    [[nodiscard]] IssueProblemRows *problems() { return &m_problems; }
    [[nodiscard]] const QString &milestone() const { return m_milestone; }
    void setMilestone(const QString &milestone);
    [[nodiscard]] QStringList milestones() const;
    [[nodiscard]] bool showsResolved() const { return m_showsResolved; }
    void setShowsResolved(bool shows);
    [[nodiscard]] IssueGraph::Layout layout() const { return m_prepared->layout; }
    [[nodiscard]] bool isEmpty() const { return m_prepared->layout.placements.isEmpty(); }
    [[nodiscard]] int readyCount() const { return m_prepared->scoped.readyCount(); }
    [[nodiscard]] int blockedCount() const { return m_prepared->scoped.blockedCount(); }
    [[nodiscard]] const QString &focusKey() const { return m_focusKey; }
    [[nodiscard]] QString focusText() const;
    [[nodiscard]] QString hoverText() const;
    [[nodiscard]] QRectF hoverFrame() const;
    [[nodiscard]] const QSet<QString> &chain() const { return m_chain; }

    /** Gives this item what it is to draw, now and whenever that changes. */
    Q_INVOKABLE void drawLinks(Vesk::GraphLinksItem *links);
    Q_INVOKABLE void drawSketches(Vesk::GraphCardsItem *sketches);
    [[nodiscard]] std::vector<CardSketch> sketches() const;

    /** A click at this point of the pane: the card there is chosen and its chain focused; beside all cards
       the focus goes. */
    Q_INVOKABLE void click(QPointF point);
    /** Opens what is at this point of the pane, if anything is. */
    Q_INVOKABLE void openAt(QPointF point);
    /** The pointer is at this point of the pane. */
    Q_INVOKABLE void hover(QPointF point);
    Q_INVOKABLE void leave();
    Q_INVOKABLE void choose(const QString &key);
    Q_INVOKABLE void clearFocus() { focus({}); }
    /** Moves the focus by an arrow key. */
    Q_INVOKABLE void step(Vesk::IssueGraphModel::Direction direction);
    /** Shows the issue in focus in the list section. */
    Q_INVOKABLE void openFocused() { open(m_focusKey); }
    /** The same for an id, as of a problem. */
    Q_INVOKABLE void openIssue(const QString &id) { open(id); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void viewChanged();
    void pictureChanged();
    void showsResolvedChanged();
    void focusChanged();
    void hoverChanged();
    void sketchesChanged();

private:
    void update();
    /** `anew`: cards may have changed where they stand. */
    void updateSight(bool anew);
    void updateRows(bool anew);
    [[nodiscard]] QStringList wantedRows() const; ///< from the middle of the sight outwards
    [[nodiscard]] QString wordsOf(const QString &key, const QString &between) const;
    void focus(const QString &key);
    void followSelection();
    void revealFocus();
    void followPointer();
    void open(const QString &id);
    [[nodiscard]] QString keyAt(QPointF point) const;
    [[nodiscard]] const IssueGraph::Placement *card(const QString &key) const;

    IssuesView *m_view = nullptr;
    GraphStage m_stage;
    IssueProblemRows m_problems;
    QString m_milestone;
    bool m_showsResolved = true;
    std::shared_ptr<const IssueGraphMemo::Prepared> m_prepared;
    QHash<QString, qsizetype> m_placeOf; // in the layout, by key
    QString m_focusKey;
    QSet<QString> m_chain;
    QRectF m_held;      // null while tiny
    QStringList m_rows; // keys
    QTimer m_fillLater;
    std::vector<CardSketch> m_sketches; // of all cards, as they are without focus and pointer
    std::optional<QPointF> m_pointer;
    QString m_hoverKey;
};

} // namespace Vesk
