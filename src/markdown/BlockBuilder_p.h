// Turns the parser's events into blocks.
#pragma once

#include "markdown/InlineWriter_p.h"
#include "markdown/MarkdownBlocks.h"

#include <md4c.h>

#include <optional>
#include <vector>

namespace Vesk
{

/** Receives the events of one md4c run. An event that returns false ends the run: the text costs too much. */
class BlockBuilder
{
public:
    bool enterBlock(MD_BLOCKTYPE type, const void *detail);
    void leaveBlock(MD_BLOCKTYPE type);
    bool enterSpan(MD_SPANTYPE type, const void *detail);
    void leaveSpan(MD_SPANTYPE type);
    void text(MD_TEXTTYPE type, QStringView text);

    [[nodiscard]] MarkdownBlocks take() { return std::move(m_result); }

private:
    struct List {
        bool ordered = false;
        bool tight = true;
        int next = 1; // number of the next item
    };

    void beginLeaf(MarkdownBlock::Kind kind);
    void beginItem(const MD_BLOCK_LI_DETAIL &detail);
    bool beginTable(const MD_BLOCK_TABLE_DETAIL &detail);
    void endLeaf();
    void endLooseEnds();
    void endRow();
    void endCell();
    void beginCell(const MD_BLOCK_TD_DETAIL &detail, bool head);
    void cutLongParagraph(qsizetype size);
    bool spend(qsizetype addressSize);
    [[nodiscard]] bool cellIsKept() const;

    MarkdownBlocks m_result;
    std::vector<List> m_lists;
    int m_quotes = 0;
    std::optional<MarkdownBlock> m_item; // an item whose marker no block shows yet
    std::optional<MarkdownBlock> m_leaf; // the block that text goes to
    bool m_implicit = false;             // the leaf is text of an item that has no paragraph of its own
    bool m_beyondCap = false;            // the leaf will not be kept
    InlineWriter m_inline;
    qsizetype m_row = 0;    // of the table
    qsizetype m_column = 0; // of the table
    qsizetype m_cells = 0;
    qsizetype m_addressSizes = 0;
};

/** The text of an attribute of the parser, with its character references decoded. */
[[nodiscard]] QString attributeText(const MD_ATTRIBUTE &attribute);

} // namespace Vesk
