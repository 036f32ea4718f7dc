// What Markdown text becomes: a flat list of blocks that a list view can show one by one.
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Vesk
{

/**
 * One block of a Markdown text: a plain value, comparable, so that a view redraws only what changed.
 *
 * Its inline text is a small HTML of our own making: the tags b, i, s, code, br and a (with href alone), all
 * else escaped. It holds no colour and no font: MarkdownStyle puts these in at the moment of display.
 */
struct MarkdownBlock {
    Q_GADGET
    Q_PROPERTY(Kind kind MEMBER kind)
    Q_PROPERTY(Marker marker MEMBER marker)
    Q_PROPERTY(int headingLevel MEMBER headingLevel)
    Q_PROPERTY(int quoteDepth MEMBER quoteDepth)
    Q_PROPERTY(int listDepth MEMBER listDepth)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(bool tight MEMBER tight)
    Q_PROPERTY(QString html MEMBER html)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString language MEMBER language)
    Q_PROPERTY(int columnCount READ columnCount)
    Q_PROPERTY(QList<int> alignments MEMBER alignments)
    Q_PROPERTY(QStringList cells MEMBER cells)
    Q_PROPERTY(qsizetype droppedColumns MEMBER droppedColumns)
    Q_PROPERTY(qsizetype droppedRows MEMBER droppedRows)

public:
    enum class Kind {
        Paragraph, ///< `html`; inside a list item when `listDepth` is not 0
        Heading,   ///< `html`, `headingLevel`
        ListItem,  ///< the first text of an item (perhaps empty), with its `marker`; what follows in it are
                   ///< other blocks
        Code,      ///< `text` as written, without the last line end; `language`
        Table,     ///< `cells`, `alignments`
        Rule,      ///< a line across
    };
    Q_ENUM(Kind)

    enum class Marker { None, Bullet, Number, TaskOpen, TaskDone };
    Q_ENUM(Marker)

    Kind kind = Kind::Paragraph;
    Marker marker = Marker::None; ///< of a ListItem
    int headingLevel = 0;         ///< 1 to 6 for a Heading
    int quoteDepth = 0;           ///< quotes around the block
    int listDepth = 0;            ///< lists around the block
    int number = 0;               ///< of a ListItem with Marker::Number
    qsizetype taskAt = -1;        ///< of a task: where in the text the sign between its brackets stands
    bool continues = false;       ///< goes on with the words of the block above, which were too many for one
    bool tight = true;            ///< in a list without blank lines between its items
    QString html;
    QString note; ///< stands behind a heading's words, though not in the text; no HTML
    QString text;
    QString language;
    QList<int> alignments; ///< of each column: Qt::AlignLeft, AlignHCenter or AlignRight
    QStringList cells;     ///< inline HTML, row by row; the first row is the head
    qsizetype droppedColumns = 0;
    qsizetype droppedRows = 0;

    [[nodiscard]] int columnCount() const { return static_cast<int>(alignments.size()); }

    bool operator==(const MarkdownBlock &) const = default;
};

/** A whole text, and what of it was beyond the caps. */
struct MarkdownBlocks {
    QList<MarkdownBlock> blocks;
    qsizetype droppedBlocks = 0;
    qsizetype droppedCharacters = 0; ///< user-perceived ones, at the end of the text
    bool asPlainText =
        false; ///< reading it as Markdown would have cost too much: paragraphs as they were typed

    bool operator==(const MarkdownBlocks &) const = default;
};

/** The index of the first block that differs; the size of the shorter list when one begins with the other. */
[[nodiscard]] qsizetype firstDifference(const QList<MarkdownBlock> &before,
                                        const QList<MarkdownBlock> &after);

} // namespace Vesk
