#include "git/GitStatusReader.h"

#include <algorithm>
#include <vector>

namespace Vesk::GitStatusReader
{
namespace
{

constexpr int none = -1;

/** Tells most hashes apart without a look at their text. Never 0, which stands for a free lane. */
quint64 keyOf(const QString &hash)
{
    constexpr qsizetype enough = 16;
    constexpr quint64 factor = 1'099'511'628'211U;
    quint64 key = 0;
    for (const QChar c : QStringView(hash).first(std::min(hash.size(), enough)))
        key = (key ^ c.unicode()) * factor;
    return key | 1U;
}

/** Lane by lane, the commit that it waits for. A graph is seldom wide, so looking at every lane is the
 * fastest. */
class Lanes
{
public:
    /** Where a commit is waited for: at most one lane does. */
    [[nodiscard]] int laneOf(const QString &hash) const
    {
        const quint64 key = keyOf(hash);
        for (auto at = m_keys.begin(); (at = std::find(at, m_keys.end(), key)) != m_keys.end(); ++at) {
            if (m_hashes[static_cast<std::size_t>(at - m_keys.begin())] == hash)
                return static_cast<int>(at - m_keys.begin());
        }
        return none;
    }

    /** The lane of a commit, which is free from then on. */
    int take(const QString &hash)
    {
        const int lane = laneOf(hash);
        if (lane == none)
            return firstFree();
        m_keys[static_cast<std::size_t>(lane)] = free;
        ++m_freeCount;
        return lane;
    }

    void wait(int lane, const QString &hash)
    {
        m_keys[static_cast<std::size_t>(lane)] = keyOf(hash);
        m_hashes[static_cast<std::size_t>(lane)] = hash;
        --m_freeCount;
    }

    /** A new one when none is free. */
    int firstFree()
    {
        if (m_freeCount == 0) {
            m_keys.push_back(free);
            m_hashes.emplace_back();
            m_freeCount = 1;
            return count() - 1;
        }
        return static_cast<int>(std::ranges::find(m_keys, free) - m_keys.begin());
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_keys.size()); }

    void trim()
    {
        for (; !m_keys.empty() && m_keys.back() == free; --m_freeCount) {
            m_keys.pop_back();
            m_hashes.pop_back();
        }
    }

private:
    static constexpr quint64 free = 0;

    std::vector<quint64> m_keys;
    std::vector<QString> m_hashes; // of a free lane the last one
    int m_freeCount = 0;
};

} // namespace

QList<GraphRow> layout(const QList<GitCommit> &commits)
{
    QList<GraphRow> rows;
    rows.reserve(commits.size());
    Lanes lanes;
    for (const GitCommit &commit : commits) {
        GraphRow row {.commit = commit, .lane = lanes.take(commit.hash)};
        bool isFirst = true;
        for (const QString &parent : commit.parents) {
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
