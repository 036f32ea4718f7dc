// Any text gives blocks whose inline HTML holds our own tags alone, within the stated caps.
#include "markdown/MarkdownReader.h"

#include <QString>

#include <array>
#include <cstdint>
#include <cstdlib>

namespace
{

// Skips one of our tags at the front; false when it is none of them.
bool skipTag(QStringView &html)
{
    static constexpr std::array<QStringView, 10> tags {u"<b>",  u"</b>", u"<i>",    u"</i>",    u"<s>",
                                                       u"</s>", u"<br>", u"<code>", u"</code>", u"</a>"};
    constexpr QStringView link = u"<a href=\"";
    const auto skip = [&](QStringView tag) {
        if (!html.startsWith(tag))
            return false;
        html = html.mid(tag.size());
        return true;
    };
    for (const QStringView tag : tags) {
        if (skip(tag))
            return true;
    }
    if (!skip(link))
        return false;
    const qsizetype end = html.indexOf(u'"');
    if (end < 0 || html.left(end).contains(u'<') || html.startsWith(u"javascript:", Qt::CaseInsensitive))
        return false;
    html = html.mid(end);
    return skip(u"\">");
}

void check(QStringView html)
{
    for (qsizetype at = html.indexOf(u'<'); at >= 0; at = html.indexOf(u'<')) {
        html = html.mid(at);
        if (!skipTag(html))
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace Vesk;
    const auto text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const MarkdownBlocks result = MarkdownReader::parse(text);
    if (result.blocks.size() > MarkdownReader::maxBlocks)
        std::abort();
    for (const MarkdownBlock &block : result.blocks) {
        check(block.html);
        if (block.kind == MarkdownBlock::Kind::Table && block.cells.size() % block.columnCount() != 0)
            std::abort();
        for (const QString &cell : block.cells)
            check(cell);
    }
    return 0;
}
