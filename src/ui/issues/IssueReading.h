// What a window shows of an issue's text.
#pragma once

#include "issues/IssueDocument.h"
#include "markdown/MarkdownBlocks.h"

#include <QString>

#include <optional>

namespace Vesk
{

/** A value that may be made on any thread: of a long text it takes longer than a key may wait. */
struct IssueReading {
    static constexpr qsizetype longestShown = 4'000'000; ///< code units; of a longer text the head is shown

    QString text;
    IssueDocument document;
    bool blank = true;                        ///< nothing stands beside title and table
    std::optional<MarkdownBlocks> preview {}; ///< absent when it was not asked for

    [[nodiscard]] static IssueReading of(const QString &text, const QString &fileName, bool withPreview);
};

} // namespace Vesk
