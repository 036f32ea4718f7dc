// One group of tool calls in the timeline.
#pragma once

#include "sessions/ChatMessage.h"

#include <QAbstractListModel>
#include <QHash>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

namespace Vesk
{

/** What a person did to a group. It outlives the group's place on the screen. */
struct ToolFolding {
    std::optional<bool> open;     ///< what the person chose for the group, if anything
    QHash<QString, bool> outputs; ///< what the person chose for the output of a call, by tool use id
};

/** Whether a group shows its lines: as the person left it, else until text follows and nothing in it failed.
 */
[[nodiscard]] bool toolGroupIsOpen(const ToolFolding &folding, bool textFollows, bool anyFailed);

/** "Read 4 · Grep 2 · Bash 1": most frequent first, equal ones in the order of their first call. */
[[nodiscard]] QString toolCounts(const QList<ToolActivity> &tools);

/** The calls of one group, and what its head line says of them. */
class ToolGroupModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a timeline row")
    Q_PROPERTY(QString title READ title NOTIFY summaryChanged)
    Q_PROPERTY(QString counts READ counts NOTIFY summaryChanged)
    Q_PROPERTY(QString failures READ failures NOTIFY summaryChanged)
    Q_PROPERTY(QString total READ total NOTIFY summaryChanged)
    Q_PROPERTY(QString accessibleText READ accessibleText NOTIFY summaryChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY summaryChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)

public:
    enum Roles {
        NameRole = Qt::UserRole + 1,
        SummaryRole,  ///< the one line without the tool's name
        OutcomeRole,  ///< "running", "ok" or "failed"
        DurationRole, ///< empty while it runs
        OutputRole,
        HasOutputRole,
        OutputOpenRole,
        AccessibleTextRole,
    };

    /** `folding` is kept and written by what the person does. */
    explicit ToolGroupModel(std::shared_ptr<ToolFolding> folding, QObject *parent = nullptr);

    /** Takes over the calls of the row; calls are only added or finished, never taken away. */
    void setTools(const QList<ToolActivity> &tools);
    /** Whether text stands below the group. */
    void setTextFollows(bool follows);

    [[nodiscard]] QString title() const; ///< "도구 7개"
    [[nodiscard]] QString counts() const;
    [[nodiscard]] QString failures() const; ///< "실패 1", empty without one
    [[nodiscard]] QString total() const;    ///< the time of all finished calls, empty while one runs
    [[nodiscard]] QString accessibleText() const;
    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    Q_INVOKABLE void toggle();
    /** Opens or folds the output of one call; opening is counted as a use of the feature. */
    Q_INVOKABLE void toggleOutput(int index);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void summaryChanged();
    void isOpenChanged();

private:
    [[nodiscard]] int failureCount() const;
    [[nodiscard]] bool outputIsOpen(const ToolActivity &tool) const;
    void updateOpen();

    std::shared_ptr<ToolFolding> m_folding;
    QList<ToolActivity> m_tools;
    bool m_textFollows = false;
    bool m_isOpen = true;
};

} // namespace Vesk
