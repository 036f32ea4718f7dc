#include "ui/version/VersionWords.h"

#include <QLocale>
#include <QStringList>

namespace Vesk::VersionWords
{

namespace
{

QString grouped(qint64 number)
{
    return QLocale(QLocale::Korean).toString(number);
}

} // namespace

QString commitDate(qint64 timestamp, const QDateTime &now)
{
    const QDateTime at = QDateTime::fromSecsSinceEpoch(timestamp);
    return at.toString(at.date().year() == now.date().year() ? QStringLiteral("MM-dd HH:mm")
                                                             : QStringLiteral("yyyy-MM-dd"));
}

QString diffSentence(const GitDiff::Content &content)
{
    using Kind = GitDiff::Content::Kind;
    switch (content.kind) {
    case Kind::Lines:
        return {};
    case Kind::Failed:
        return content.failure;
    case Kind::Binary:
        return QStringLiteral("바이너리 파일이라 줄로 보여 줄 것이 없습니다");
    case Kind::Directory:
        return QStringLiteral("추적하지 않는 폴더라 비교할 것이 없습니다");
    case Kind::Empty:
        break;
    }
    return QStringLiteral("내용은 바뀌지 않았습니다");
}

QString omission(const GitDiff::FileDiff &diff)
{
    QStringList parts;
    if (diff.omittedLines > 0)
        parts.append(QStringLiteral("이후 %1줄 생략").arg(grouped(diff.omittedLines)));
    if (diff.readBytes < diff.totalBytes)
        parts.append(
            QStringLiteral("그 뒤의 %1바이트는 읽지 않음").arg(grouped(diff.totalBytes - diff.readBytes)));
    return parts.join(QStringLiteral(" · "));
}

QString remark(const GitDiff::FileDiff &diff)
{
    using Kind = GitDiff::Line::Kind;
    bool isWholeFile = false;
    for (const GitDiff::Line &line : diff.content.lines) {
        if (line.kind != Kind::Meta)
            return omission(diff);
        isWholeFile |= line.text.startsWith(QStringLiteral("new file mode"))
            || line.text.startsWith(QStringLiteral("deleted file mode"));
    }
    return isWholeFile ? QStringLiteral("내용이 없는 파일입니다") : omission(diff);
}

QString clipped(qsizetype bytes)
{
    return bytes > 0 ? QStringLiteral("+%1바이트").arg(grouped(bytes)) : QString();
}

} // namespace Vesk::VersionWords
