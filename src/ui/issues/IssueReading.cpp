#include "ui/issues/IssueReading.h"

#include "base/Text.h"
#include "markdown/MarkdownReader.h"
#include "ui/issues/IssueText.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype headShown = 60'000;

/** The head of a text that is too long to be laid out without standing still, in whole lines. */
QString headOf(const QString &text)
{
    if (text.size() <= IssueReading::longestShown) {
        return text;
    }
    const qsizetype end = text.lastIndexOf(u'\n', headShown);
    const qsizetype shown = end > 0 ? end : headShown;
    return text.first(shown) + u"\n\n— 이후 %L1자 생략 —\n"_s.arg(text.size() - shown);
}

/** Behind the heading of each section with tasks stands how many of them are done. */
void noteProgress(QList<MarkdownBlock> &blocks, const QList<IssueDocument::Section> &sections)
{
    QList<qsizetype> headings;
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const MarkdownBlock &block = blocks[i];
        if (block.headingLevel == 2 && block.quoteDepth == 0 && block.listDepth == 0 && !block.continues) {
            headings.append(i);
        }
    }
    // Otherwise what is a section and what is a heading are not the same here.
    if (headings.size() != sections.size()) {
        return;
    }
    for (qsizetype i = 0; i < sections.size(); ++i) {
        if (const auto &progress = sections[i].progress; progress.total > 0) {
            blocks[headings[i]].note = u"%1/%2"_s.arg(progress.done).arg(progress.total);
        }
    }
}

} // namespace

IssueReading IssueReading::of(const QString &text, const QString &fileName, bool withPreview)
{
    const QString body = IssueText::body(text);
    IssueReading reading {.text = text,
                          .document = IssueDocument::parse(text, fileName),
                          .blank = Text::trimWhitespace(body).isEmpty()};
    if (withPreview) {
        reading.preview = MarkdownReader::parse(headOf(body));
        noteProgress(reading.preview->blocks, reading.document.sections);
    }
    return reading;
}

} // namespace Vesk
