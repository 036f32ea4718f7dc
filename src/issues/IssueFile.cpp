#include "issues/IssueFile.h"

#include "base/Files.h"
#include "base/Text.h"

namespace Vesk
{

Result<QString> IssueFile::read(const QString &path)
{
    const auto bytes = readFile(path, maxBytes);
    if (!bytes) {
        return tl::unexpected(bytes.error());
    }
    auto text = Text::fromStrictUtf8(*bytes);
    if (!text) {
        return failure(ErrorKind::Malformed, path + QStringLiteral(" is not UTF-8"));
    }
    return std::move(*text);
}

QString IssueFile::problem(const Error &error)
{
    switch (error.kind) {
    case ErrorKind::NotFound:
        return QStringLiteral("파일이 없습니다");
    case ErrorKind::Malformed:
        return QStringLiteral("UTF-8 텍스트가 아닙니다");
    case ErrorKind::TooLarge:
        return QStringLiteral("파일이 너무 큽니다(32 MiB 초과)");
    case ErrorKind::Unreadable:
    case ErrorKind::Unwritable:
    case ErrorKind::Unavailable:
        return QStringLiteral("파일을 읽지 못했습니다");
    }
    Q_UNREACHABLE();
}

} // namespace Vesk
