// What the composer shows beside its text.
#pragma once

#include "sessions/SentMessages.h"
#include "ui/chat/AttachmentList.h"
#include "ui/chat/ComposerCompletion.h"
#include "ui/chat/PickerModel.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

class ProjectChat;
struct ContextLive;

/** A context gauge in words: the percentage and the two sizes; while the window is unknown there is no
   percentage, and "?" stands for its size; before the first answer "?" is all there is. */
struct ContextGauge {
    double percent = 0; ///< 0 while the window is unknown
    QString percentText;
    QString sizeText;
    QString modelText; ///< the model's short name; empty while unknown
    QString help;      ///< the same in full numbers
    bool operator==(const ContextGauge &) const = default;
};

[[nodiscard]] ContextGauge contextGauge(const std::optional<ContextLive> &live);

/** The pickers, the attachments, the context gauge and the two buttons. The draft itself is the session's. */
class ComposerModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(Vesk::PickerModel *models READ models CONSTANT)
    Q_PROPERTY(Vesk::PickerModel *efforts READ efforts CONSTANT)
    Q_PROPERTY(Vesk::PickerModel *modes READ modes CONSTANT)
    Q_PROPERTY(Vesk::AttachmentList *attachments READ attachments CONSTANT)
    Q_PROPERTY(Vesk::ComposerCompletion *completion READ completion CONSTANT)
    Q_PROPERTY(int caret READ caret WRITE setCaret)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)
    Q_PROPERTY(bool canStop READ canStop NOTIFY canStopChanged)
    Q_PROPERTY(double contextPercent READ contextPercent NOTIFY contextChanged)
    Q_PROPERTY(QString contextPercentText READ contextPercentText NOTIFY contextChanged)
    Q_PROPERTY(QString contextSizeText READ contextSizeText NOTIFY contextChanged)
    Q_PROPERTY(QString contextModelText READ contextModelText NOTIFY contextChanged)
    Q_PROPERTY(QString contextHelp READ contextHelp NOTIFY contextChanged)

public:
    explicit ComposerModel(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] PickerModel *models() { return &m_models; }
    [[nodiscard]] PickerModel *efforts() { return &m_efforts; }
    [[nodiscard]] PickerModel *modes() { return &m_modes; }
    [[nodiscard]] AttachmentList *attachments() { return &m_attachments; }
    [[nodiscard]] ComposerCompletion *completion() { return &m_completion; }
    [[nodiscard]] QString draft() const;
    void setDraft(const QString &draft);
    /** Where the draft's caret stands, in UTF-16 units. */
    [[nodiscard]] int caret() const;
    void setCaret(int caret);
    [[nodiscard]] bool canSend() const;
    [[nodiscard]] bool canStop() const;
    [[nodiscard]] double contextPercent() const { return m_gauge.percent; }
    [[nodiscard]] QString contextPercentText() const { return m_gauge.percentText; }
    [[nodiscard]] QString contextSizeText() const { return m_gauge.sizeText; }
    [[nodiscard]] QString contextModelText() const { return m_gauge.modelText; }
    [[nodiscard]] QString contextHelp() const { return m_gauge.help; }

    /** Sends the draft and its attachments, or queues them while a turn runs. False when nothing was sent:
       there is nothing, an attachment is gone, or a picture is still being saved, which it then waits for. */
    Q_INVOKABLE bool send();
    /** Puts an older or newer sent message into the composer; false when the key is the editor's own. */
    bool recall(bool older, const QString &text, int caret);

Q_SIGNALS:
    void draftChanged();
    void canSendChanged();
    void canStopChanged();
    void contextChanged();
    void sent();

private:
    void updateGauge();
    void onSavingEnded(bool whole);

    QPointer<ProjectChat> m_chat;
    PickerModel m_models;
    PickerModel m_efforts;
    PickerModel m_modes;
    AttachmentList m_attachments;
    ContextGauge m_gauge;
    ComposerCompletion m_completion;
    SentMessageWalk m_walk;
    bool m_sendsWhenSaved = false;
};

} // namespace Vesk
