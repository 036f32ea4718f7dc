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
    if (m_chat) {
        m_chat->setComposerInput(draft);
    }
}

bool ComposerModel::canSend() const
{
    return m_chat && (!m_chat->composerInput().trimmed().isEmpty() || !m_chat->attachments().isEmpty());
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
    m_attachments.clearRefusal();
    m_chat->send(m_chat->composerInput());
    return true;
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
