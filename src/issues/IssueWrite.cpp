#include "issues/IssueWrite.h"

#include "base/Files.h"
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

std::optional<QString> createIssueFile(const QString &path, const QString &text)
{
    const auto made = writeAtomically(path, text.toUtf8(), ReplacementRules {.onlyNew = true});
    if (made) {
        return std::nullopt;
    }
    return made.error().kind == ErrorKind::Unavailable ? IssueWrite::nameTakenText() : made.error().text;
}

} // namespace

QString IssueWrite::nameTakenText()
{
    return QStringLiteral("같은 이름의 파일이 이미 있습니다");
}

IssueWrite::IO IssueWrite::live(std::function<void(const QString &path)> flush)
{
    return {std::move(flush), writeIssueFile, createIssueFile};
}

} // namespace Vesk
