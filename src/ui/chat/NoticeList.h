// The notices below a timeline: what governs otherwise than chosen, what was denied, what could not be read.
#pragma once

#include "claude/AgentOptions.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QSet>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class ProjectChat;

/** The notices of a session's last run, in a fixed order; a notice without news has no row. */
class NoticeList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")

public:
    enum class Kind { PermissionDrift, ToolDenial, StreamSummary };
    Q_ENUM(Kind)

    enum Roles {
        KindRole = Qt::UserRole + 1,
        TextRole,
        DetailRole, ///< shown when opened; for a stream summary the tool tip
        ExpandedRole,
        OpensAuditLogRole, ///< a click leads to the audit log in place of opening the notice
    };

    explicit NoticeList(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    Q_INVOKABLE void toggle(int index);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Notice {
        Kind kind = Kind::PermissionDrift;
        QString text;
        QString detail;
        bool operator==(const Notice &) const = default;
    };

    [[nodiscard]] QList<Notice> current() const;
    void update();

    QPointer<ProjectChat> m_chat;
    QList<Notice> m_notices;
    QSet<Kind> m_expanded;
};

} // namespace Vesk
