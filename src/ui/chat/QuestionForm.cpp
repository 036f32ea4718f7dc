#include "ui/chat/QuestionForm.h"

#include "sessions/ProjectChat.h"

#include <algorithm>

namespace Vesk
{

QuestionOptions::QuestionOptions(const QuestionRequest::Question &question, int firstDigit, QObject *parent)
    : QAbstractListModel(parent)
    , m_question(question)
    , m_firstDigit(firstDigit)
    , m_chosen(question.options.size(), false)
{
}

bool QuestionOptions::anyChosen() const
{
    return m_chosen.contains(true);
}

QStringList QuestionOptions::chosenLabels() const
{
    QStringList labels;
    for (qsizetype i = 0; i < m_chosen.size(); ++i) {
        if (m_chosen.at(i)) {
            labels << m_question.options.at(i).label;
        }
    }
    return labels;
}

void QuestionOptions::choose(int index)
{
    if (index < 0 || index >= m_chosen.size()) {
        return;
    }
    if (isMulti()) {
        setChosen(index, !m_chosen.at(index));
        return;
    }
    clear();
    setChosen(index, true);
}

void QuestionOptions::clear()
{
    for (int i = 0; i < m_chosen.size(); ++i) {
        setChosen(i, false);
    }
}

int QuestionOptions::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_chosen.size());
}

QVariant QuestionOptions::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &option = m_question.options.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case LabelRole:
        return option.label;
    case DescriptionRole:
        return option.description.value_or(QString());
    case DigitRole:
        return m_firstDigit + index.row() <= 9 ? QString::number(m_firstDigit + index.row()) : QString();
    case ChosenRole:
        return m_chosen.at(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> QuestionOptions::roleNames() const
{
    return {
        {LabelRole, "label"}, {DescriptionRole, "description"}, {DigitRole, "digit"}, {ChosenRole, "chosen"}};
}

void QuestionOptions::setChosen(int index, bool chosen)
{
    if (m_chosen.at(index) != chosen) {
        m_chosen[index] = chosen;
        const auto changed = this->index(index);
        Q_EMIT dataChanged(changed, changed, {ChosenRole});
    }
}

QuestionForm::QuestionForm(QObject *parent)
    : QAbstractListModel(parent)
{
}

QuestionForm::~QuestionForm() = default;

void QuestionForm::setChat(ProjectChat *chat)
{
    if (m_chat) {
        disconnect(m_chat, nullptr, this, nullptr);
    }
    m_chat = chat;
    m_guard = {};
    if (m_chat) {
        connect(m_chat, &ProjectChat::pendingPromptChanged, this, &QuestionForm::update);
    }
    update();
}

QString QuestionForm::title() const
{
    if (m_entries.size() > 1) {
        return QStringLiteral("에이전트가 %1가지를 물었습니다").arg(m_entries.size());
    }
    return QStringLiteral("에이전트가 결정을 물었습니다");
}

QString QuestionForm::remoteText() const
{
    return m_request && m_request->remote
        ? QStringLiteral("메신저에서 시작된 턴 — 답은 이 머신에서만 만듭니다")
        : QString();
}

QDateTime QuestionForm::since() const
{
    return m_chat ? m_chat->promptSince() : QDateTime();
}

bool QuestionForm::allAnswered() const
{
    return !m_entries.empty() && answeredCount() == static_cast<int>(m_entries.size());
}

int QuestionForm::answeredCount() const
{
    return static_cast<int>(
        std::count_if(m_entries.begin(), m_entries.end(), [](const auto &each) { return each.answered(); }));
}

QString QuestionForm::progressText() const
{
    return QStringLiteral("%1개 중 %2개 답함").arg(m_entries.size()).arg(answeredCount());
}

void QuestionForm::choose(int question, int option)
{
    if (auto *chosen = entry(question)) {
        chosen->options->choose(option);
        chosen->otherChosen = chosen->otherChosen && chosen->options->isMulti();
        noteAnswer(question);
    }
}

void QuestionForm::chooseOther(int question, bool chosen)
{
    if (auto *target = entry(question); target && target->otherChosen != chosen) {
        target->otherChosen = chosen;
        if (chosen && !target->options->isMulti()) {
            target->options->clear();
        }
        noteAnswer(question);
    }
}

void QuestionForm::setOther(int question, const QString &text)
{
    auto *target = entry(question);
    if (!target || target->other == text) {
        return;
    }
    target->other = text;
    target->otherChosen = !text.trimmed().isEmpty();
    if (target->otherChosen && !target->options->isMulti()) {
        target->options->clear();
    }
    noteAnswer(question);
}

bool QuestionForm::chooseDigit(int digit)
{
    int first = 1;
    for (int i = 0; i < rowCount(); ++i) {
        const int count = m_entries[static_cast<size_t>(i)].options->rowCount();
        if (digit >= first && digit < first + count) {
            choose(i, digit - first);
            return true;
        }
        first += count;
    }
    return false;
}

void QuestionForm::sendAnswers()
{
    if (m_chat && m_request && allAnswered()) {
        m_guard.noteAnswered();
        m_chat->respondToQuestion(answers());
    }
}

void QuestionForm::skip()
{
    if (m_chat && m_request && m_guard.takesAnswers()) {
        m_guard.noteAnswered();
        m_chat->respondToQuestion(QList<QuestionAnswer>(m_request->questions.size()));
    }
}

QList<QuestionAnswer> QuestionForm::answers() const
{
    QList<QuestionAnswer> list;
    for (const auto &each : m_entries) {
        list.append({each.options->chosenLabels(), each.otherCounts() ? each.other : QString()});
    }
    return list;
}

int QuestionForm::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant QuestionForm::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const auto &each = m_entries[static_cast<size_t>(index.row())];
    switch (role) {
    case HeaderRole:
        return each.options->question().header;
    case Qt::DisplayRole:
    case QuestionRole:
        return each.options->question().question;
    case MultiRole:
        return each.options->isMulti();
    case OptionsRole:
        return QVariant::fromValue(each.options.get());
    case OtherRole:
        return each.other;
    case OtherChosenRole:
        return each.otherChosen;
    default:
        return {};
    }
}

QHash<int, QByteArray> QuestionForm::roleNames() const
{
    return {{HeaderRole, "header"},   {QuestionRole, "question"}, {MultiRole, "multi"},
            {OptionsRole, "options"}, {OtherRole, "other"},       {OtherChosenRole, "otherChosen"}};
}

void QuestionForm::update()
{
    m_guard.follow(m_chat ? openPromptId(*m_chat) : QString());
    const auto now = m_chat ? m_chat->pendingQuestion() : std::nullopt;
    if (m_request == now) {
        return;
    }
    beginResetModel();
    m_request = now;
    m_entries.clear();
    int digit = 1;
    if (m_request) {
        for (const auto &question : m_request->questions) {
            m_entries.push_back({std::make_unique<QuestionOptions>(question, digit), QString(), false});
            digit += static_cast<int>(question.options.size());
        }
    }
    endResetModel();
    Q_EMIT requestChanged();
    Q_EMIT answersChanged();
}

QuestionForm::Entry *QuestionForm::entry(int question)
{
    return question >= 0 && question < rowCount() ? &m_entries[static_cast<size_t>(question)] : nullptr;
}

void QuestionForm::noteAnswer(int question)
{
    const auto changed = index(question);
    Q_EMIT dataChanged(changed, changed, {OtherRole, OtherChosenRole});
    Q_EMIT answersChanged();
}

} // namespace Vesk
