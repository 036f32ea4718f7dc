// Any bytes, however they arrive, give lines, and any line gives a record or none: the same one whether it is
// read where it lies or from a copy.
#include "base/LineChunker.h"
#include "claude/StreamEventKind.h"
#include "claude/StreamLine.h"

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace
{

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace Vesk;
    if (size == 0)
        return 0;
    const qsizetype step = data[0] % 64 + 1; // how many bytes arrive at a time
    const QByteArrayView bytes(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);

    static StreamDecoder inPlace;
    static StreamDecoder copying;
    LineChunker chunker;
    const auto sink = [](std::string_view line) {
        const auto decoded = inPlace.decode(line, true);
        const auto again = copying.decode(std::string(line));
        expect(decoded.has_value() == again.has_value());
        if (!decoded)
            return;
        expect(decoded->type == again->type && classify(*decoded) == classify(*again));
        if (decoded->message && decoded->message->content.size() > 0)
            expect(decoded->message->content[0].resultText() == again->message->content[0].resultText());
    };
    for (qsizetype at = 0; at < bytes.size(); at += step)
        chunker.append(bytes.sliced(at, std::min(step, bytes.size() - at)), sink);
    chunker.finish(sink);
    return 0;
}
