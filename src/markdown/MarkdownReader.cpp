#include "markdown/MarkdownReader.h"

#include "base/Text.h"
#include "markdown/BlockBuilder_p.h"
#include "markdown/DelimiterRows_p.h"
#include "markdown/PlainBlocks_p.h"

namespace Vesk::MarkdownReader
{
namespace
{

struct Run {
    WidenedRows rows;
    BlockBuilder blocks;
};

Run &run(void *pointer)
{
    return *static_cast<Run *>(pointer);
}

// Looking for the opening of a closing bracket walks over the paragraph, for each bracket anew. Whether a
// bracket is in code or escaped is the parser's knowledge, so all are counted; a paragraph ends at a blank
// line at the latest.
bool costsTooMuch(QStringView text)
{
    constexpr qsizetype mostSteps = 400'000'000; // well below half a second
    qsizetype steps = 0;
    qsizetype size = 0;
    qsizetype brackets = 0;
    bool blank = true;
    QChar before;
    for (const QChar c : text) {
        ++size;
        const bool insideLineEnd = before == u'\r' && c == u'\n';
        before = c;
        if (insideLineEnd)
            continue;
        if (c == u']')
            ++brackets;
        if (c == u'\n' || c == u'\r') {
            if (blank) {
                steps += size * brackets;
                size = 0;
                brackets = 0;
            }
            blank = true;
        } else if (c != u' ' && c != u'\t') {
            blank = false;
        }
    }
    return steps + size * brackets > mostSteps;
}

std::optional<MarkdownBlocks> parseAll(QStringView text)
{
    MD_PARSER parser {};
    parser.flags = MD_FLAG_TABLES | MD_FLAG_STRIKETHROUGH | MD_FLAG_TASKLISTS | MD_FLAG_NOHTML;
    parser.enter_block = [](MD_BLOCKTYPE type, void *detail, void *user) {
        return run(user).blocks.enterBlock(type, detail) ? 0 : -1;
    };
    parser.leave_block = [](MD_BLOCKTYPE type, void *, void *user) {
        run(user).blocks.leaveBlock(type);
        return 0;
    };
    parser.enter_span = [](MD_SPANTYPE type, void *detail, void *user) {
        return run(user).blocks.enterSpan(type, detail) ? 0 : -1;
    };
    parser.leave_span = [](MD_SPANTYPE type, void *, void *user) {
        run(user).blocks.leaveSpan(type);
        return 0;
    };
    parser.text = [](MD_TEXTTYPE type, const MD_CHAR *chars, MD_SIZE size, void *user) {
        run(user).blocks.text(type, run(user).rows.original(chars, size));
        return 0;
    };
    Run state {WidenedRows(text), BlockBuilder()};
    const QByteArray &bytes = state.rows.bytes();
    if (md_parse(bytes.constData(), static_cast<MD_SIZE>(bytes.size()), &parser, &state) != 0)
        return std::nullopt;
    MarkdownBlocks result = state.blocks.take();
    std::vector<qsizetype> places;
    for (const MarkdownBlock &block : result.blocks) {
        if (block.taskAt >= 0)
            places.push_back(block.taskAt);
    }
    auto position = [positions = state.rows.positions(places), next = 0U]() mutable {
        return positions[next++];
    };
    for (MarkdownBlock &block : result.blocks) {
        if (block.taskAt >= 0)
            block.taskAt = position();
    }
    return result;
}

QStringView readPart(const QString &text)
{
    if (text.size() <= maxCharacters)
        return text;
    const bool insideCodePoint =
        text[maxCharacters - 1].isHighSurrogate() && text[maxCharacters].isLowSurrogate();
    return QStringView(text).left(maxCharacters - (insideCodePoint ? 1 : 0));
}

} // namespace

MarkdownBlocks parse(const QString &text)
{
    const QStringView read = readPart(text);
    std::optional<MarkdownBlocks> parsed;
    if (!costsTooMuch(read))
        parsed = parseAll(read);
    MarkdownBlocks result = parsed ? *std::move(parsed) : plainBlocks(read);
    if (read.size() < text.size())
        result.droppedCharacters = Text::characterCount(text.mid(read.size()));
    return result;
}

} // namespace Vesk::MarkdownReader
