#include "base/Utf8Clip.h"
#include "git/GitDiff.h"
#include "git/GitFields_p.h"

#include <QVarLengthArray>

#include <algorithm>

namespace Vesk::GitDiff
{
namespace
{

using Kind = Line::Kind;

std::optional<qint64> number(QByteArrayView digits)
{
    const bool isNumber =
        !digits.isEmpty() && std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
    bool fits = false;
    const qint64 value = isNumber ? digits.toByteArray().toLongLong(&fits) : 0;
    return fits ? std::optional(value) : std::nullopt;
}

/** "start,count" behind its mark; the count is 1 when it is not there. */
bool readRange(QByteArrayView part, char mark, qint64 &start, qint64 &count)
{
    if (!part.startsWith(mark))
        return false;
    part = part.sliced(1);
    const qsizetype comma = part.indexOf(',');
    const auto first = number(comma < 0 ? part : part.first(comma));
    const auto second = comma < 0 ? std::optional<qint64>(1) : number(part.sliced(comma + 1));
    if (!first || !second)
        return false;
    start = *first;
    count = *second;
    return true;
}

class Parser
{
public:
    Parser(qsizetype lineLimit, qsizetype lineByteLimit)
        : m_lineLimit(lineLimit)
        , m_lineByteLimit(lineByteLimit)
    {
    }

    void take(QByteArrayView piece)
    {
        if (m_oldLeft > 0 || m_newLeft > 0) {
            if (takeInHunk(piece))
                return;
            m_oldLeft = m_newLeft = 0;
        }
        takeHeader(piece);
    }

    [[nodiscard]] FileDiff finish()
    {
        if (m_isBinary)
            return {.content = {.kind = Content::Kind::Binary}};
        m_diff.content.kind = m_diff.content.lines.isEmpty() && m_diff.omittedLines == 0
            ? Content::Kind::Empty
            : Content::Kind::Lines;
        return std::move(m_diff);
    }

private:
    bool takeInHunk(QByteArrayView piece)
    {
        switch (piece.isEmpty() ? ' ' : piece.front()) { // some tools strip the blank of an empty line
        case '+':
            add(Kind::Added, piece, 1, std::nullopt, m_newLine++);
            ++m_diff.added;
            --m_newLeft;
            return true;
        case '-':
            add(Kind::Removed, piece, 1, m_oldLine++, std::nullopt);
            ++m_diff.removed;
            --m_oldLeft;
            return true;
        case ' ':
            add(Kind::Context, piece, 1, m_oldLine++, m_newLine++);
            --m_oldLeft;
            --m_newLeft;
            return true;
        case '\\':
            add(Kind::NoNewline, piece);
            return true;
        default:
            return false;
        }
    }

    void takeHeader(QByteArrayView piece)
    {
        if (piece.startsWith("@@ ")) {
            if (const auto header = hunkHeader(piece)) {
                add(Kind::Hunk, piece);
                m_oldLine = header->oldStart;
                m_newLine = header->newStart;
                m_oldLeft = header->oldCount;
                m_newLeft = header->newCount;
            }
        } else if (piece.startsWith('\\')) {
            add(Kind::NoNewline, piece);
        } else if (piece.startsWith("Binary files ") && piece.endsWith(" differ")) {
            m_isBinary = true;
        } else if (!piece.isEmpty() && !isFileHeader(piece)) {
            add(Kind::Meta, piece);
        }
    }

    /** Says what the window knows already. */
    static bool isFileHeader(QByteArrayView piece)
    {
        return piece.startsWith("diff --git ") || piece.startsWith("index ") || piece.startsWith("--- ")
            || piece.startsWith("+++ ");
    }

    /** Text is made for what is kept alone. */
    void add(Kind kind, QByteArrayView piece, qsizetype mark = 0, std::optional<qint64> oldNumber = {},
             std::optional<qint64> newNumber = {})
    {
        QList<Line> &lines = m_diff.content.lines;
        if (lines.size() >= m_lineLimit) {
            ++m_diff.omittedLines;
            return;
        }
        if (piece.endsWith('\r'))
            piece.chop(1);
        // The mark is decoded with the rest: a byte order mark behind it is the file's and stays.
        UTF8Clip clip = UTF8Clip::prefix(QString::fromUtf8(piece).mid(mark), m_lineByteLimit);
        lines.append({.id = static_cast<int>(lines.size()),
                      .kind = kind,
                      .text = std::move(clip.text),
                      .oldNumber = oldNumber,
                      .newNumber = newNumber,
                      .clippedBytes = clip.droppedBytes});
    }

    qsizetype m_lineLimit;
    qsizetype m_lineByteLimit;
    FileDiff m_diff;
    qint64 m_oldLine = 0;
    qint64 m_newLine = 0;
    qint64 m_oldLeft = 0;
    qint64 m_newLeft = 0;
    bool m_isBinary = false;
};

/** The bytes without a character that is cut at their end. */
QByteArrayView wholeCharacters(QByteArrayView data)
{
    constexpr qsizetype longest = 4;
    for (qsizetype back = 1; back <= std::min(longest, data.size()); ++back) {
        const auto byte = static_cast<uchar>(data[data.size() - back]);
        if ((byte & 0xC0U) == 0x80) // in the middle of a character
            continue;
        const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return length > back ? data.chopped(back) : data;
    }
    return data;
}

} // namespace

std::optional<HunkHeader> hunkHeader(QByteArrayView line)
{
    QVarLengthArray<QByteArrayView, 4> parts;
    GitFields fields(line, ' ');
    while (parts.size() < 4) {
        const auto field = fields.next();
        if (!field)
            break;
        if (!field->isEmpty())
            parts.append(*field);
    }
    HunkHeader header;
    if (parts.size() < 3 || parts[0] != "@@" || !readRange(parts[1], '-', header.oldStart, header.oldCount)
        || !readRange(parts[2], '+', header.newStart, header.newCount))
        return std::nullopt;
    return header;
}

QByteArrayView trimmedToLineBoundary(QByteArrayView data, bool isClipped)
{
    if (!isClipped)
        return data;
    const qsizetype end = data.lastIndexOf('\n');
    return end < 0 ? wholeCharacters(data) : data.first(end + 1);
}

FileDiff parse(QByteArrayView text, qsizetype lineLimit, qsizetype lineByteLimit)
{
    Parser parser(lineLimit, lineByteLimit);
    if (text.endsWith('\n'))
        text.chop(1);
    else if (text.isEmpty())
        return parser.finish();
    GitFields pieces(text, '\n');
    while (const auto piece = pieces.next())
        parser.take(*piece);
    return parser.finish();
}

FileDiff assemble(int code, const QByteArray &output, qint64 totalBytes, const QString &error,
                  const QList<int> &acceptedCodes)
{
    if (!acceptedCodes.contains(code))
        return {.content = {.kind = Content::Kind::Failed,
                            .failure = GitProcess::failureText(error, QStringLiteral("diff"), code)}};
    const QByteArrayView read = trimmedToLineBoundary(output, output.size() < totalBytes);
    FileDiff diff = parse(read);
    if (diff.content.kind != Content::Kind::Binary) {
        diff.readBytes = read.size();
        diff.totalBytes = totalBytes;
    }
    return diff;
}

} // namespace Vesk::GitDiff
