// The reading of last resort, for texts that would cost a Markdown parser too much.
#pragma once

#include "markdown/MarkdownBlocks.h"

#include <QStringView>

namespace Vesk
{

/** Fenced code as Code, all else as Paragraphs of lines as they were typed. */
[[nodiscard]] MarkdownBlocks plainBlocks(QStringView text);

} // namespace Vesk
