// Any bytes are a transcript: however they arrive, the title is the one that reading every line gives. Any
// bytes are a workflow's snapshot or none.
#include "base/Text.h"
#include "claude/TranscriptLine.h"
#include "claude/TranscriptTitle.h"
#include "claude/WorkflowSnapshot.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace
{

using namespace Vesk;

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

std::optional<QString> plainTitle(const QByteArray &bytes)
{
    static TranscriptDecoder decoder;
    std::optional<QString> candidate;
    for (const QByteArray &text : bytes.split('\n')) {
        const auto line = decoder.decode({text.constData(), static_cast<std::size_t>(text.size())});
        if (!line)
            continue;
        if (line->aiTitle && !Text::trimWhitespace(*line->aiTitle).isEmpty())
            return Text::firstCharacters(*line->aiTitle, maxTitleCharacters);
        const QString said = Text::trimWhitespace(line->text.value_or(QString()));
        if (!candidate && line->type == QStringLiteral("user") && !said.isEmpty())
            candidate = Text::firstCharacters(QString(said).replace(u'\n', u' '), maxTitleCharacters);
    }
    return candidate;
}

std::optional<QString> scannedTitle(const QByteArray &bytes, qsizetype step)
{
    static TitleScan scan;
    scan.reset();
    for (qsizetype at = 0; at < bytes.size(); at += step) {
        const qsizetype count = std::min(step, bytes.size() - at);
        std::memcpy(scan.room(), bytes.constData() + at, static_cast<std::size_t>(count));
        if (scan.take(count))
            break;
    }
    return scan.finish();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    const auto title = scannedTitle(bytes, data[0] % 64 + 1);
    // The scan knows keys and types by their bytes; the program that writes them never escapes those.
    if (!bytes.contains("\\u"))
        expect(title == plainTitle(bytes));
    (void)decodeWorkflowSnapshot(bytes);
    return 0;
}
