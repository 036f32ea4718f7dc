// Everything that the surface of one session shows.
#pragma once

#include "sessions/ProjectChat.h"
#include "ui/chat/ChatLinks.h"
#include "ui/chat/ComposerModel.h"
#include "ui/chat/NoticeList.h"
#include "ui/chat/PendingSends.h"
#include "ui/chat/PermissionCard.h"
#include "ui/chat/QuestionForm.h"
#include "ui/chat/RunStatus.h"
#include "ui/chat/TimelineModel.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqml.h>

namespace Vesk
{

/** Lets QML name the type of a session; sessions themselves know nothing of QML. */
struct ProjectChatForQml {
    Q_GADGET
    QML_FOREIGN(Vesk::ProjectChat)
    QML_NAMED_ELEMENT(ProjectChat)
    QML_UNCREATABLE("sessions are opened by the program")
};

/** The parts of a session's surface, all following one session, which may be exchanged. */
class ChatViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::ProjectChat *chat READ chat WRITE setChat NOTIFY chatChanged)
    Q_PROPERTY(Vesk::TimelineModel *timeline READ timeline CONSTANT)
    Q_PROPERTY(Vesk::PermissionCard *permission READ permission CONSTANT)
    Q_PROPERTY(Vesk::QuestionForm *questions READ questions CONSTANT)
    Q_PROPERTY(Vesk::RunStatus *status READ status CONSTANT)
    Q_PROPERTY(Vesk::PendingSends *pending READ pending CONSTANT)
    Q_PROPERTY(Vesk::NoticeList *notices READ notices CONSTANT)
    Q_PROPERTY(Vesk::ComposerModel *composer READ composer CONSTANT)
    Q_PROPERTY(Vesk::ChatLinks *links READ links CONSTANT)
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY isEmptyChanged)

public:
    explicit ChatViewModel(QObject *parent = nullptr);
    ~ChatViewModel() override;

    [[nodiscard]] ProjectChat *chat() const { return m_chat; }
    void setChat(ProjectChat *chat);

    [[nodiscard]] TimelineModel *timeline() { return &m_timeline; }
    [[nodiscard]] PermissionCard *permission() { return &m_permission; }
    [[nodiscard]] QuestionForm *questions() { return &m_questions; }
    [[nodiscard]] RunStatus *status() { return &m_status; }
    [[nodiscard]] PendingSends *pending() { return &m_pending; }
    [[nodiscard]] NoticeList *notices() { return &m_notices; }
    [[nodiscard]] ComposerModel *composer() { return &m_composer; }
    [[nodiscard]] ChatLinks *links() { return &m_links; }
    /** The timeline has no row. */
    [[nodiscard]] bool isEmpty() const { return m_isEmpty; }

Q_SIGNALS:
    void chatChanged();
    void isEmptyChanged();
    void focusComposer(); ///< a run has ended: the composer is to take the keyboard

private:
    void updateEmpty();

    QPointer<ProjectChat> m_chat;
    TimelineModel m_timeline;
    PermissionCard m_permission;
    QuestionForm m_questions;
    RunStatus m_status;
    PendingSends m_pending;
    NoticeList m_notices;
    ComposerModel m_composer;
    ChatLinks m_links;
    bool m_isEmpty = true;
};

} // namespace Vesk
