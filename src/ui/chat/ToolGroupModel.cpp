#include "ui/chat/ToolGroupModel.h"

#include "core/UsageRecorder.h"
#include "ui/chat/ChatWords.h"

#include <algorithm>

namespace Vesk
{

namespace
{

bool isFailed(const ToolActivity &tool)
{
    return tool.outcome == ToolActivity::Outcome::Failed;
}

bool isSameCall(const ToolActivity &a, const ToolActivity &b)
{
    return a.id == b.id && a.outcome == b.outcome && a.finishedAt == b.finishedAt && a.output == b.output;
}

QString summaryWithoutName(const ToolActivity &tool)
{
    const QString head = tool.name + QStringLiteral(" · ");
    if (tool.summary.startsWith(head)) {
        return tool.summary.mid(head.size());
    }
    return tool.summary == tool.name ? QString() : tool.summary;
}

QString outcomeWord(ToolActivity::Outcome outcome)
{
    switch (outcome) {
    case ToolActivity::Outcome::Running:
        return QStringLiteral("running");
    case ToolActivity::Outcome::Ok:
        return QStringLiteral("ok");
    case ToolActivity::Outcome::Failed:
        return QStringLiteral("failed");
    }
    return {};
}

QString spokenOutcome(ToolActivity::Outcome outcome)
{
    switch (outcome) {
    case ToolActivity::Outcome::Running:
        return QStringLiteral("실행 중");
    case ToolActivity::Outcome::Ok:
        return QStringLiteral("성공");
    case ToolActivity::Outcome::Failed:
        return QStringLiteral("실패");
    }
    return {};
}

qint64 spentMilliseconds(const ToolActivity &tool)
{
    return tool.finishedAt.isValid() ? std::max<qint64>(tool.startedAt.msecsTo(tool.finishedAt), 0) : 0;
}

} // namespace

bool toolGroupIsOpen(const ToolFolding &folding, bool textFollows, bool anyFailed)
{
    return folding.open.value_or(!textFollows || anyFailed);
}

QString toolCounts(const QList<ToolActivity> &tools)
{
    QList<std::pair<QString, int>> counts;
    for (const auto &tool : tools) {
        const auto known = std::find_if(counts.begin(), counts.end(),
                                        [&tool](const auto &entry) { return entry.first == tool.name; });
        if (known == counts.end()) {
            counts.append({tool.name, 1});
        } else {
            ++known->second;
        }
    }
    std::stable_sort(counts.begin(), counts.end(),
                     [](const auto &a, const auto &b) { return a.second > b.second; });
    QStringList parts;
    for (const auto &[name, count] : counts) {
        parts << QStringLiteral("%1 %2").arg(name).arg(count);
    }
    return parts.join(QStringLiteral(" · "));
}

ToolGroupModel::ToolGroupModel(std::shared_ptr<ToolFolding> folding, QObject *parent)
    : QAbstractListModel(parent)
    , m_folding(std::move(folding))
{
}

void ToolGroupModel::setTools(const QList<ToolActivity> &tools)
{
    const auto kept = std::min(m_tools.size(), tools.size());
    if (tools.size() < m_tools.size()) {
        beginRemoveRows({}, static_cast<int>(tools.size()), static_cast<int>(m_tools.size()) - 1);
        m_tools.resize(tools.size());
        endRemoveRows();
    }
    for (qsizetype i = 0; i < kept; ++i) {
        if (!isSameCall(m_tools.at(i), tools.at(i))) {
            m_tools[i] = tools.at(i);
            const auto changed = index(static_cast<int>(i));
            Q_EMIT dataChanged(changed, changed);
        }
    }
    if (tools.size() > m_tools.size()) {
        beginInsertRows({}, static_cast<int>(m_tools.size()), static_cast<int>(tools.size()) - 1);
        m_tools.append(tools.mid(m_tools.size()));
        endInsertRows();
    }
    Q_EMIT summaryChanged();
    updateOpen();
}

void ToolGroupModel::setTextFollows(bool follows)
{
    m_textFollows = follows;
    updateOpen();
}

QString ToolGroupModel::title() const
{
    return QStringLiteral("도구 %1개").arg(m_tools.size());
}

QString ToolGroupModel::counts() const
{
    return toolCounts(m_tools);
}

QString ToolGroupModel::failures() const
{
    const int count = failureCount();
    return count > 0 ? QStringLiteral("실패 %1").arg(count) : QString();
}

QString ToolGroupModel::total() const
{
    if (isRunning()) {
        return {};
    }
    qint64 sum = 0;
    for (const auto &tool : m_tools) {
        sum += spentMilliseconds(tool);
    }
    return sum > 0 ? ChatWords::duration(sum) : QString();
}

QString ToolGroupModel::accessibleText() const
{
    QStringList parts {title(), counts()};
    for (const auto &part : {failures(), total()}) {
        if (!part.isEmpty()) {
            parts << part;
        }
    }
    return parts.join(QStringLiteral(", "));
}

bool ToolGroupModel::isRunning() const
{
    return std::any_of(m_tools.begin(), m_tools.end(),
                       [](const auto &tool) { return tool.outcome == ToolActivity::Outcome::Running; });
}

void ToolGroupModel::toggle()
{
    m_folding->open = !m_isOpen;
    updateOpen();
}

void ToolGroupModel::toggleOutput(int index)
{
    if (index < 0 || index >= m_tools.size() || !m_tools.at(index).output) {
        return;
    }
    const auto &tool = m_tools.at(index);
    const bool open = !outputIsOpen(tool);
    m_folding->outputs.insert(tool.id, open);
    // A group whose lines are being read must not fold under the reader when the next text begins.
    m_folding->open = m_isOpen;
    if (open) {
        UsageRecorder::record(FeatureSignal::ToolActivityExpanded);
    }
    const auto changed = this->index(index);
    Q_EMIT dataChanged(changed, changed, {OutputOpenRole});
}

int ToolGroupModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_tools.size());
}

