#include "sessions/WorkflowProgress.h"

#include "base/Text.h"

#include <algorithm>
#include <numeric>

namespace Vesk
{

namespace
{

QString cut(const QString &text)
{
    return Text::firstCharacters(text, WorkflowProgress::maxLabelCharacters);
}

template <typename T>
void takeOver(std::optional<T> &target, const std::optional<T> &change)
{
    if (change)
        target = change;
}

} // namespace

std::optional<WorkflowProgress> WorkflowProgress::make(const QList<Entry> &entries)
{
    WorkflowProgress progress;
    if (!progress.apply(entries))
        return std::nullopt;
    return progress;
}

bool WorkflowProgress::apply(const QList<Entry> &entries)
{
    bool taken = false;
    for (const Entry &entry : entries) {
        if (entry.type == u"workflow_phase") {
            taken |= applyPhase(entry);
        } else if (entry.type == u"workflow_agent") {
            applyAgent(entry);
            taken = true;
        }
    }
    return taken;
}

bool WorkflowProgress::applyPhase(const Entry &entry)
{
    if (!entry.index || !entry.title)
        return false;
    if (const auto place = m_phasePlaces.constFind(*entry.index); place != m_phasePlaces.constEnd()) {
        phases[*place].title = cut(*entry.title);
    } else {
        m_phasePlaces.insert(*entry.index, phases.size());
        phases.append({*entry.index, cut(*entry.title)});
    }
    return true;
}

WorkflowProgress::Agent *WorkflowProgress::agentFor(const Entry &entry)
{
    if (entry.index) {
        if (const auto place = m_agentPlaces.constFind(*entry.index); place != m_agentPlaces.constEnd())
            return &agents[*place];
    }
    if (agents.size() >= maxAgents) {
        if (!entry.index) {
            ++droppedAgents;
        } else if (!m_dropped.contains(*entry.index)) {
            m_dropped.insert(*entry.index);
            ++droppedAgents;
        }
        return nullptr;
    }
    Agent added;
    added.index = entry.index.value_or(agents.size());
    while (m_agentPlaces.contains(added.index)) // one that came without an index shares none
        ++added.index;
    m_agentPlaces.insert(added.index, agents.size());
    agents.append(added);
    return &agents.last();
}

void WorkflowProgress::applyAgent(const Entry &entry)
{
    Agent *agent = agentFor(entry);
    if (!agent)
        return;
    if (entry.label)
        agent->label = cut(*entry.label);
    if (entry.phaseTitle)
        agent->phaseTitle = cut(*entry.phaseTitle);
    if (entry.state)
        agent->stateRaw = *entry.state;
    takeOver(agent->phaseIndex, entry.phaseIndex);
    takeOver(agent->model, entry.model);
    takeOver(agent->tokens, entry.tokens);
    takeOver(agent->toolCalls, entry.toolCalls);
    takeOver(agent->durationMs, entry.durationMs);
    takeOver(agent->attempt, entry.attempt);
}

QList<WorkflowProgress::PhaseRow> WorkflowProgress::phaseRows() const
{
    QList<Phase> ordered = phases;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Phase &a, const Phase &b) { return a.index < b.index; });
    QList<PhaseRow> rows;
    rows.reserve(ordered.size() + 1);
    QHash<qint64, qsizetype> places;
    for (const Phase &phase : std::as_const(ordered)) {
        places.insert(phase.index, rows.size());
        rows.append({phase.index, phase.title, 0, 0, {}});
    }

    PhaseRow others;
    others.title = QStringLiteral("기타");
    for (const Agent &agent : sortedAgents()) {
        const qsizetype place = agent.phaseIndex ? places.value(*agent.phaseIndex, -1) : -1;
        PhaseRow &target = place >= 0 ? rows[place] : others;
        target.agents.append(agent);
        ++target.total;
        target.done += agent.stateRaw == u"done" ? 1 : 0;
    }
    if (others.total > 0)
        rows.append(others);
    return rows;
}

QList<WorkflowProgress::Agent> WorkflowProgress::sortedAgents() const
{
    QList<Agent> sorted = agents;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Agent &a, const Agent &b) { return a.index < b.index; });
    return sorted;
}

qint64 WorkflowProgress::totalTokens() const
{
    return std::accumulate(agents.cbegin(), agents.cend(), qint64(0),
                           [](qint64 sum, const Agent &agent) { return sum + agent.tokens.value_or(0); });
}

} // namespace Vesk
