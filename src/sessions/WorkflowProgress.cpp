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
    const auto known = std::find_if(phases.begin(), phases.end(),
                                    [&](const Phase &phase) { return phase.index == *entry.index; });
    if (known != phases.end())
        known->title = cut(*entry.title);
    else
        phases.append({*entry.index, cut(*entry.title)});
    return true;
}

void WorkflowProgress::applyAgent(const Entry &entry)
{
    auto agent = agents.end();
    if (entry.index) {
        agent = std::find_if(agents.begin(), agents.end(),
                             [&](const Agent &known) { return known.index == *entry.index; });
    }
    if (agent == agents.end()) {
        if (agents.size() >= maxAgents) {
            if (!entry.index || *entry.index > m_highestDropped) {
                ++droppedAgents;
                m_highestDropped = entry.index.value_or(m_highestDropped);
            }
            return;
        }
        Agent added;
        added.index = entry.index.value_or(agents.size());
        agents.append(added);
        agent = agents.end() - 1;
    }
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
    for (const Phase &phase : std::as_const(ordered))
        rows.append({phase.index, phase.title, 0, 0, {}});

    PhaseRow others;
    for (const Agent &agent : sortedAgents()) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const PhaseRow &candidate) {
            return agent.phaseIndex && candidate.index == agent.phaseIndex;
        });
        PhaseRow &target = row != rows.end() ? *row : others;
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
