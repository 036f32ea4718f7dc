#include "ui/version/CommitsModel.h"

#include "base/Splice.h"
#include "ui/version/RefName.h"
#include "ui/version/VersionWords.h"

#include <QDateTime>
#include <QStringMatcher>

#include <algorithm>

namespace Vesk
{

namespace
{

using GitStatusReader::GitCommit;

constexpr qsizetype shortHashLength = 8;

QVariantList namesOf(const GitCommit &commit, const CommitRows &content)
{
    QVariantList list;
    const auto names = refNames(
        commit.refs, {.branch = content.branch, .remotes = content.remotes, .branches = content.branches});
    for (const RefName &name : names)
        list.append(QVariant::fromValue(name));
    return list;
}

} // namespace

CommitRows commitRows(const QList<GitStatusReader::GraphRow> &rows, const GitStatusReader::RepoStatus &status)
{
    const QString head = status.rows.isEmpty() ? QString() : status.rows.first().commit.hash;
    CommitRows content {.rows = rows,
                        .pictures = graphPictures(rows, head),
                        .lanes = laneCount(rows),
                        .branch = status.branch,
                        .branches = status.branches,
                        .remotes = status.remotes,
                        .changeCount = status.changes.size(),
                        .changesAreRead = status.changesFailure.isEmpty()};
    content.rowByHash.reserve(rows.size());
    for (auto row = static_cast<int>(rows.size()); row > 0; --row)
        content.rowByHash.insert(rows[row - 1].commit.hash, row);
    return content;
}

CommitsModel::CommitsModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int CommitsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> CommitsModel::roleNames() const
{
    return {{HashRole, "hash"},       {ShortHashRole, "shortHash"}, {SubjectRole, "subject"},
            {NamesRole, "names"},     {AuthorRole, "author"},       {DateRole, "date"},
            {PictureRole, "picture"}, {MergeRole, "isMerge"},       {DimmedRole, "dimmed"}};
}

const GitCommit *CommitsModel::commitAt(int row) const
{
    return row > 0 && row < count() ? &m_content.rows[row - 1].commit : nullptr;
}

QVariant CommitsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == PictureRole)
        return QVariant::fromValue(m_content.pictures[index.row()]);
    if (role == DimmedRole)
        return !m_query.isEmpty() && matchNumber(index.row()) == 0;
    const GitCommit *commit = commitAt(index.row());
    if (!commit)
        return workTreeData(role);
    switch (role) {
    case Qt::DisplayRole:
    case SubjectRole:
        return commit->subject;
    case HashRole:
        return commit->hash;
    case ShortHashRole:
        return commit->hash.left(shortHashLength);
    case NamesRole:
        return namesOf(*commit, m_content);
    case AuthorRole:
        return commit->author;
    case DateRole:
        return VersionWords::commitDate(commit->timestamp, QDateTime::currentDateTime());
    case MergeRole:
        return commit->parents.size() > 1;
    default:
        return {};
    }
}

QVariant CommitsModel::workTreeData(int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case SubjectRole:
        return !m_content.changesAreRead ? QStringLiteral("커밋 안 한 변경을 읽지 못했습니다")
            : m_content.changeCount > 0 ? QStringLiteral("커밋 안 한 변경 %1개").arg(m_content.changeCount)
                                        : QStringLiteral("커밋 안 한 변경이 없습니다");
    case DateRole:
        return QStringLiteral("지금");
    case NamesRole:
        return QVariantList();
    case MergeRole:
        return false;
    case HashRole:
    case ShortHashRole:
    case AuthorRole:
        return QString();
    default:
        return {};
    }
}

void CommitsModel::setContent(const CommitRows &content)
{
    if (content == m_content)
        return;
    const CommitRows before = m_content;
    const auto same = [](const auto &a, const auto &b) { return a.commit.hash == b.commit.hash; };
    const bool isFirst = before.pictures.isEmpty();
    if (isFirst || content.pictures.isEmpty()) {
        beginResetModel();
        m_content = content;
        endResetModel();
    } else {
        // The work tree's row stays where it is.
        const Splice splice = spliceOf(before.rows, content.rows, same);
        if (splice.gone > 0) {
            beginRemoveRows({}, static_cast<int>(splice.head + 1),
                            static_cast<int>(splice.head + splice.gone));
            m_content.rows.remove(splice.head, splice.gone);
            m_content.pictures.remove(splice.head + 1, splice.gone);
            endRemoveRows();
        }
        if (splice.come > 0)
            beginInsertRows({}, static_cast<int>(splice.head + 1),
                            static_cast<int>(splice.head + splice.come));
        m_content = content;
        if (splice.come > 0)
            endInsertRows();
        // Lanes and names of what stayed may be others now.
        Q_EMIT dataChanged(index(0), index(count() - 1));
    }
    findMatches();
    if (before.pictures.size() != content.pictures.size())
        Q_EMIT countChanged();
    if (before.lanes != content.lanes)
        Q_EMIT lanesChanged();
}

void CommitsModel::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    m_query = query;
    findMatches();
    if (count() > 0)
        Q_EMIT dataChanged(index(0), index(count() - 1), {DimmedRole});
}

bool CommitsModel::isMatch(const GitCommit &commit, const QStringMatcher &matcher) const
{
    const auto holds = [&matcher](const QString &text) { return matcher.indexIn(text) >= 0; };
    return holds(commit.subject) || holds(commit.author)
        || commit.hash.startsWith(m_query, Qt::CaseInsensitive) || std::ranges::any_of(commit.refs, holds);
}

void CommitsModel::findMatches()
{
    m_matches.clear();
    const QStringMatcher matcher(m_query, Qt::CaseInsensitive);
    for (int row = 1; row < count() && !m_query.isEmpty(); ++row) {
        if (isMatch(m_content.rows[row - 1].commit, matcher))
            m_matches.append(row);
    }
    Q_EMIT matchesChanged();
}

int CommitsModel::rowOf(const QString &hash) const
{
    return hash.isEmpty() ? (count() > 0 ? 0 : -1) : m_content.rowByHash.value(hash, -1);
}

QString CommitsModel::hashAt(int row) const
{
    const GitCommit *commit = commitAt(row);
    return commit ? commit->hash : QString();
}

int CommitsModel::matchFrom(int row, int step) const
{
    if (m_matches.isEmpty())
        return -1;
    if (step > 0) {
        const auto next = std::ranges::upper_bound(m_matches, row);
        return next == m_matches.end() ? m_matches.first() : *next;
    }
    const auto here = std::ranges::lower_bound(m_matches, row);
    return here == m_matches.begin() ? m_matches.last() : *std::prev(here);
}

int CommitsModel::matchNumber(int row) const
{
    const auto here = std::ranges::lower_bound(m_matches, row);
    return here != m_matches.end() && *here == row ? static_cast<int>(here - m_matches.begin()) + 1 : 0;
}

} // namespace Vesk
