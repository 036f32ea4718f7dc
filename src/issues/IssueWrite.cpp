#include "issues/IssueWrite.h"

#include "markdown/MarkdownFileWriter.h"

namespace Vesk
{

namespace
{

std::optional<QString> writeIssueFile(const QString &path, const QString &text)
{
    const auto target = MarkdownFileWriter::target(path);
    if (!target.resolved) {
        return MarkdownFileWriter::unresolvedText();
    }
    const auto written = MarkdownFileWriter::write(target.path, text.toUtf8());
    return written ? std::nullopt : std::optional(written.error().text);
}

} // namespace

IssueWrite::IO IssueWrite::live(std::function<void(const QString &path)> flush)
{
    return {std::move(flush), writeIssueFile};
}

} // namespace Vesk
