#include "ui/chat/AttachmentList.h"

#include "base/PoolWork.h"
#include "sessions/ProjectChat.h"
#include "ui/chat/ChatWords.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>

namespace Vesk
{

namespace
{

QList<QUrl> localFiles(const QMimeData &data)
{
    auto urls = data.urls();
    urls.removeIf([](const QUrl &url) { return !url.isLocalFile(); });
    return urls;
}

bool holdsPicture(const QMimeData &data)
{
    const auto formats = data.formats();
    return std::any_of(formats.begin(), formats.end(), [](const QString &format) {
        return format.startsWith(QStringLiteral("image/"))
            || format == QStringLiteral("application/x-qt-image");
    });
}

} // namespace

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
    for (auto i = m_rows.size() - 1; i >= m_paths.size(); --i) {
        removeRow(i);
    }
    if (m_chat) {
        connect(m_chat, &ProjectChat::attachmentsChanged, this, &AttachmentList::update);
    }
    update();
    Q_EMIT isSavingChanged();
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
    refuse(refused);
}

void AttachmentList::remove(int index)
{
    if (!m_chat || index < 0 || index >= count()) {
        return;
    }
    const auto row = m_rows.at(index);
    if (row.saving.isNull()) {
        m_chat->removeAttachment(row.path);
    } else if (removeSaving(row.saving)) {
        m_unwanted.insert(row.saving);
    }
}

void AttachmentList::clearRefusal()
{
    refuse({});
}

bool AttachmentList::areAllThere()
{
    QStringList gone;
    const auto paths = m_paths;
    for (const auto &path : paths) {
        if (!QFileInfo::exists(path)) {
            gone << QFileInfo(path).fileName();
            m_chat->removeAttachment(path);
        }
    }
    if (!gone.isEmpty()) {
        refuse(gone);
    }
    return gone.isEmpty();
}

bool AttachmentList::canTake(const QMimeData &data)
{
    return !localFiles(data).isEmpty() || holdsPicture(data);
}

bool AttachmentList::paste(const QMimeData &data)
{
    const bool isText = localFiles(data).isEmpty() && data.hasText() && !data.text().isEmpty();
    return !isText && take(data, QStringLiteral("pasted"));
}

bool AttachmentList::take(const QMimeData &data, const QString &prefix)
{
    if (!m_chat || !canTake(data)) {
        return false;
    }
    if (AttachmentCache::attachablePaths(data).isEmpty()) {
        if (auto image = AttachmentCache::attachableImage(data)) {
            save(std::move(*image), prefix);
            return true;
        }
    }
    add(localFiles(data));
    return true;
}

void AttachmentList::save(AttachmentCache::PastedImage image, const QString &prefix)
{
    const auto id = QUuid::createUuid();
    beginInsertRows({}, count(), count());
    m_rows.append({{}, id});
    endInsertRows();
    Q_EMIT countChanged();
    Q_EMIT isSavingChanged();
    // The session gets its picture even when another one is shown by then.
    workOnPool(
        m_chat,
        [image = std::move(image), prefix, caches = m_chat->cachesDir(), now = QDateTime::currentDateTime()] {
            return AttachmentCache::savePastedImage(image, AttachmentCache::directory(caches), now, prefix);
        },
        [list = QPointer(this), chat = m_chat.data(), id](const Result<QString> &path) {
            if (list && list->m_chat == chat) {
                list->onSaved(chat, id, path);
            } else if (path) {
                chat->addAttachment(*path);
            }
        });
}

void AttachmentList::onSaved(ProjectChat *chat, const QUuid &id, const Result<QString> &path)
{
    if (m_unwanted.remove(id)) {
        if (path) {
            QFile::remove(*path);
        }
        return;
    }
    removeSaving(id);
    const bool whole = path && chat->addAttachment(*path);
    if (!whole) {
        refuse({ChatWords::pictureName()});
    }
    Q_EMIT savingEnded(whole);
}

bool AttachmentList::removeSaving(const QUuid &id)
{
    for (auto i = m_paths.size(); i < m_rows.size(); ++i) {
        if (m_rows.at(i).saving == id) {
            removeRow(i);
            Q_EMIT countChanged();
            Q_EMIT isSavingChanged();
            return true;
        }
    }
    return false;
}

void AttachmentList::refuse(const QStringList &names)
{
    const auto refusal = names.isEmpty()
        ? QString()
        : QStringLiteral("첨부할 수 없는 파일입니다 — ") + names.join(QStringLiteral(", "));
    if (m_refusal != refusal) {
        m_refusal = refusal;
        Q_EMIT refusalChanged();
    }
}

int AttachmentList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant AttachmentList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &row = m_rows.at(index.row());
    const bool isSaved = row.saving.isNull();
    const QFileInfo file(row.path);
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return isSaved ? ChatWords::attachmentName(row.path) : ChatWords::pictureName();
    case SizeRole:
        return isSaved ? ChatWords::fileSize(file.size()) : QStringLiteral("저장 중…");
    case PathRole:
        return row.path;
    case PreviewRole: {
        const auto isPicture =
            isSaved && QImageReader::supportedImageFormats().contains(file.suffix().toLower().toLatin1());
        return isPicture ? QUrl::fromLocalFile(file.filePath()).toString(QUrl::FullyEncoded) : QString();
    }
    case SavingRole:
        return !isSaved;
    default:
        return {};
    }
}

QHash<int, QByteArray> AttachmentList::roleNames() const
{
    return {{NameRole, "name"},
            {SizeRole, "size"},
            {PathRole, "path"},
            {PreviewRole, "preview"},
            {SavingRole, "saving"}};
}

void AttachmentList::removeRow(qsizetype index)
{
    beginRemoveRows({}, static_cast<int>(index), static_cast<int>(index));
    m_rows.removeAt(index);
    if (index < m_paths.size()) {
        m_paths.removeAt(index);
    }
    endRemoveRows();
}

void AttachmentList::update()
{
    const auto paths = m_chat ? m_chat->attachments() : QStringList();
    if (paths == m_paths) {
        return;
    }
    for (auto i = m_paths.size() - 1; i >= 0; --i) {
        if (!paths.contains(m_paths.at(i))) {
            removeRow(i);
        }
    }
    for (const auto &path : paths) {
        if (!m_paths.contains(path)) {
            const auto at = static_cast<int>(m_paths.size());
            beginInsertRows({}, at, at);
            m_rows.insert(at, {path, {}});
            m_paths.append(path);
            endInsertRows();
        }
    }
    Q_EMIT countChanged();
}

} // namespace Vesk
