// The rows of the commit table: the work tree, then the commits.
#pragma once

#include "git/GitStatusReader.h"
#include "ui/version/GraphPicture.h"

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class QStringMatcher;

namespace Vesk
{

/** A history with all that is drawn of it; equal ones look equal. */
struct CommitRows {
    QList<GitStatusReader::GraphRow> rows {};
    QHash<QString, int> rowByHash {}; ///< counted with the work tree's, which is 0
    QList<GraphPicture> pictures {};  ///< one more than rows: the work tree's comes first
    int lanes = 1;
    QString branch {}; ///< with the next two: what tells the names of a row apart
    QStringList branches {};
    QStringList remotes {};
    qsizetype changeCount = 0; ///< in the work tree
    bool changesAreRead = true;

    bool operator==(const CommitRows &) const = default;
};

[[nodiscard]] CommitRows commitRows(const QList<GitStatusReader::GraphRow> &rows,
                                    const GitStatusReader::RepoStatus &status);

/** Rows are known by their hash; the work tree's is empty. */
class CommitsModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int lanes READ lanes NOTIFY lanesChanged)
    /** In rows whose subject, author, hash or names hold it; empty when nothing is looked for. */
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY matchesChanged)
    Q_PROPERTY(int matchCount READ matchCount NOTIFY matchesChanged)

public:
    enum Role {
        HashRole = Qt::UserRole + 1,
        ShortHashRole,
        SubjectRole,
        NamesRole,
        AuthorRole,
        DateRole,
        PictureRole,
        MergeRole,
        DimmedRole, ///< something is looked for, and not found here
    };

    explicit CommitsModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    [[nodiscard]] int count() const { return static_cast<int>(m_content.pictures.size()); }
    [[nodiscard]] int lanes() const { return m_content.lanes; }
    [[nodiscard]] const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] int matchCount() const { return static_cast<int>(m_matches.size()); }

    void setContent(const CommitRows &content);
    /** Null for the work tree's row, and for none. */
    [[nodiscard]] const GitStatusReader::GitCommit *commitAt(int row) const;

    /** -1 for a hash that is not there. */
    [[nodiscard]] Q_INVOKABLE int rowOf(const QString &hash) const;
    [[nodiscard]] Q_INVOKABLE QString hashAt(int row) const;
    /** The nearest match after `row`, or before it for a negative step, going round; -1 without any. */
    [[nodiscard]] Q_INVOKABLE int matchFrom(int row, int step) const;
    /** Counted from 1; 0 when the row is no match. */
    [[nodiscard]] Q_INVOKABLE int matchNumber(int row) const;

Q_SIGNALS:
    void countChanged();
    void lanesChanged();
    void matchesChanged();

private:
    void findMatches();
    [[nodiscard]] bool isMatch(const GitStatusReader::GitCommit &commit, const QStringMatcher &matcher) const;
    [[nodiscard]] QVariant workTreeData(int role) const;

    CommitRows m_content;
    QString m_query;
    QList<int> m_matches; // ascending
};

} // namespace Vesk