QVariant ToolGroupModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &tool = m_tools.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return tool.name;
    case SummaryRole:
        return summaryWithoutName(tool);
    case OutcomeRole:
        return outcomeWord(tool.outcome);
    case DurationRole:
        return tool.finishedAt.isValid() ? ChatWords::duration(spentMilliseconds(tool)) : QString();
    case OutputRole:
        return tool.output.value_or(QString());
    case HasOutputRole:
        return tool.output.has_value();
    case OutputOpenRole:
        return outputIsOpen(tool);
    case AccessibleTextRole:
        return QStringLiteral("%1, %2, %3")
            .arg(tool.name, summaryWithoutName(tool), spokenOutcome(tool.outcome));
    default:
        return {};
    }
}

QHash<int, QByteArray> ToolGroupModel::roleNames() const
{
    return {{NameRole, "name"},
            {SummaryRole, "summary"},
            {OutcomeRole, "outcome"},
            {DurationRole, "duration"},
            {OutputRole, "output"},
            {HasOutputRole, "hasOutput"},
            {OutputOpenRole, "outputOpen"},
            {AccessibleTextRole, "accessibleText"}};
}

int ToolGroupModel::failureCount() const
{
    return static_cast<int>(std::count_if(m_tools.begin(), m_tools.end(), isFailed));
}

bool ToolGroupModel::outputIsOpen(const ToolActivity &tool) const
{
    // What went wrong is shown without being asked for.
    return tool.output && m_folding->outputs.value(tool.id, isFailed(tool));
}

void ToolGroupModel::updateOpen()
{
    const bool open = toolGroupIsOpen(*m_folding, m_textFollows, failureCount() > 0);
    if (open != m_isOpen) {
        m_isOpen = open;
        Q_EMIT isOpenChanged();
    }
}

} // namespace Vesk
