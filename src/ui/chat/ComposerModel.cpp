#include "ui/chat/ComposerModel.h"

#include "sessions/ProjectChat.h"
#include "ui/chat/ChatWords.h"

#include <QLocale>

#include <cmath>

namespace Vesk
{

ContextGauge contextGauge(const std::optional<ContextLive> &live)
{
    ContextGauge gauge;
    if (!live) {
        gauge.sizeText = QStringLiteral("?");
        gauge.help = QStringLiteral("컨텍스트 — 첫 답이 오면 얼마나 찼는지 보입니다");
        return gauge;
    }
    const QLocale numbers(QLocale::Korean);
    const auto used = ChatWords::tokens(live->tokens);
    gauge.modelText = ChatWords::modelName(live->model.value_or(QString()));
    gauge.help = QStringLiteral("컨텍스트 %1").arg(numbers.toString(live->tokens));
    if (live->window.value_or(0) < 1) {
        gauge.sizeText = used + QStringLiteral(" / ?");
        gauge.help += QStringLiteral(" 토큰 · 창 크기는 이 턴이 끝나면 알 수 있습니다");
    } else {
        gauge.percent = 100.0 * static_cast<double>(live->tokens) / static_cast<double>(*live->window);
        gauge.percentText = QStringLiteral("%1%").arg(std::lround(gauge.percent));
        gauge.sizeText = used + QStringLiteral(" / ") + ChatWords::tokens(*live->window);
        gauge.help +=
            QStringLiteral(" / %1 토큰 (%2)").arg(numbers.toString(*live->window), gauge.percentText);
    }
    if (!gauge.modelText.isEmpty()) {
        gauge.help += QStringLiteral(" · ") + gauge.modelText;
    }
    if (live->isRestored) {
        gauge.help += QStringLiteral(" · 지난 기록");
    }
    return gauge;
}

ComposerModel::ComposerModel(QObject *parent)
    : QObject(parent)
    , m_models(PickerModel::Subject::Model, this)
    , m_efforts(PickerModel::Subject::Effort, this)
    , m_modes(PickerModel::Subject::Mode, this)
{
    connect(&m_attachments, &AttachmentList::isSavingChanged, this, &ComposerModel::canSendChanged);
    connect(&m_attachments, &AttachmentList::savingEnded, this, &ComposerModel::onSavingEnded);
}

void ComposerModel::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    m_models.setChat(chat);
    m_efforts.setChat(chat);
    m_modes.setChat(chat);
    m_attachments.setChat(chat);
    m_completion.setChat(chat);
    m_sendsWhenSaved = false;
    m_walk = {};
    if (m_chat) {
        connect(m_chat, &ProjectChat::composerInputChanged, this, &ComposerModel::draftChanged);
        connect(m_chat, &ProjectChat::composerInputChanged, this, &ComposerModel::canSendChanged);
        connect(m_chat, &ProjectChat::attachmentsChanged, this, &ComposerModel::canSendChanged);
        connect(m_chat, &ProjectChat::isRunningChanged, this, &ComposerModel::canStopChanged);
        connect(m_chat, &ProjectChat::outcomeChanged, this, &ComposerModel::updateGauge);
    }
    Q_EMIT draftChanged();
    Q_EMIT canSendChanged();
    Q_EMIT canStopChanged();
    updateGauge();
}

QString ComposerModel::draft() const
{
    return m_chat ? m_chat->composerInput() : QString();
}

void ComposerModel::setDraft(const QString &draft)
{
    if (m_chat && m_chat->composerInput() != draft) {
        m_sendsWhenSaved = false;
        m_chat->setComposerInput(draft);
    }
}

int ComposerModel::caret() const
{
    return m_chat ? static_cast<int>(m_chat->composerCaret()) : 0;
}

void ComposerModel::setCaret(int caret)
{
    if (m_chat) {
        m_chat->setComposerCaret(caret);
    }
}

bool ComposerModel::canSend() const
{
    return m_chat
        && (!m_chat->composerInput().trimmed().isEmpty() || !m_chat->attachments().isEmpty()
            || m_attachments.isSaving());
}

bool ComposerModel::canStop() const
{
    return m_chat && m_chat->isRunning();
}

bool ComposerModel::send()
{
    if (!canSend()) {
        return false;
    }
    m_completion.close();
    m_sendsWhenSaved = m_attachments.isSaving();
    if (m_sendsWhenSaved || !m_attachments.areAllThere()) {
        return false;
    }
    m_attachments.clearRefusal();
    m_walk = {};
    m_chat->send(m_chat->composerInput());
    Q_EMIT sent();
    return true;
}

void ComposerModel::onSavingEnded(bool whole)
{
    if (!whole) {
        m_sendsWhenSaved = false;
    } else if (m_sendsWhenSaved && !m_attachments.isSaving()) {
        send();
    }
}

bool ComposerModel::recall(bool older, const QString &text, int caret)
{
    if (!m_chat) {
        return false;
    }
    const auto messages = sentMessages(m_chat->messages());
    const auto shown = older ? m_walk.older(messages, text, caret) : m_walk.newer(messages, text, caret);
    if (shown) {
        setDraft(*shown);
    }
    return shown.has_value();
}

void ComposerModel::updateGauge()
{
    auto gauge = contextGauge(m_chat ? m_chat->contextLive() : std::nullopt);
    if (gauge != m_gauge) {
        m_gauge = std::move(gauge);
        Q_EMIT contextChanged();
    }
}

} // namespace Vesk
