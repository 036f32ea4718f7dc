#include "markdown/BlockBuilder_p.h"
#include "markdown/CharacterReference_p.h"
#include "markdown/MarkdownReader.h"

#include <algorithm>

namespace Vesk
{
namespace
{

using Kind = MarkdownBlock::Kind;
using Marker = MarkdownBlock::Marker;

// A short row of a table is filled up with empty cells, and each use of a link reference repeats its address,
// so that a small text could ask for gigabytes. No honest text comes near these.
constexpr qsizetype maxCells = 200'000;
constexpr qsizetype maxAddressSizes = 4 * 1024 * 1024;

constexpr qsizetype maxLanguage = 64;

int alignmentOf(MD_ALIGN align)
{
    switch (align) {
    case MD_ALIGN_CENTER:
        return Qt::AlignHCenter;
    case MD_ALIGN_RIGHT:
        return Qt::AlignRight;
    case MD_ALIGN_DEFAULT:
    case MD_ALIGN_LEFT:
        break;
    }
    return Qt::AlignLeft;
}

// Where a text that is too long for one block is parted: behind a blank, if one comes soon enough.
qsizetype partEnd(QStringView text)
{
    const qsizetype most = MarkdownReader::longParagraph;
    const qsizetype blank = text.left(most).lastIndexOf(u' ');
    if (blank > most / 2)
        return blank + 1;
    return text[most - 1].isHighSurrogate() ? most - 1 : most;
}

} // namespace

QString attributeText(const MD_ATTRIBUTE &attribute)
{
    QString text;
    for (int i = 0; attribute.text != nullptr && attribute.substr_offsets[i] < attribute.size; ++i) {
        const MD_OFFSET begin = attribute.substr_offsets[i];
        const QString piece =
            QString::fromUtf8(attribute.text + begin, attribute.substr_offsets[i + 1] - begin);
        switch (attribute.substr_types[i]) {
        case MD_TEXT_ENTITY:
            text += decodedReference(piece);
            break;
        case MD_TEXT_NULLCHAR:
            text += QChar(QChar::ReplacementCharacter);
            break;
        default:
            text += piece;
        }
    }
    return text;
}

bool BlockBuilder::enterBlock(MD_BLOCKTYPE type, const void *detail)
{
    if (m_implicit)
        endLeaf();
    if (type != MD_BLOCK_P && type != MD_BLOCK_DOC)
        endLooseEnds();
    switch (type) {
    case MD_BLOCK_QUOTE:
        ++m_quotes;
        break;
    case MD_BLOCK_UL:
        m_lists.push_back({.tight = static_cast<const MD_BLOCK_UL_DETAIL *>(detail)->is_tight != 0});
        break;
    case MD_BLOCK_OL: {
        const auto *list = static_cast<const MD_BLOCK_OL_DETAIL *>(detail);
        m_lists.push_back(
            {.ordered = true, .tight = list->is_tight != 0, .next = static_cast<int>(list->start)});
        break;
    }
    case MD_BLOCK_LI:
        beginItem(*static_cast<const MD_BLOCK_LI_DETAIL *>(detail));
        break;
    case MD_BLOCK_HR:
        beginLeaf(Kind::Rule);
        break;
    case MD_BLOCK_H:
        beginLeaf(Kind::Heading);
        m_leaf->headingLevel = static_cast<int>(static_cast<const MD_BLOCK_H_DETAIL *>(detail)->level);
        break;
    case MD_BLOCK_CODE:
        beginLeaf(Kind::Code);
        m_leaf->language =
            attributeText(static_cast<const MD_BLOCK_CODE_DETAIL *>(detail)->lang).left(maxLanguage);
        break;
    case MD_BLOCK_P:
    case MD_BLOCK_HTML:
        beginLeaf(Kind::Paragraph);
        break;
    case MD_BLOCK_TABLE:
        return beginTable(*static_cast<const MD_BLOCK_TABLE_DETAIL *>(detail));
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
        beginCell(*static_cast<const MD_BLOCK_TD_DETAIL *>(detail), type == MD_BLOCK_TH);
        break;
    case MD_BLOCK_TR:
        m_column = 0;
        break;
    case MD_BLOCK_DOC:
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY:
        break;
    }
    return true;
}

void BlockBuilder::leaveBlock(MD_BLOCKTYPE type)
{
    switch (type) {
    case MD_BLOCK_QUOTE:
        --m_quotes;
        break;
    case MD_BLOCK_UL:
    case MD_BLOCK_OL:
        m_lists.pop_back();
        break;
    case MD_BLOCK_LI:
        if (m_implicit)
            endLeaf();
        endLooseEnds();
        break;
    case MD_BLOCK_HR:
    case MD_BLOCK_H:
    case MD_BLOCK_CODE:
    case MD_BLOCK_P:
    case MD_BLOCK_HTML:
    case MD_BLOCK_TABLE:
        endLeaf();
        break;
    case MD_BLOCK_TR:
        endRow();
        break;
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
        endCell();
        break;
    case MD_BLOCK_DOC:
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY:
        break;
    }
}

// The first paragraph of an item bears its marker.
void BlockBuilder::beginLeaf(Kind kind)
{
    if (m_item && kind == Kind::Paragraph) {
        m_leaf = std::exchange(m_item, std::nullopt);
    } else {
        m_leaf.emplace();
        m_leaf->kind = kind;
        m_leaf->quoteDepth = std::min(m_quotes, MarkdownReader::maxDepth);
        m_leaf->listDepth =
            static_cast<int>(std::min<qsizetype>(std::ssize(m_lists), MarkdownReader::maxDepth));
        m_leaf->tight = m_lists.empty() || m_lists.back().tight;
    }
    m_implicit = false;
    m_beyondCap = m_result.blocks.size() >= MarkdownReader::maxBlocks;
}

void BlockBuilder::beginItem(const MD_BLOCK_LI_DETAIL &detail)
{
    List &list = m_lists.back();
    beginLeaf(Kind::ListItem);
    m_item = std::exchange(m_leaf, std::nullopt);
    m_item->marker = list.ordered ? Marker::Number : Marker::Bullet;
    m_item->number = list.ordered ? list.next++ : 0;
    if (detail.is_task != 0) {
        m_item->marker = detail.task_mark == ' ' ? Marker::TaskOpen : Marker::TaskDone;
        m_item->taskAt = static_cast<qsizetype>(detail.task_mark_offset); // in bytes so far
    }
}

// An item that begins with something else than text, or with nothing, still shows its marker.
void BlockBuilder::endLooseEnds()
{
    if (!m_item)
        return;
    beginLeaf(Kind::Paragraph);
    endLeaf();
}

bool BlockBuilder::beginTable(const MD_BLOCK_TABLE_DETAIL &detail)
{
    m_cells += static_cast<qsizetype>(detail.col_count) * (static_cast<qsizetype>(detail.body_row_count) + 1);
    if (m_cells > maxCells)
        return false;
    beginLeaf(Kind::Table);
    m_leaf->droppedColumns = std::max<qsizetype>(0, detail.col_count - MarkdownReader::maxTableColumns);
    m_row = 0;
    return true;
}

bool BlockBuilder::cellIsKept() const
{
    const qsizetype rows = std::min(MarkdownReader::maxTableRows,
                                    MarkdownReader::maxTableCells / std::max(m_leaf->columnCount(), 1));
    return m_column < MarkdownReader::maxTableColumns && (m_row == 0 || m_row < rows);
}

void BlockBuilder::beginCell(const MD_BLOCK_TD_DETAIL &detail, bool head)
{
    if (head && cellIsKept())
        m_leaf->alignments.append(alignmentOf(detail.align));
}

void BlockBuilder::endCell()
{
    const QString html = m_inline.take();
    if (cellIsKept())
        m_leaf->cells.append(html);
    ++m_column;
}

void BlockBuilder::endRow()
{
    m_column = 0;
    if (!cellIsKept())
        ++m_leaf->droppedRows;
    ++m_row;
}

void BlockBuilder::endLeaf()
{
    if (!m_leaf)
        return;
    MarkdownBlock leaf = std::move(*m_leaf);
    m_leaf.reset();
    m_implicit = false;
    if (m_beyondCap) {
        m_inline.clear();
        ++m_result.droppedBlocks;
        return;
    }
    if (leaf.kind != Kind::Table)
        leaf.html = m_inline.take();
    if (leaf.text.endsWith(u'\n'))
        leaf.text.chop(1);
    m_result.blocks.append(std::move(leaf));
}

// A view draws a paragraph as a whole. One that would take long for that is shown in parts.
void BlockBuilder::cutLongParagraph(qsizetype size)
{
    if (m_beyondCap || m_leaf->kind == Kind::Table || m_inline.size() < size)
        return;
    const QString html = m_inline.cut();
    if (html.isEmpty())
        return;
    MarkdownBlock rest = *m_leaf;
    if (rest.kind == Kind::ListItem) {
        rest.kind = Kind::Paragraph;
        rest.marker = Marker::None;
        rest.number = 0;
    }
    rest.continues = true;
    m_leaf->html = html;
    m_result.blocks.append(*m_leaf);
    m_leaf = std::move(rest);
    m_beyondCap = m_result.blocks.size() >= MarkdownReader::maxBlocks;
}

bool BlockBuilder::spend(qsizetype addressSize)
{
    m_addressSizes += addressSize;
    return m_addressSizes <= maxAddressSizes;
}

bool BlockBuilder::enterSpan(MD_SPANTYPE type, const void *detail)
{
    if (!m_leaf) {
        beginLeaf(Kind::Paragraph);
        m_implicit = true;
    }
    switch (type) {
    case MD_SPAN_EM:
        m_inline.openTag(QLatin1StringView("i"));
        break;
    case MD_SPAN_STRONG:
        m_inline.openTag(QLatin1StringView("b"));
        break;
    case MD_SPAN_DEL:
        m_inline.openTag(QLatin1StringView("s"));
        break;
    case MD_SPAN_CODE:
        m_inline.openTag(QLatin1StringView("code"));
        break;
    case MD_SPAN_A: {
        const auto *link = static_cast<const MD_SPAN_A_DETAIL *>(detail);
        if (!spend(static_cast<qsizetype>(link->href.size) + link->title.size))
            return false;
        m_inline.openLink(attributeText(link->href));
        break;
    }
    case MD_SPAN_IMG: {
        const auto *image = static_cast<const MD_SPAN_IMG_DETAIL *>(detail);
        if (!spend(static_cast<qsizetype>(image->src.size) + image->title.size))
            return false;
        m_inline.openImage(attributeText(image->src));
        break;
    }
    case MD_SPAN_LATEXMATH:
    case MD_SPAN_LATEXMATH_DISPLAY:
    case MD_SPAN_WIKILINK:
    case MD_SPAN_U:
        break; // not asked for
    }
    return true;
}

void BlockBuilder::leaveSpan(MD_SPANTYPE type)
{
    switch (type) {
    case MD_SPAN_LATEXMATH:
    case MD_SPAN_LATEXMATH_DISPLAY:
    case MD_SPAN_WIKILINK:
    case MD_SPAN_U:
        return;
    default:
        m_inline.close();
    }
}

void BlockBuilder::text(MD_TEXTTYPE type, QStringView text)
{
    if (!m_leaf) {
        beginLeaf(Kind::Paragraph);
        m_implicit = true;
    }
    if (m_beyondCap)
        return;
    if (m_leaf->kind == Kind::Code) {
        m_leaf->text += type == MD_TEXT_NULLCHAR ? QStringView(u"\uFFFD") : text;
        return;
    }
    switch (type) {
    case MD_TEXT_NORMAL:
    case MD_TEXT_HTML:
        while (text.size() > MarkdownReader::longParagraph) {
            const qsizetype end = partEnd(text);
            m_inline.text(text.left(end));
            cutLongParagraph(end);
            text = text.mid(end);
        }
        m_inline.text(text);
        break;
    case MD_TEXT_NULLCHAR:
        m_inline.code(u"\uFFFD");
        break;
    case MD_TEXT_BR:
    case MD_TEXT_SOFTBR:
        m_inline.lineBreak();
        break;
    case MD_TEXT_ENTITY:
        m_inline.code(decodedReference(text));
        break;
    case MD_TEXT_CODE:
    case MD_TEXT_LATEXMATH:
        while (text.size() > MarkdownReader::longParagraph) {
            const qsizetype end = partEnd(text);
            m_inline.code(text.left(end));
            cutLongParagraph(end);
            text = text.mid(end);
        }
        m_inline.code(text);
        break;
    }
    cutLongParagraph(MarkdownReader::longParagraph);
}

} // namespace Vesk
