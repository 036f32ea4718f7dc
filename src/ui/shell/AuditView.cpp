#include "ui/shell/AuditView.h"

#include "app/Runtime.h"

namespace Vesk
{

AuditEntriesModel::AuditEntriesModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int AuditEntriesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant AuditEntriesModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const AuditLogEntry &entry = m_entries.at(index.row());
    switch (role) {
    case KindRole:
        return storedValue(entry.kind);
    case TimeRole:
        return entry.at.toLocalTime().toString(QStringLiteral("MM-dd HH:mm:ss"));
    case SummaryRole:
    case Qt::DisplayRole:
        return entry.summary;
    case ErrorRole:
        return entry.kind == AuditKind::SystemError || entry.kind == AuditKind::SessionLaunchFailed
            || entry.kind == AuditKind::MessageBlocked;
    default:
        return {};
    }
}

QHash<int, QByteArray> AuditEntriesModel::roleNames() const
{
    return {{KindRole, "kind"}, {TimeRole, "time"}, {SummaryRole, "summary"}, {ErrorRole, "isError"}};
}

void AuditEntriesModel::setEntries(const QList<AuditLogEntry> &entries)
{
    beginResetModel();
    m_entries = entries;
    endResetModel();
    Q_EMIT countChanged();
}

AuditView::AuditView(Runtime &runtime, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
{
    connect(&runtime.auditWatch(), &AuditWatch::auditWriteFailureChanged, this, &AuditView::failureChanged);
}

bool AuditView::failing() const
{
    return m_runtime.auditWatch().auditWriteFailure().has_value();
}

QString AuditView::failureDetail() const
{
    const auto &failure = m_runtime.auditWatch().auditWriteFailure();
    return failure ? failure->detail() : QString();
}

QString AuditView::logPath() const
{
    return m_runtime.auditLogger().fileURL();
}

void AuditView::dismissFailure()
{
    m_runtime.auditWatch().dismissAuditWriteFailureBanner();
}

void AuditView::refresh()
{
    m_runtime.auditWatch().noteBatch();
    m_entries.setEntries(m_runtime.auditWatch().recentLogs());
}

} // namespace Vesk
