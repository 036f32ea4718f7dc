// Any bytes are a diff: within its limits, with all that is left out counted, and every mark inside its line.
#include "git/GitDiff.h"

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

void look(const QList<GitWordDiff::Range> &ranges, qsizetype size)
{
    qsizetype behind = -1;
    for (const GitWordDiff::Range &range : ranges) {
        expect(range.start > behind && range.length > 0);
        behind = range.start + range.length;
        expect(behind <= size);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const qsizetype lineLimit = data[0];
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    constexpr qsizetype byteLimit = 40;
    GitDiff::FileDiff diff = GitDiff::parse(bytes, lineLimit, byteLimit);
    expect(diff.content.lines.size() <= lineLimit);
    for (const GitDiff::Line &line : diff.content.lines)
        expect(line.text.toUtf8().size() <= byteLimit);

    const GitDiff::FileDiff whole = GitDiff::parse(bytes, bytes.size() + 1, bytes.size() * 3);
    if (whole.content.kind == GitDiff::Content::Kind::Lines) {
        expect(diff.content.lines.size() + diff.omittedLines == whole.content.lines.size());
        expect(diff.added == whole.added && diff.removed == whole.removed);
    }
    GitWordDiff::emphasise(diff.content.lines);
    for (const GitDiff::Line &line : diff.content.lines)
        look(line.emphasis, line.text.size());
    (void)GitDiff::assemble(0, bytes, bytes.size() + 1, {}, {0});
    return 0;
}
