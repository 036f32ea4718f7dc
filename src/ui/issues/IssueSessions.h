// The open sessions that were begun on an issue.
#pragma once

#include "ui/controls/KeyedRowsModel.h"
#include "ui/issues/IssuesView.h"

#include <QPointer>

namespace Vesk
{

class ProjectChat;

class IssueSessions : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole + 1,
        MarkRole,
        WaitsRole,  ///< for the person
        SinceRole,  ///< since when it waits or runs
        LiveRole,   ///< one of both
        MomentRole, ///< when something was last said in it
    };

    using Vesk::KeyedRowsModel::KeyedRowsModel;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] const QString &path() const { return m_path; }
    void setPath(const QString &path);

    /** Shows the session in the main window. */
    Q_INVOKABLE void show(int row);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void viewChanged();
    void pathChanged();

private:
    void refresh();

    IssuesView *m_view = nullptr;
    QString m_path;
    QList<QPointer<ProjectChat>> m_chats;
};

} // namespace Vesk
