#include "markdown/MarkdownLines.h"

#include "base/Text.h"

namespace Vesk
{

QStringView MarkdownLine::sectionTitle() const
{
    return Text::trimBlanks(trimmed.sliced(QStringView(u"## ").size()));
}

std::optional<MarkdownLine> MarkdownLines::next()
{
    if (m_position > m_text.size())
        return std::nullopt;
    qsizetype end = m_text.indexOf(u'\n', m_position);
    if (end < 0)
        end = m_text.size();

    MarkdownLine line;
    line.begin = m_position;
    line.text = m_text.sliced(m_position, end - m_position);
    line.carriageReturn = line.text.endsWith(u'\r');
    if (line.carriageReturn)
        line.text.chop(1);
    line.trimmed = Text::trimBlanks(line.text);
    const bool isFence = line.trimmed.startsWith(u"```");
    line.fenced = m_fenced || isFence;
    m_fenced = m_fenced != isFence;
    m_position = end + 1;
    return line;
}

} // namespace Vesk
