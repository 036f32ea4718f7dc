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
        return QStringLiteral("심볼릭 링크가 순환합니다 — 어디에 써야 할지 알 수 없어 쓰지 않았습니다");
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
