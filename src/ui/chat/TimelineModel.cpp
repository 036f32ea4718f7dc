#include "ui/chat/TimelineModel.h"

#include "ui/chat/ChatWords.h"

namespace Vesk
{

TimelineModel::TimelineModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

TimelineModel::~TimelineModel() = default;

void TimelineModel::setTranscript(Transcript *transcript)
{
    if (m_transcript == transcript) {
        return;
    }
    beginResetModel();
    if (m_transcript) {
        disconnect(m_transcript, nullptr, this, nullptr);
    }
    m_foldings.clear();
    m_transcript = transcript;
    if (m_transcript) {
        connect(m_transcript, &Transcript::aboutToReset, this, [this] { beginResetModel(); });
        connect(m_transcript, &Transcript::wasReset, this, [this] { endResetModel(); });
        connect(m_transcript, &Transcript::aboutToInsert, this, [this](qsizetype position) {
            beginInsertRows({}, static_cast<int>(position), static_cast<int>(position));
        });
        connect(m_transcript, &Transcript::inserted, this, [this](qsizetype position) {
            endInsertRows();
            updateTurnAbove(position);
            Q_EMIT arrived();
        });
        connect(m_transcript, &Transcript::aboutToRemove, this, [this](qsizetype position) {
            beginRemoveRows({}, static_cast<int>(position), static_cast<int>(position));
        });
        connect(m_transcript, &Transcript::removed, this, [this] { endRemoveRows(); });
        connect(m_transcript, &Transcript::changed, this,
                [this](qsizetype position) { onChanged(position, false); });
        connect(m_transcript, &Transcript::textGrew, this,
                [this](qsizetype position) { onChanged(position, true); });
        connect(m_transcript, &QObject::destroyed, this, [this] {
            beginResetModel();
            m_transcript = nullptr;
            endResetModel();
        });
    }
    endResetModel();
}

TimelineRow *TimelineModel::borrow(int position)
{
    if (position < 0 || position >= rowCount()) {
        return nullptr;
    }
    const auto &message = m_transcript->rows().at(position);
    auto &known = m_borrowed[message.id];
    if (!known) {
        std::shared_ptr<ToolFolding> folding;
        if (message.role == ChatMessage::Role::Tools) {
            auto &kept = m_foldings[message.id];
            if (!kept) {
                kept = std::make_shared<ToolFolding>();
            }
            folding = kept;
        }
        known = new TimelineRow(message, std::move(folding), this);
        known->update(message, textFollows(position));
    }
    return known;
}

void TimelineModel::release(TimelineRow *row)
{
    if (row && m_borrowed.value(row->id()) == row) {
        m_borrowed.remove(row->id());
        row->deleteLater();
    }
}

int TimelineModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_transcript ? 0 : static_cast<int>(m_transcript->rows().size());
}

QVariant TimelineModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &message = m_transcript->rows().at(index.row());
    switch (role) {
    case KindRole:
        return QVariant::fromValue(static_cast<TimelineRow::Kind>(message.role));
    case Qt::DisplayRole:
    case TextRole:
        return message.text;
    case TimeRole:
        return ChatWords::rowTime(message.at, QDateTime::currentDateTimeUtc());
    case StreamingRole:
        return message.streaming;
    case IsErrorRole:
        return message.isError;
    case AttachmentsRole:
        return message.attachments;
    case AccessibleTextRole:
        return TimelineRow::spoken(message);
    default:
        return {};
    }
}

QHash<int, QByteArray> TimelineModel::roleNames() const
{
    return {{KindRole, "kind"},
            {TextRole, "text"},
            {TimeRole, "time"},
            {StreamingRole, "streaming"},
            {IsErrorRole, "isError"},
            {AttachmentsRole, "attachments"},
            {AccessibleTextRole, "accessibleText"}};
}

void TimelineModel::onChanged(qsizetype position, bool grew)
{
    updateBorrowed(position);
    updateTurnAbove(position);
    const auto changed = index(static_cast<int>(position));
    Q_EMIT dataChanged(changed, changed);
    if (grew) {
        Q_EMIT arrived();
    }
}

void TimelineModel::updateBorrowed(qsizetype position)
{
    const auto &message = m_transcript->rows().at(position);
    if (auto *row = m_borrowed.value(message.id)) {
        row->update(message, textFollows(position));
    }
}

// When a row begins, the group above it folds and the text above it has ended. All of that lies in one turn.
void TimelineModel::updateTurnAbove(qsizetype position)
{
    const auto &rows = m_transcript->rows();
    for (auto above = position - 1; above >= 0 && rows.at(above).role != ChatMessage::Role::User; --above) {
        updateBorrowed(above);
    }
}

bool TimelineModel::textFollows(qsizetype position) const
{
    const auto &rows = m_transcript->rows();
    for (auto below = position + 1; below < rows.size(); ++below) {
        if (!rows.at(below).text.isEmpty() || rows.at(below).role == ChatMessage::Role::Tools) {
            return true;
        }
    }
    return false;
}

} // namespace Vesk
