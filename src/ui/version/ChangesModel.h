// Changed files: those of the work tree, or those of a commit.
#pragma once

#include "git/GitWorkingTree.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Conflicts stand first. Rows are known by their path. */
class ChangesModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        PathRole = Qt::UserRole + 1,
        NameRole,
        FolderRole,
        BadgeRole,
        KindLabelRole,
        StageRole, ///< in words, where it says more than the badge
        ToneRole,
        ConflictRole,
    };

    /** Whose changes: those of a commit are past being staged. */
    enum class Of { WorkTree, Commit };

    explicit ChangesModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] int count() const { return static_cast<int>(m_changes.size()); }
    [[nodiscard]] const QList<GitWorkingTree::Change> &changes() const { return m_changes; }
    void setChanges(QList<GitWorkingTree::Change> changes, Of of = Of::WorkTree);
    /** Null for a path that is not there. */
    [[nodiscard]] const GitWorkingTree::Change *find(const QString &path) const;

    [[nodiscard]] Q_INVOKABLE int rowOf(const QString &path) const;
    [[nodiscard]] Q_INVOKABLE QString pathAt(int row) const;

Q_SIGNALS:
    void countChanged();

private:
    QList<GitWorkingTree::Change> m_changes;
    Of m_of = Of::WorkTree;
};

} // namespace Vesk
