#include "git/GitStatusReader.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace Vesk::GitStatusReader
{
namespace
{

constexpr int none = -1;

/** Lane by lane, the commit that it waits for. Commits are small numbers here, so that nothing compares text.
 */
class Lanes
{
public:
    /** The lane of a commit, which is free from then on. */
    int take(int commit)
    {
        grow(commit);
        int lane = m_laneOf[static_cast<std::size_t>(commit)];
        if (lane == none)
            return firstFree();
        m_laneOf[static_cast<std::size_t>(commit)] = none;
        m_waiting[static_cast<std::size_t>(lane)] = none;
        ++m_freeCount;
        return lane;
    }

    /** Where a parent is waited for: at most one lane does. */
    int laneOf(int commit)
    {
        grow(commit);
        return m_laneOf[static_cast<std::size_t>(commit)];
    }

    void wait(int lane, int commit)
    {
        m_waiting[static_cast<std::size_t>(lane)] = commit;
        m_laneOf[static_cast<std::size_t>(commit)] = lane;
        --m_freeCount;
    }

    /** A new one when none is free. */
    int firstFree()
    {
        if (m_freeCount == 0) {
            m_waiting.push_back(none);
            m_freeCount = 1;
            return count() - 1;
        }
        return static_cast<int>(std::ranges::find(m_waiting, none) - m_waiting.begin());
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_waiting.size()); }

    void trim()
    {
        for (; !m_waiting.empty() && m_waiting.back() == none; --m_freeCount)
            m_waiting.pop_back();
    }

private:
    void grow(int commit)
    {
        const auto needed = static_cast<std::size_t>(commit) + 1;
        if (m_laneOf.size() < needed)
            m_laneOf.resize(std::max(needed, m_laneOf.size() * 2), none);
    }

    std::vector<int> m_waiting; // by lane
    std::vector<int> m_laneOf;  // by commit
    int m_freeCount = 0;
};

class CommitNumbers
{
public:
    int of(const QString &hash)
    {
        int &numberAndOne = m_numbers[hash];
        if (numberAndOne == 0)
            numberAndOne = static_cast<int>(m_numbers.size());
        return numberAndOne - 1;
    }

private:
    QHash<QString, int> m_numbers;
};

} // namespace

QList<GraphRow> layout(const QList<GitCommit> &commits)
{
    QList<GraphRow> rows;
    rows.reserve(commits.size());
    CommitNumbers numbers;
    Lanes lanes;
    for (const GitCommit &commit : commits) {
        GraphRow row {.commit = commit, .lane = lanes.take(numbers.of(commit.hash))};
        bool isFirst = true;
        for (const QString &hash : commit.parents) {
            const int parent = numbers.of(hash);
            int lane = lanes.laneOf(parent);
            if (lane == none) {
                // The first parent goes on in the commit's own lane: that keeps the main line straight.
                lane = isFirst ? row.lane : lanes.firstFree();
                lanes.wait(lane, parent);
            }
            row.parentLanes.append(lane);
            isFirst = false;
        }
        row.laneCount = std::max(lanes.count(), row.lane + 1);
        rows.append(std::move(row));
        lanes.trim();
    }
    return rows;
}

} // namespace Vesk::GitStatusReader
