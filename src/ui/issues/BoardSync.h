// The board is brought into line: what would change, and doing it.
#pragma once

#include "issues/IssueBoardUpdate.h"
#include "ui/issues/IssuesView.h"

namespace Vesk
{

class BoardSync : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY changed REQUIRED)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(bool canApply READ canApply NOTIFY changed)
    Q_PROPERTY(QString statusTitle READ statusTitle NOTIFY changed)
    Q_PROPERTY(QStringList statusLines READ statusLines NOTIFY changed)
    Q_PROPERTY(QString addedTitle READ addedTitle NOTIFY changed)
    Q_PROPERTY(QStringList addedLines READ addedLines NOTIFY changed)
    Q_PROPERTY(QString summaryTitle READ summaryTitle NOTIFY changed)
    Q_PROPERTY(QStringList summaryLines READ summaryLines NOTIFY changed)
    Q_PROPERTY(QStringList remarks READ remarks NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    /** Plans anew. */
    void setView(IssuesView *view);
    [[nodiscard]] const QString &error() const { return m_error; }
    [[nodiscard]] bool canApply() const { return m_plan.changesAnything(); }
    // A title is empty when there is nothing of its kind.
    [[nodiscard]] QString statusTitle() const;
    [[nodiscard]] QStringList statusLines() const;
    [[nodiscard]] QString addedTitle() const;
    [[nodiscard]] QStringList addedLines() const { return m_plan.added; }
    [[nodiscard]] QString summaryTitle() const;
    [[nodiscard]] QStringList summaryLines() const;
    /** What is left as it is. */
    [[nodiscard]] QStringList remarks() const;

    /** True when it is done. */
    Q_INVOKABLE bool apply();

Q_SIGNALS:
    void changed();

private:
    IssuesView *m_view = nullptr;
    IssueBoardSync::Plan m_plan;
    QString m_error;
};

} // namespace Vesk
