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

} // namespace

IssueReading IssueReading::of(const QString &text, const QString &fileName, bool withPreview)
{
    const QString body = IssueText::body(text);
    IssueReading reading {.text = text,
                          .document = IssueDocument::parse(text, fileName),
                          .blank = Text::trimWhitespace(body).isEmpty()};
    if (withPreview) {
        reading.preview = MarkdownReader::parse(headOf(body));
    }
    return reading;
}

} // namespace Vesk
