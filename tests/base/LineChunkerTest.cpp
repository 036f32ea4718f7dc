#include "base/LineChunker.h"

#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

using namespace Vesk;

namespace
{

struct Outcome {
    std::vector<std::string> lines;
    qsizetype dropped = 0;

    bool operator==(const Outcome &) const = default;
};

// Feeds the stream in pieces that end at the given places, and reads the padding as the JSON reader would.
Outcome chunked(const std::string &stream, std::vector<std::size_t> cuts, qsizetype most)
{
    Outcome outcome;
    LineChunker chunker(most);
    const auto sink = [&](std::string_view line) {
        volatile char last = 0;
        for (qsizetype i = 0; i < LineChunker::padding; ++i)
            last = line.data()[line.size() + std::size_t(i)];
        Q_UNUSED(last)
        outcome.lines.emplace_back(line);
    };
    cuts.push_back(stream.size());
    std::sort(cuts.begin(), cuts.end());
    std::size_t at = 0;
    for (const std::size_t cut : cuts) {
        const std::string piece = stream.substr(at, cut - at); // a copy, so that reads beyond it are seen
        chunker.append(QByteArrayView(piece.data(), qsizetype(piece.size())), sink);
        at = cut;
    }
    chunker.finish(sink);
    outcome.dropped = chunker.droppedBytes();
    return outcome;
}

Outcome whole(const std::string &stream, qsizetype most = LineChunker::defaultMaxLineBytes)
{
    return chunked(stream, {}, most);
}

} // namespace

class LineChunkerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QByteArrayList>("lines");
        using Lines = QByteArrayList;
        const QByteArray mark = "\xEF\xBF\xBD";
        QTest::newRow("nothing") << QByteArray() << Lines();
        QTest::newRow("blank lines stay") << QByteArray("\n\r\na\n\n") << Lines {"", "", "a", ""};
        QTest::newRow("no last end") << QByteArray("a\nb") << Lines {"a", "b"};
        QTest::newRow("one cr of two") << QByteArray("a\r\r\n") << Lines {"a\r"};
        QTest::newRow("cr inside") << QByteArray("a\rb\n") << Lines {"a\rb"};
        QTest::newRow("lone cr at the end") << QByteArray("a\n\r") << Lines {"a"};
        QTest::newRow("cr after text at the end") << QByteArray("a\r") << Lines {"a"};
        QTest::newRow("nul") << QByteArray("a\0b\n", 4) << Lines {QByteArray("a\0b", 3)};
        QTest::newRow("byte order mark stays") << QByteArray("\xEF\xBB\xBFx\n") << Lines {"\xEF\xBB\xBFx"};
        QTest::newRow("stray continuation") << QByteArray("a\x80\x80z\n") << Lines {"a" + mark + mark + "z"};
        QTest::newRow("cut code point") << QByteArray("\xED\x95\nx") << Lines {mark, "x"};
        QTest::newRow("cut four") << QByteArray("\xF0\x9F\x98!\n") << Lines {mark + "!"};
        QTest::newRow("overlong form") << QByteArray("\xC0\xAF\n") << Lines {mark + mark};
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80\n") << Lines {mark + mark + mark};
        QTest::newRow("mark itself") << QByteArray(mark + "\xFF\n") << Lines {mark + mark};
    }
    void lines()
    {
        QFETCH(const QByteArray, stream);
        QFETCH(const QByteArrayList, lines);
        QByteArrayList got;
        for (const std::string &line : whole(stream.toStdString()).lines)
            got.append(QByteArray::fromStdString(line));
        QCOMPARE(got, lines);
    }

    void overlongLinesAreCutAndCounted()
    {
        const std::string longLine(10'000, 'x');
        const Outcome outcome = whole(longLine + "\nshort\n" + longLine, 5000);
        QCOMPARE(outcome.lines.size(), std::size_t(3));
        QCOMPARE(outcome.lines[0].size(), std::size_t(LineChunker::overlongPrefix));
        QCOMPARE(outcome.lines[1], std::string("short"));
        QCOMPARE(outcome.dropped, 2 * (10'000 - LineChunker::overlongPrefix));
        // A line of just the cap is whole, its CR not counted; the prefix of a longer one keeps code points
        // whole.
        QCOMPARE(whole("12345\r\n", 5), (Outcome {{"12345"}, 0}));
        QCOMPARE(whole("123456\n", 5), (Outcome {{"12345"}, 1}));
        QCOMPARE(whole("123\xED\x95\x9C\n", 5), (Outcome {{"123"}, 3}));
    }

    void anyCutGivesTheSameLines()
    {
        QVERIFY(rc::check("lines do not depend on how the bytes arrive", [] {
            const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                "\n", "\r\n", "\r", "a", "longer text", "한", "😀", "\x80", "\xF0\x9F", "\xFF",
                std::string(40, 'y'), std::string(100, 'z')));
            std::string stream;
            for (const std::string &part : parts)
                stream += part;
            const auto cuts = *rc::gen::container<std::vector<std::size_t>>(
                rc::gen::inRange<std::size_t>(0, stream.size() + 1));
            const auto most = *rc::gen::element<qsizetype>(1, 7, 41, 1000);
            std::vector<std::size_t> everywhere(stream.size());
            std::iota(everywhere.begin(), everywhere.end(), std::size_t(0));
            const Outcome expected = whole(stream, most);
            RC_ASSERT(chunked(stream, cuts, most) == expected);
            RC_ASSERT(chunked(stream, everywhere, most) == expected);
        }));
    }

    void streamsLargerThanTheBufferComeWhole()
    {
        std::string stream;
        std::vector<std::string> expected;
        for (std::size_t i = 0; stream.size() < 3'000'000; ++i) {
            expected.push_back(std::to_string(i) + std::string(i * 7919 % 90'000, 'a'));
            stream += expected.back() + '\n';
        }
        std::vector<std::size_t> cuts;
        for (std::size_t at = 0; at < stream.size(); at += 4093)
            cuts.push_back(at);
        QVERIFY(whole(stream).lines == expected);
        QVERIFY(chunked(stream, cuts, LineChunker::defaultMaxLineBytes).lines == expected);
    }

    void streamSpeed()
    {
        const QByteArray stream = QByteArray(QByteArray(999, 'j') + '\n').repeated(20'000);
        QBENCHMARK
        {
            LineChunker chunker;
            qsizetype total = 0;
            for (qsizetype at = 0; at < stream.size(); at += 65536)
                chunker.append(QByteArrayView(stream).sliced(at, qMin<qsizetype>(65536, stream.size() - at)),
                               [&](std::string_view line) { total += qsizetype(line.size()); });
            QCOMPARE(total, stream.size() - 20'000);
        }
    }
};

VESK_TEST(LineChunkerTest)
#include "LineChunkerTest.moc"
