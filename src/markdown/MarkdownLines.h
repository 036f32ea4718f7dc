// The lines of a Markdown file that is read line by line and rewritten in place: by line end, with what lies
// in a code fence told apart.
#pragma once

#include <QStringView>

#include <optional>

namespace Vesk
{

/** Views into the text that was walked. */
struct MarkdownLine {
    QStringView text;            ///< without its line end
    QStringView trimmed;         ///< without the blanks at both ends
    qsizetype begin = 0;         ///< where it stands in the whole text
    bool carriageReturn = false; ///< a CR stands between the text and the LF, or the end of the file
    bool fenced = false;         ///< between two "```" lines, or one of them

    /** Behind the text, before the line end. */
    [[nodiscard]] qsizetype end() const { return begin + text.size(); }
    /** Behind the text and its CR, before the LF. */
    [[nodiscard]] qsizetype endWithReturn() const { return end() + (carriageReturn ? 1 : 0); }
    /** The blanks before the text. */
    [[nodiscard]] QStringView indent() const { return text.left(trimmed.data() - text.data()); }

    [[nodiscard]] bool isTableLine() const { return trimmed.startsWith(u'|'); }
    /** A heading of the second level, none of another. */
    [[nodiscard]] bool isSectionHeading() const { return trimmed.startsWith(u"## "); }
    /** What stands behind the signs of a section heading. */
    [[nodiscard]] QStringView sectionTitle() const;
};

/** Walks over the lines of a text; a text that ends in a line end has an empty last line. A byte order mark
   belongs to no line. */
class MarkdownLines
{
public:
    /** The text must outlive the walk and its lines. */
    explicit MarkdownLines(QStringView text)
        : m_text(text)
        , m_position(text.startsWith(QChar(QChar::ByteOrderMark)) ? 1 : 0)
    {
    }

    /** Absent behind the last line. */
    [[nodiscard]] std::optional<MarkdownLine> next();

private:
    QStringView m_text;
    qsizetype m_position = 0; ///< behind the end of the text when all lines are given
    bool m_fenced = false;
};

} // namespace Vesk
