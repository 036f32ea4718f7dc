#include "sessions/ComposerAutocompleteModel.h"

namespace Vesk
{

using ComposerAutocomplete::Detection;

std::optional<QString> ComposerAutocompleteModel::selected() const
{
    if (m_highlighted < 0 || m_highlighted >= m_candidates.size())
        return std::nullopt;
    return m_candidates.at(m_highlighted);
}

void ComposerAutocompleteModel::update(const std::optional<Detection> &detection,
                                       const QStringList &candidates)
{
    if (!detection || candidates.isEmpty()) {
        dismiss();
        return;
    }
    if (m_candidates != candidates || m_detection != *detection) {
        beginResetModel();
        m_detection = *detection;
        m_candidates = candidates;
        endResetModel();
        Q_EMIT candidatesChanged();
    }
    if (m_highlighted >= m_candidates.size())
        highlight(0);
    setActive(true);
}

void ComposerAutocompleteModel::dismiss()
{
    setActive(false);
    m_pendingConfirm = false;
    highlight(0);
    if (m_candidates.isEmpty())
        return;
    beginResetModel();
    m_candidates.clear();
    endResetModel();
    Q_EMIT candidatesChanged();
}

void ComposerAutocompleteModel::moveHighlight(int delta)
{
    const auto count = m_candidates.size();
    if (count > 0)
        highlight(static_cast<int>(((m_highlighted + delta) % count + count) % count));
}

void ComposerAutocompleteModel::highlight(int index)
{
    if (m_highlighted == index)
        return;
    m_highlighted = index;
    Q_EMIT highlightedChanged();
}

void ComposerAutocompleteModel::setActive(bool active)
{
    if (m_isActive == active)
        return;
    m_isActive = active;
    Q_EMIT isActiveChanged();
}

int ComposerAutocompleteModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_candidates.size());
}

QVariant ComposerAutocompleteModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QString &candidate = m_candidates.at(index.row());
    const auto slash = namesFiles() ? candidate.lastIndexOf(u'/') : -1;
    const QString name = namesFiles() ? candidate.sliced(slash + 1) : u'/' + candidate;
    const QString typed = namesFiles() ? m_detection.query.section(u'/', -1) : u'/' + m_detection.query;
    const auto match = typed.isEmpty() ? -1 : name.indexOf(typed, 0, Qt::CaseInsensitive);
    switch (role) {
    case Qt::DisplayRole:
        return candidate;
    case NameRole:
        return name;
    case FolderRole:
        return slash > 0 ? candidate.first(slash) : QString();
    case MatchStartRole:
        return qMax(qsizetype(0), match);
    case MatchLengthRole:
        return match < 0 ? 0 : typed.size();
    default:
        return {};
    }
}

QHash<int, QByteArray> ComposerAutocompleteModel::roleNames() const
{
    return {{NameRole, "name"},
            {FolderRole, "folder"},
            {MatchStartRole, "matchStart"},
            {MatchLengthRole, "matchLength"}};
}

} // namespace Vesk
