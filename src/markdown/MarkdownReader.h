// Reads Markdown as agents write it: CommonMark with tables, task lists and strikethrough of GitHub.
#pragma once

#include "markdown/MarkdownBlocks.h"

#include <QString>

namespace Vesk::MarkdownReader
{

inline constexpr qsizetype maxCharacters = 1024 * 1024; ///< code units of a text that are looked at
inline constexpr qsizetype maxBlocks = 5000;
inline constexpr qsizetype maxTableColumns = 256;
inline constexpr qsizetype maxTableRows = 1000;
inline constexpr qsizetype maxTableCells = 20'000; ///< of one table; rows beyond are dropped
inline constexpr qsizetype longParagraph =
    6000; ///< code units of HTML; a longer one goes on in another block
inline constexpr int maxDepth =
    32; ///< of quotes, lists and nested inline tags; deeper ones are drawn as this

/**
 * The blocks of a text from outside. Never fails, and costs time in proportion to the text, also for text
 * made to be slow. An unfinished text (a code fence still open) gives what it has so far.
 *
 * Raw HTML is shown as text. Pictures are never loaded: they become a link. A link to a web page or a file
 * path stays a link; with any other address its text stays, with the address behind it. A line end within a
 * paragraph stays one.
 */
[[nodiscard]] MarkdownBlocks parse(const QString &text);

} // namespace Vesk::MarkdownReader
