// Any bytes are a log: its commits get lanes that keep their promises.
#include "git/GitStatusReader.h"

#include <QHash>

#include <cstdint>
#include <cstdlib>

namespace
{

using namespace Vesk;

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto commits = GitStatusReader::parseLog(bytes);
    const auto rows = GitStatusReader::layout(commits);
    expect(rows.size() == commits.size());
    QHash<int, QString> waiting;
    for (const auto &row : rows) {
        expect(!row.commit.hash.isEmpty() && row.lane >= 0 && row.lane < row.laneCount);
        expect(waiting.value(row.lane, row.commit.hash) == row.commit.hash);
        waiting.remove(row.lane);
        expect(row.parentLanes.size() == row.commit.parents.size());
        for (qsizetype i = 0; i < row.parentLanes.size(); ++i) {
            const int lane = row.parentLanes[i];
            expect(lane >= 0 && lane < row.laneCount);
            expect(waiting.value(lane, row.commit.parents[i]) == row.commit.parents[i]);
            waiting.insert(lane, row.commit.parents[i]);
        }
    }
    const auto history = GitStatusReader::history(bytes, bytes, 3);
    expect(history.rows.size() <= 3 && history.truncated == (commits.size() > 3));
    expect(history.rows == rows.first(history.rows.size()));
    (void)GitStatusReader::headOutsideGraph(rows, history.graphRows);
    const QString text = QString::fromUtf8(bytes);
    (void)GitStatusReader::parseAheadBehind(text);
    (void)GitStatusReader::parseBranches(text, QStringLiteral("main"));
    return 0;
}
