#include "ui/chat/PendingSends.h"

#include "sessions/ProjectChat.h"

#include <algorithm>

namespace Vesk
{

namespace
{

QString oneLine(const QueuedLocalSend &send)
{
    auto line = send.text.simplified();
    if (!send.attachments.isEmpty()) {
        line += (line.isEmpty() ? QString() : QStringLiteral(" · "))
            + QStringLiteral("첨부 %1").arg(send.attachments.size());
    }
    return line;
}

} // namespace

PendingSends::PendingSends(QObject *parent)
    : QAbstractListModel(parent)
{
}

void PendingSends::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    if (m_chat) {
        connect(m_chat, &ProjectChat::pendingLocalSendsChanged, this, &PendingSends::update);
    }
    update();
}

QString PendingSends::countText() const
{
    return QStringLiteral("%1건").arg(count());
}

void PendingSends::takeBack(int index)
{
    if (!m_chat || index < 0 || index >= count()) {
        return;
    }
    const auto taken = m_chat->takePendingLocalSend(m_entries.at(index).id);
    if (!taken) {
        return;
    }
    const auto draft = m_chat->composerInput();
    m_chat->setComposerInput(draft.isEmpty() ? taken->text : draft + QLatin1Char('\n') + taken->text);
    for (const auto &path : taken->attachments) {
        m_chat->addAttachment(path);
    }
}

void PendingSends::remove(int index)
{
    if (m_chat && index >= 0 && index < count()) {
        m_chat->takePendingLocalSend(m_entries.at(index).id);
    }
}

void PendingSends::cancelAll()
{
    if (m_chat) {
        m_chat->cancelPendingLocalSends();
    }
}

int PendingSends::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant PendingSends::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || (role != TextRole && role != Qt::DisplayRole)) {
        return {};
    }
    return m_entries.at(index.row()).line;
}

QHash<int, QByteArray> PendingSends::roleNames() const
{
    return {{TextRole, "text"}};
}

// Entries only ever leave somewhere and join at the end.
void PendingSends::update()
{
    const auto sends = m_chat ? m_chat->pendingLocalSends() : QList<QueuedLocalSend>();
    const auto before = m_entries.size();
    for (int i = static_cast<int>(m_entries.size()) - 1; i >= 0; --i) {
        const auto &id = m_entries.at(i).id;
        if (std::none_of(sends.begin(), sends.end(), [&id](const auto &send) { return send.id == id; })) {
            beginRemoveRows({}, i, i);
            m_entries.removeAt(i);
            endRemoveRows();
        }
    }
    if (sends.size() > m_entries.size()) {
        beginInsertRows({}, static_cast<int>(m_entries.size()), static_cast<int>(sends.size()) - 1);
        for (auto i = m_entries.size(); i < sends.size(); ++i) {
            m_entries.append({sends.at(i).id, oneLine(sends.at(i))});
        }
        endInsertRows();
    }
    if (before != m_entries.size()) {
        Q_EMIT countChanged();
    }
}

} // namespace Vesk
