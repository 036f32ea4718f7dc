#include "issues/IssueDocument.h"

#include "issues/IssueCells.h"
#include "issues/TableLine_p.h"
#include "markdown/MarkdownCheckbox.h"
#include "markdown/MarkdownLines.h"

#include <algorithm>
#include <utility>

namespace Vesk
{
namespace
{

/** Reads a file line by line into a document. */
class DocumentReader
{
public:
    IssueDocument read(QStringView markdown, QStringView fileName)
    {
        MarkdownLines lines(markdown);
        while (const auto line = lines.next()) {
            if (!line->fenced) // nothing in a fence is a heading, a row or a checkbox
                this->line(*line);
        }
        commitRow();
        nameAfterFile(fileName);
        return std::move(m_document);
    }

private:
    void line(const MarkdownLine &line)
    {
        constexpr QStringView titleSign = u"# ";
        if (line.trimmed.startsWith(titleSign) && m_document.id.isEmpty() && m_document.title.isEmpty()) {
            std::tie(m_document.id, m_document.title) =
                IssueCells::splitHeading(line.trimmed.sliced(titleSign.size()));
        } else if (line.isSectionHeading()) {
            commitRow();
            m_document.sections.append({.title = line.sectionTitle().toString()});
        } else if (m_document.sections.isEmpty() && line.isTableLine()) {
            tableLine(line.trimmed);
        } else {
            if (m_document.sections.isEmpty())
                commitRow();
            checkbox(line.trimmed);
        }
    }

    void tableLine(QStringView line)
    {
        m_document.hasMetaTable = true;
        if (!IssueCells::isSeparatorRow(line)) {
            commitRow();
            m_row = TableLine::pair(line);
        } else {
            m_row.reset(); // it was the header
        }
    }

    void commitRow()
    {
        if (const auto row = std::exchange(m_row, std::nullopt))
            m_document.fields.append({.key = IssueCells::normalizeValue(row->first),
                                      .value = IssueCells::normalizeValue(row->second),
                                      .rawValue = row->second.toString()});
    }

    void checkbox(QStringView line)
    {
        const auto item = MarkdownCheckbox::parse(line);
        if (!item)
            return;
        count(m_document.progress, item->checked);
        if (!m_document.sections.isEmpty())
            count(m_document.sections.last().progress, item->checked);
    }

    static void count(IssueDocument::Progress &progress, bool checked)
    {
        ++progress.total;
        progress.done += checked ? 1 : 0;
    }

    void nameAfterFile(QStringView fileName)
    {
        QStringView stem = fileName;
        if (const qsizetype dot = fileName.lastIndexOf(u'.'); dot > 0)
            stem = fileName.left(dot);
        if (m_document.title.isEmpty())
            m_document.title = (m_document.id.isEmpty() ? stem : m_document.id).toString();
        if (m_document.id.isEmpty())
            m_document.id = IssueCells::leadingID(stem).value_or(stem.toString());
    }

    IssueDocument m_document;
    std::optional<std::pair<QStringView, QStringView>> m_row; ///< not yet known to be no header
};

const IssueDocument::Field *fieldOf(const IssueDocument &document, const QStringList &keys)
{
    for (const IssueDocument::Field &field : document.fields) {
        if (keys.contains(field.key, Qt::CaseInsensitive))
            return &field;
    }
    return nullptr;
}

QStringList idsIn(const std::optional<QString> &cell)
{
    QStringList ids;
    for (const IssueDocument::Ref &ref : IssueCells::refDetails(cell))
        ids.append(ref.id);
    return ids;
}

std::optional<QString> unlessEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

IssueDocument IssueDocument::parse(const QString &markdown, const QString &fileName)
{
    return DocumentReader().read(markdown, fileName);
}

std::optional<QString> IssueDocument::key(const QStringList &keys) const
{
    const Field *field = fieldOf(*this, keys);
    return field != nullptr ? std::optional(field->key) : std::nullopt;
}

std::optional<QString> IssueDocument::value(const QStringList &keys) const
{
    const Field *field = fieldOf(*this, keys);
    return field != nullptr ? unlessEmpty(field->value) : std::nullopt;
}

std::optional<QString> IssueDocument::rawValue(const QStringList &keys) const
{
    const Field *field = fieldOf(*this, keys);
    return field != nullptr ? std::optional(field->rawValue) : std::nullopt;
}

std::optional<QString> IssueDocument::status() const
{
    return unlessEmpty(statusCell().word);
}

IssueDocument::StatusCell IssueDocument::statusCell() const
{
    return IssueCells::statusCell(rawValue(IssueKeys::status()).value_or(QString()));
}

QStringList IssueDocument::blockedBy() const
{
    return idsIn(rawValue(IssueKeys::blockedBy()));
}

QStringList IssueDocument::blocks() const
{
    return idsIn(rawValue(IssueKeys::blocks()));
}

} // namespace Vesk
