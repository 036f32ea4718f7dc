#include "ui/chat/AttachmentList.h"

#include "sessions/ProjectChat.h"
#include "ui/chat/ChatWords.h"

#include <QFileInfo>
#include <QImageReader>

namespace Vesk
{

AttachmentList::AttachmentList(QObject *parent)
    : QAbstractListModel(parent)
{
}

void AttachmentList::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    clearRefusal();
    if (m_chat) {
        connect(m_chat, &ProjectChat::attachmentsChanged, this, &AttachmentList::update);
    }
    update();
}

void AttachmentList::add(const QList<QUrl> &files)
{
    if (!m_chat) {
        return;
    }
    QStringList refused;
    for (const auto &file : files) {
        if (!file.isLocalFile() || !m_chat->addAttachment(file.toLocalFile())) {
            refused << (file.fileName().isEmpty() ? file.toDisplayString() : file.fileName());
        }
    }
    m_refusal = refused.isEmpty()
        ? QString()
        : QStringLiteral("첨부할 수 없는 파일입니다 — ") + refused.join(QStringLiteral(", "));
    Q_EMIT refusalChanged();
}

void AttachmentList::remove(int index)
{
    if (m_chat && index >= 0 && index < count()) {
        m_chat->removeAttachment(m_paths.at(index));
    }
}

void AttachmentList::clearRefusal()
{
    if (!m_refusal.isEmpty()) {
        m_refusal.clear();
        Q_EMIT refusalChanged();
    }
}

int AttachmentList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_paths.size());
}

QVariant AttachmentList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const QFileInfo file(m_paths.at(index.row()));
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return file.fileName();
    case SizeRole:
        return ChatWords::fileSize(file.size());
    case PathRole:
        return file.filePath();
    case PreviewRole: {
        const auto isPicture =
            QImageReader::supportedImageFormats().contains(file.suffix().toLower().toLatin1());
        return isPicture ? QUrl::fromLocalFile(file.filePath()).toString(QUrl::FullyEncoded) : QString();
    }
    default:
        return {};
    }
}

QHash<int, QByteArray> AttachmentList::roleNames() const
{
    return {{NameRole, "name"}, {SizeRole, "size"}, {PathRole, "path"}, {PreviewRole, "preview"}};
}

void AttachmentList::update()
{
    const auto paths = m_chat ? m_chat->attachments() : QStringList();
    if (paths == m_paths) {
        return;
    }
    for (int i = count() - 1; i >= 0; --i) {
        if (!paths.contains(m_paths.at(i))) {
            beginRemoveRows({}, i, i);
            m_paths.removeAt(i);
            endRemoveRows();
        }
    }
    for (const auto &path : paths) {
        if (!m_paths.contains(path)) {
            beginInsertRows({}, count(), count());
            m_paths.append(path);
            endInsertRows();
        }
    }
    Q_EMIT countChanged();
}

} // namespace Vesk
