// The audit log as the window shows it: its newest entries, and the warning that it cannot be written.
#pragma once

#include "core/AuditWatch.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Runtime;

/** The newest entries first, as they were when refresh() was last called. */
class AuditEntriesModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role { KindRole = Qt::UserRole + 1, TimeRole, SummaryRole, ErrorRole };

    explicit AuditEntriesModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] int count() const { return static_cast<int>(m_entries.size()); }
    void setEntries(const QList<AuditLogEntry> &entries);

Q_SIGNALS:
    void countChanged();

private:
    QList<AuditLogEntry> m_entries;
};

class AuditView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(bool failing READ failing NOTIFY failureChanged)
    Q_PROPERTY(QString failureDetail READ failureDetail NOTIFY failureChanged)
    Q_PROPERTY(QString logPath READ logPath CONSTANT)
    Q_PROPERTY(Vesk::AuditEntriesModel *entries READ entries CONSTANT)

public:
    explicit AuditView(Runtime &runtime, QObject *parent = nullptr);

    [[nodiscard]] bool failing() const;
    [[nodiscard]] QString failureDetail() const;
    [[nodiscard]] QString logPath() const;
    [[nodiscard]] AuditEntriesModel *entries() { return &m_entries; }

    /** Hides the warning until lines are lost anew. */
    Q_INVOKABLE void dismissFailure();
    /** Takes over the newest entries; to be called when they are looked at. */
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void failureChanged();

private:
    Runtime &m_runtime;
    AuditEntriesModel m_entries;
};

} // namespace Vesk
