#include "markdown/InlineWriter_p.h"
#include "markdown/MarkdownReader.h"
#include "markdown/PlainBlocks_p.h"

#include <utility>

namespace Vesk
{
namespace
{

using Kind = MarkdownBlock::Kind;

// The run of ``` or ~~~ that a line begins with, or nothing.
QStringView fenceOf(QStringView line)
{
    constexpr qsizetype least = 3;
    const QChar sign = line.isEmpty() ? QChar() : line.front();
    if (sign != u'`' && sign != u'~')
        return {};
    qsizetype size = 0;
    while (size < line.size() && line[size] == sign)
        ++size;
    return size >= least ? line.left(size) : QStringView();
}

class PlainReader
{
public:
    void line(QStringView line)
    {
        const QStringView fence = fenceOf(line.trimmed());
        if (!m_fence.isEmpty()) {
            const bool closes = fence.size() >= m_fence.size() && fence.front() == m_fence.front()
                && fence.size() == line.trimmed().size();
            if (closes)
                end();
            else
                m_block.text.append(line).append(u'\n');
        } else if (!fence.isEmpty()) {
            end();
            m_fence = fence;
            m_open = true;
            m_block.kind = Kind::Code;
            m_block.language = line.trimmed().mid(fence.size()).trimmed().left(64).toString();
        } else if (line.trimmed().isEmpty()) {
            end();
        } else {
            if (m_open)
                m_inline.lineBreak();
            m_open = true;
            while (line.size() > MarkdownReader::longParagraph) {
                m_inline.text(line.left(MarkdownReader::longParagraph));
                line = line.mid(MarkdownReader::longParagraph);
                cut();
            }
            m_inline.text(line);
            if (m_inline.size() > MarkdownReader::longParagraph)
                cut();
        }
    }

    // A view draws a paragraph as a whole, so that a long one comes in parts.
    void cut()
    {
        end();
        m_block.continues = true;
        m_open = true;
    }

    void end()
    {
        if (!m_open)
            return;
        m_block.html = m_inline.take();
        if (m_block.text.endsWith(u'\n'))
            m_block.text.chop(1);
        MarkdownBlock block = std::exchange(m_block, MarkdownBlock());
        if (m_result.blocks.size() < MarkdownReader::maxBlocks)
            m_result.blocks.append(std::move(block));
        else
            ++m_result.droppedBlocks;
        m_open = false;
        m_fence = {};
    }

    [[nodiscard]] MarkdownBlocks take()
    {
        m_result.asPlainText = true;
        return std::move(m_result);
    }

private:
    MarkdownBlocks m_result;
    MarkdownBlock m_block;
    InlineWriter m_inline;
    QStringView m_fence;
    bool m_open = false;
};

} // namespace

MarkdownBlocks plainBlocks(QStringView text)
{
    PlainReader reader;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype found = text.indexOf(u'\n', at);
        const qsizetype end = found < 0 ? text.size() : found;
        QStringView line = text.sliced(at, end - at);
        if (line.endsWith(u'\r'))
            line.chop(1);
        reader.line(line);
        at = end + 1;
    }
    reader.end();
    return reader.take();
}

} // namespace Vesk
