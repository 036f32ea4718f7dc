#include "markdown/MarkdownCheckbox.h"

#include "base/Text.h"
#include "markdown/MarkdownLines.h"

namespace Vesk::MarkdownCheckbox
{

std::optional<Item> parse(QStringView line)
{
    constexpr qsizetype bulletSize = 2; // "- "
    constexpr qsizetype boxSize = 3;    // "[ ]"
    if (!line.startsWith(u"- ") && !line.startsWith(u"* "))
        return std::nullopt;
    const QStringView rest = line.sliced(bulletSize);
    const bool open = rest.startsWith(u"[ ]");
    if (!open && !rest.startsWith(u"[x]", Qt::CaseInsensitive))
        return std::nullopt;
    return Item {.checked = !open, .text = Text::trimBlanks(rest.sliced(boxSize))};
}

Progress progress(QStringView text)
{
    Progress progress;
    MarkdownLines lines(text);
    while (const auto line = lines.next()) {
        if (line->fenced)
            continue;
        if (const auto item = parse(line->trimmed)) {
            ++progress.total;
            progress.done += item->checked ? 1 : 0;
        }
    }
    return progress;
}

} // namespace Vesk::MarkdownCheckbox
