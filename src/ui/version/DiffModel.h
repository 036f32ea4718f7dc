// The lines of one file's difference.
#pragma once

#include "git/GitDiff.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** One row a line; below the last one what was left out, if something was. */
class DiffModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int hunkCount READ hunkCount NOTIFY changed)
    /** The line that takes the most room, for its width. */
    Q_PROPERTY(QString longestLine READ longestLine NOTIFY changed)
    Q_PROPERTY(bool longestIsCut READ longestIsCut NOTIFY changed)
    /** Of the largest number of a line. */
    Q_PROPERTY(int digits READ digits NOTIFY changed)

public:
    enum class RowKind { Meta, Hunk, Context, Added, Removed, NoNewline, Remark };
    Q_ENUM(RowKind)

    enum Role {
        KindRole = Qt::UserRole + 1,
        TextRole,
        OldNumberRole,
        NewNumberRole,
        SignRole,
        ClippedRole,
        EmphasisRole, ///< pairs of start and length
    };

    explicit DiffModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] int count() const;
    [[nodiscard]] int hunkCount() const { return static_cast<int>(m_hunks.size()); }
    [[nodiscard]] const QString &longestLine() const { return m_longestLine; }
    [[nodiscard]] bool longestIsCut() const { return m_longestIsCut; }
    [[nodiscard]] int digits() const { return m_digits; }

    /** Another file: the view begins at its top. */
    void reset(const GitDiff::FileDiff &diff);
    /** The same file, read again: what is the same stays in place. */
    void update(const GitDiff::FileDiff &diff);

    /** The header of the next hunk after a row, or of the one before; -1 without one. */
    [[nodiscard]] Q_INVOKABLE int hunkFrom(int row, int step) const;
    /** Which hunk the row stands in, from 1; 0 above the first. */
    [[nodiscard]] Q_INVOKABLE int hunkAt(int row) const;
    /** The lines from `first` to `last` as they stand in a patch. */
    [[nodiscard]] Q_INVOKABLE QString textOf(int first, int last) const;

Q_SIGNALS:
    void changed();

private:
    void take(const GitDiff::FileDiff &diff);
    [[nodiscard]] QVariant remarkData(int role) const;

    QList<GitDiff::Line> m_lines;
    QString m_remark;
    QList<int> m_hunks; // their rows
    QString m_longestLine;
    bool m_longestIsCut = false;
    int m_digits = 1;
};

} // namespace Vesk
