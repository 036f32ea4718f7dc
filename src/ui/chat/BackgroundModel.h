// The background panel of a session.
#pragma once

#include "ui/chat/BackgroundRows.h"
#include "ui/chat/RunStatus.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <QUuid>

#include <optional>

class QUrl;

namespace Vesk
{

class ProjectChat;

/**
 * The rows of the panel. It follows one session, which may be exchanged; what was folded there is remembered.
 *
 * Lines of background work come in bursts: they are taken over at most every refreshMs, and only while the
 * panel is shown. What did not change is not announced.
 */
class BackgroundModel : public QAbstractListModel
{
    Q_OBJECT
    Q_MOC_INCLUDE("sessions/ProjectChat.h")
    QML_ELEMENT
    Q_PROPERTY(Vesk::ProjectChat *chat READ chat WRITE setChat NOTIFY chatChanged)
    Q_PROPERTY(bool shown READ shown WRITE setShown NOTIFY shownChanged)
    Q_PROPERTY(QString runningText READ runningText NOTIFY countsChanged)
    Q_PROPERTY(QString finishedText READ finishedText NOTIFY countsChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY countsChanged)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY countsChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(Vesk::RunStatus *status READ status CONSTANT)

public:
    static constexpr int refreshMs = 50;

    enum class Kind { Task, Phase, Agent, Line, Lines, Output, Summary };
    Q_ENUM(Kind)

    enum Roles {
        KindRole = Qt::UserRole + 1,
        StateRole, ///< "waiting", "running", "done" or "failed"
        TitleRole,
        DetailRole,
        ChipRole,
        IsCodeRole,
        IsRestoredRole,
        CanOpenRole,
        IsOpenRole,
        IsLastRole,
        IsFirstRole, ///< the panel's first row
        SinceRole,   ///< invalid once it has ended
        TimeRole,    ///< how long it took; empty while it runs
        TokensRole,
        CallsRole,
        DoneRole,
        FailedRole,
        TotalRole,
        AccessibleTextRole,
    };

    explicit BackgroundModel(QObject *parent = nullptr);
    ~BackgroundModel() override;

    [[nodiscard]] ProjectChat *chat() const;
    void setChat(ProjectChat *chat);
    [[nodiscard]] bool shown() const { return m_shown; }
    /** Becoming shown is counted as a use of the feature. */
    void setShown(bool shown);
    [[nodiscard]] QString runningText() const;  ///< "진행 3"; empty without one
    [[nodiscard]] QString finishedText() const; ///< "끝남 2"; empty without one
    [[nodiscard]] bool isRunning() const { return m_running > 0; }
    [[nodiscard]] bool isEmpty() const { return m_rows.isEmpty(); }
    /** Why an output file did not open; empty otherwise. */
    [[nodiscard]] const QString &problem() const { return m_problem; }
    [[nodiscard]] RunStatus *status() { return &m_status; }

    /** What a press on the row does: folds or unfolds it, or opens its file. */
    Q_INVOKABLE void activate(int row);
    /** Unfolds or folds; false when there is nothing to do. */
    Q_INVOKABLE bool setOpen(int row, bool open);
    /** The row that this one lies in; -1 for a task and for no row. */
    Q_INVOKABLE [[nodiscard]] int parentOf(int row) const;
    /** The first row at or after `from`, else from the top, whose title begins with `text`; -1 without one.
     */
    Q_INVOKABLE [[nodiscard]] int rowStartingWith(const QString &text, int from) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void chatChanged();
    void shownChanged();
    void countsChanged();
    void problemChanged();

private:
    /** How a session's panel was left. */
    struct Memory {
        BackgroundKeys keys;
        BackgroundFolding folding;
    };

    void refresh();
    void setRows(const QList<BackgroundRow> &rows);
    void removeGone(const QList<BackgroundRow> &rows);
    void arrange(const QList<BackgroundRow> &rows);
    void updateKept(const QList<BackgroundRow> &rows);
    void openFile(const QString &path);
    void setProblem(const QString &problem);
    [[nodiscard]] bool holdsRow(int row) const { return row >= 0 && row < m_rows.size(); }

    QPointer<ProjectChat> m_chat;
    RunStatus m_status;
    QTimer m_refresh;
    QHash<QUuid, Memory> m_memories;
    QList<BackgroundRow> m_rows;
    int m_running = 0;
    int m_finished = 0;
    bool m_shown = false;
    QString m_problem;
};

/** The address of a file that may be handed to the desktop: one that exists and is nothing to be executed. */
[[nodiscard]] std::optional<QUrl> openableFile(const QString &path, const QString &folder);

} // namespace Vesk
