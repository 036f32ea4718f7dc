#include "ui/chat/ChatViewModel.h"

namespace Vesk
{

ChatViewModel::ChatViewModel(QObject *parent)
    : QObject(parent)
{
    connect(&m_timeline, &QAbstractItemModel::modelReset, this, &ChatViewModel::updateEmpty);
    connect(&m_timeline, &QAbstractItemModel::rowsInserted, this, &ChatViewModel::updateEmpty);
    connect(&m_timeline, &QAbstractItemModel::rowsRemoved, this, &ChatViewModel::updateEmpty);
    m_links.showsItself = [this](const QString &path, const QString &realPath) {
        return m_chat && m_chat->onFileLink && m_chat->onFileLink(path, realPath);
    };
}

ChatViewModel::~ChatViewModel() = default;

void ChatViewModel::setChat(ProjectChat *chat)
{
    if (m_chat == chat) {
        return;
    }
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    m_timeline.setTranscript(chat ? &chat->messages() : nullptr);
    m_permission.setChat(chat);
    m_questions.setChat(chat);
    m_status.setChat(chat);
    m_pending.setChat(chat);
    m_notices.setChat(chat);
    m_composer.setChat(chat);
    m_links.setProjectFolder(chat ? chat->cwd() : QString());
    if (m_chat) {
        connect(m_chat, &ProjectChat::composerFocusTokenChanged, this, &ChatViewModel::focusComposer);
    }
    Q_EMIT chatChanged();
}

void ChatViewModel::updateEmpty()
{
    const bool empty = m_timeline.rowCount() == 0;
    if (empty != m_isEmpty) {
        m_isEmpty = empty;
        Q_EMIT isEmptyChanged();
    }
}

} // namespace Vesk
