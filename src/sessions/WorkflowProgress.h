// The phases and agents of a multi-agent workflow.
#pragma once

#include "claude/StreamLine.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace Vesk
{

/** What is known of a workflow's course. The stream tells changes only; apply() takes them in. */
struct WorkflowProgress {
    using Entry = StreamWorkflowEntry;

    static constexpr qsizetype maxAgents = 2000;
    static constexpr qsizetype maxLabelCharacters = 200;

    struct Phase {
        qint64 index = 0;
        QString title;
        bool operator==(const Phase &) const = default;
    };

    struct Agent {
        qint64 index = 0;
        QString label;
        std::optional<qint64> phaseIndex;
        std::optional<QString> phaseTitle, model;
        QString stateRaw;
        std::optional<qint64> tokens, toolCalls, durationMs, attempt;
        bool operator==(const Agent &) const = default;
    };

    /** One phase for the panel. */
    struct PhaseRow {
        std::optional<qint64> index; ///< absent for the row of agents without a known phase
        QString title;               ///< "기타" for that row
        int done = 0, total = 0;
        QList<Agent> agents; ///< by index
    };

    QList<Phase> phases;
    QList<Agent> agents;   ///< each with an index of its own
    int droppedAgents = 0; ///< agents beyond maxAgents

    /** The progress that these entries alone tell; absent when none of them could be used. */
    [[nodiscard]] static std::optional<WorkflowProgress> make(const QList<Entry> &entries);

    /** Takes changes in: a known phase or agent (by its index) is updated, another one added. True when an
        entry could be used. */
    bool apply(const QList<Entry> &entries);

    /** A row per phase in the order of their indexes, then one for agents without a known phase, if any. */
    [[nodiscard]] QList<PhaseRow> phaseRows() const;
    [[nodiscard]] QList<Agent> sortedAgents() const;
    [[nodiscard]] qint64 totalTokens() const;

    bool operator==(const WorkflowProgress &) const = default;

private:
    bool applyPhase(const Entry &entry);
    void applyAgent(const Entry &entry);
    [[nodiscard]] Agent *agentFor(const Entry &entry);

    // Where an index stands in the lists: lines come by the thousand, and each names a few of many.
    QHash<qint64, qsizetype> m_phasePlaces, m_agentPlaces;
    QSet<qint64> m_dropped; // the changes of one dropped agent must not count it again
};

} // namespace Vesk
