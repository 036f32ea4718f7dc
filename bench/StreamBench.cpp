// 100 MB of stream through chunker, decoder and turn machine, against simdjson parsing the same lines.
#include "base/LineChunker.h"
#include "bench/RecordedStream.h"
#include "bench/Rounds.h"
#include "sessions/ProjectChat.h"

#include <QCoreApplication>

#include <simdjson.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

using namespace Vesk;

constexpr qsizetype streamBytes = 100 * 1024 * 1024;
constexpr qsizetype batchBytes = 64 * 1024; // what a pipe holds, so the most that one wake-up reads

// The shortest time that each batch took in any round: what else runs on the machine makes a batch longer,
// never shorter.
std::vector<double> batchTimes;

void throughTheTurnMachine(const QByteArray &stream)
{
    ProjectChat chat(QUuid::createUuid(), QStringLiteral("bench"), QStringLiteral("/"),
                     QStringLiteral("bench"), {}, {});
    LineChunker chunker;
    const auto sink = [&chat](std::string_view line) { chat.handleLine(line, true); };
    batchTimes.resize(static_cast<size_t>(stream.size() / batchBytes + 1), 1e9);
    for (qsizetype at = 0; at < stream.size(); at += batchBytes) {
        const double start = Bench::now();
        chunker.append(QByteArrayView(stream).sliced(at, std::min(batchBytes, stream.size() - at)), sink);
        QCoreApplication::processEvents();
        double &batch = batchTimes[static_cast<size_t>(at / batchBytes)];
        batch = std::min(batch, Bench::now() - start);
    }
    chunker.finish(sink);
    if (chat.streamObservation().droppedLines() > 0)
        std::printf("dropped lines: %lld\n", static_cast<long long>(chat.streamObservation().droppedLines()));
}

void throughSimdjson(const QByteArray &stream)
{
    simdjson::dom::parser parser;
    const char *const end = stream.constData() + stream.size();
    size_t objects = 0;
    for (const char *line = stream.constData(); line < end;) {
        const auto *next =
            static_cast<const char *>(std::memchr(line, '\n', static_cast<size_t>(end - line)));
        const auto result = parser.parse(line, static_cast<size_t>(next - line), false);
        objects += result.error() == simdjson::SUCCESS && result.is_object() ? 1 : 0;
        line = next + 1;
    }
    if (objects == 0)
        std::printf("the reference parsed nothing\n");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QByteArray stream = Bench::recordedStream(streamBytes);
    std::printf("%lld bytes, %lld lines\n", static_cast<long long>(stream.size()),
                static_cast<long long>(stream.count('\n')));
    stream.reserve(stream.size() + simdjson::SIMDJSON_PADDING);
    const bool ratioMet = Bench::compare(
        "stream through the turn machine", "simdjson alone", 7, 2.5, [&] { throughTheTurnMachine(stream); },
        [&] { throughSimdjson(stream); });
    const double longestBatch = *std::max_element(batchTimes.begin(), batchTimes.end());
    const bool batchMet = Bench::report("longest batch on the main loop", longestBatch * 1000, "ms", 8);
    return ratioMet && batchMet ? 0 : 1;
}
