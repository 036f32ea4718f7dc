#include "ui/chat/PickerModel.h"

#include "sessions/ProjectChat.h"

namespace Vesk
{

namespace
{

QString modeDescription(AgentPermissionMode mode)
{
    switch (mode) {
    case AgentPermissionMode::Plan:
        return QStringLiteral("계획만, 실행 안 함");
    case AgentPermissionMode::Readonly:
        return QStringLiteral("필요할 때마다 물어봄 (읽기는 안 물어봄)");
    case AgentPermissionMode::DontAsk:
        return QStringLiteral("미리 허용한 도구만 — 나머지는 묻지 않고 거부");
    case AgentPermissionMode::AcceptEdits:
        return QStringLiteral("파일을 바꾸는 것은 자동 허용 (삭제 포함) · 네트워크는 물어봄");
    case AgentPermissionMode::Auto:
        return QStringLiteral("분류기가 대신 승인 — 위험한 것만 물어봄");
    case AgentPermissionMode::Full:
        return QStringLiteral("모든 도구 허용 — 확인 없이 실행 (네트워크 포함)");
    }
    return {};
}

QString modeIcon(AgentPermissionMode mode)
{
    switch (mode) {
    case AgentPermissionMode::Plan:
        return QStringLiteral("mode-plan");
    case AgentPermissionMode::Readonly:
        return QStringLiteral("mode-manual");
    case AgentPermissionMode::DontAsk:
        return QStringLiteral("mode-dont-ask");
    case AgentPermissionMode::AcceptEdits:
        return QStringLiteral("mode-accept-edits");
    case AgentPermissionMode::Auto:
        return QStringLiteral("mode-auto");
    case AgentPermissionMode::Full:
        return QStringLiteral("mode-full");
    }
    return {};
}

AgentPermissionMode modeAt(int row)
{
    return allPermissionModes.at(static_cast<size_t>(row));
}

template <typename Values, typename Value>
int rowOf(const Values &values, Value value)
{
    for (size_t i = 0; i < values.size(); ++i) {
        if (values.at(i) == value) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace

PickerModel::PickerModel(Subject subject, QObject *parent)
    : QAbstractListModel(parent)
    , m_subject(subject)
{
}

void PickerModel::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    if (m_chat) {
        switch (m_subject) {
        case Subject::Model:
            connect(m_chat, &ProjectChat::modelChanged, this, &PickerModel::noteChosen);
            break;
        case Subject::Effort:
            connect(m_chat, &ProjectChat::effortChanged, this, &PickerModel::noteChosen);
            break;
        case Subject::Mode:
            connect(m_chat, &ProjectChat::permissionModeChanged, this, &PickerModel::noteChosen);
            break;
        }
    }
    noteChosen();
}

QString PickerModel::label() const
{
    return chosen() >= 0 ? labelOf(chosen()) : QString();
}

QString PickerModel::help() const
{
    switch (m_subject) {
    case Subject::Model:
        return QStringLiteral("모델 선택 — %1\n각 항목은 그 계열의 최신 모델로 실행됩니다").arg(label());
    case Subject::Effort:
        return QStringLiteral("추론 강도(effort) — 높을수록 더 깊이 사고(느리고 비쌈)");
    case Subject::Mode:
        if (const auto stale = m_chat ? m_chat->stalePermissionMode() : std::nullopt) {
            return QStringLiteral("권한 모드 — 지금 도는 프로세스엔 적용되지 않습니다(현재 %1 실행 중). "
                                  "배경 작업을 중단하면 다음 메시지부터 적용됩니다")
                .arg(Vesk::label(*stale));
        }
        return QStringLiteral("권한 모드 — 에이전트의 도구 자율도를 고릅니다 (다음 메시지부터 적용)");
    }
    return {};
}

int PickerModel::chosen() const
{
    if (!m_chat) {
        return -1;
    }
    switch (m_subject) {
    case Subject::Model:
        return rowOf(allModels, m_chat->model());
    case Subject::Effort:
        return rowOf(allEfforts, m_chat->effort());
    case Subject::Mode:
        return rowOf(allPermissionModes, m_chat->permissionMode());
    }
    return -1;
}

QString PickerModel::icon() const
{
    return m_subject == Subject::Mode && chosen() >= 0 ? modeIcon(modeAt(chosen())) : QString();
}

QString PickerModel::drift() const
{
    const auto stale = m_subject == Subject::Mode && m_chat ? m_chat->stalePermissionMode() : std::nullopt;
    return stale
        ? QStringLiteral("지금 세션은 %1로 실행 중 — 변경은 새 프로세스부터").arg(Vesk::label(*stale))
        : QString();
}

void PickerModel::choose(int row)
{
    if (!m_chat || row < 0 || row >= rowCount()) {
        return;
    }
    const auto position = static_cast<size_t>(row);
    switch (m_subject) {
    case Subject::Model:
        m_chat->setModel(allModels.at(position));
        break;
    case Subject::Effort:
        m_chat->setEffort(allEfforts.at(position));
        break;
    case Subject::Mode:
        m_chat->setPermissionMode(allPermissionModes.at(position));
        break;
    }
}

int PickerModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid()) {
        return 0;
    }
    switch (m_subject) {
    case Subject::Model:
        return static_cast<int>(allModels.size());
    case Subject::Effort:
        return static_cast<int>(allEfforts.size());
    case Subject::Mode:
        return static_cast<int>(allPermissionModes.size());
    }
    return 0;
}

QVariant PickerModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const bool isMode = m_subject == Subject::Mode;
    switch (role) {
    case Qt::DisplayRole:
    case LabelRole:
        return labelOf(index.row());
    case DescriptionRole:
        return isMode ? modeDescription(modeAt(index.row())) : QString();
    case IconRole:
        return isMode ? modeIcon(modeAt(index.row())) : QString();
    case ChosenRole:
        return index.row() == chosen();
    case SeparatedRole:
        return isMode && modeAt(index.row()) == AgentPermissionMode::Full;
    default:
        return {};
    }
}

QHash<int, QByteArray> PickerModel::roleNames() const
{
    return {{LabelRole, "label"},
            {DescriptionRole, "description"},
            {IconRole, "icon"},
            {ChosenRole, "chosen"},
            {SeparatedRole, "separated"}};
}

QString PickerModel::labelOf(int row) const
{
    const auto position = static_cast<size_t>(row);
    switch (m_subject) {
    case Subject::Model:
        return Vesk::label(allModels.at(position));
    case Subject::Effort:
        return Vesk::label(allEfforts.at(position));
    case Subject::Mode:
        return Vesk::label(allPermissionModes.at(position));
    }
    return {};
}

void PickerModel::noteChosen()
{
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {ChosenRole});
    Q_EMIT chosenChanged();
}

} // namespace Vesk
