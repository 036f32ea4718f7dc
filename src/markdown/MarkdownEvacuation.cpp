#include "markdown/MarkdownEvacuation.h"

#include "base/Files.h"

#include <QFile>

#include <sys/stat.h>

#include <climits>

namespace Vesk
{
namespace
{

constexpr qsizetype maxEvacuatedBytes = qsizetype(512) * 1024 * 1024;

// The longest end of a name that the file system takes with `reserved` bytes behind it.
QString fittingName(QString stem, qsizetype reserved)
{
    qsizetype excess = stem.toUtf8().size() + reserved - NAME_MAX;
    qsizetype cut = 0;
    while (excess > 0 && cut < stem.size()) {
        const qsizetype units = stem[cut].isHighSurrogate() ? 2 : 1;
        excess -= stem.mid(cut, units).toUtf8().size();
        cut += units;
    }
    return stem.mid(cut);
}

} // namespace

QString evacuationReasonText(EvacuationReason reason)
{
    switch (reason) {
    case EvacuationReason::FileMissing:
        return QStringLiteral("원래 경로에 파일이 없어(외부 삭제·이동, 또는 순환 링크) 저장할 자리가 없었다");
    case EvacuationReason::Unreadable:
        return QStringLiteral("원본을 읽지 못해(비UTF8·권한) 그 위에 쓰는 것을 막았다");
    case EvacuationReason::ExternalChange:
        return QStringLiteral("외부(다른 에디터·다듬기 세션의 Claude)가 파일을 먼저 고쳐 자동 저장이 "
                              "보류됐다(덮어쓸지는 사람이 골라야 한다)");
    case EvacuationReason::SaveFailed:
        return QStringLiteral("쓰기 자체가 실패했다(권한·디스크·링크 미해결 — 위 로그 참고)");
    }
    Q_UNREACHABLE();
}

QString pathFingerprint(const QString &path)
{
    quint64 hash = 0xcbf29ce484222325U;
    for (const char byte : path.toUtf8()) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3U;
    }
    return QStringLiteral("%1").arg(hash >> 32U, 8, 16, QLatin1Char('0'));
}

EvacuationSlot evacuationURL(const QString &path, const QString &under, const QByteArray &body,
                             const WhatIsThere &whatIsThere)
{
    const QString folder = under.endsWith(u'/') ? under : under + u'/';
    QString stem = path.startsWith(folder) ? path.mid(folder.size()) : path.mid(path.lastIndexOf(u'/') + 1);
    stem.replace(u'/', u'-');
    constexpr QLatin1String suffix(".unsaved");
    const QString mark = QStringLiteral("--") + pathFingerprint(path);
    constexpr qsizetype numberBytes = 3; // of "-50"
    stem = fittingName(stem, mark.size() + numberBytes + suffix.size()) + mark;
    for (int n = 1; n <= evacuationAttempts; ++n) {
        const QString number = n == 1 ? QString() : u'-' + QString::number(n);
        const QString candidate = folder + stem + number + suffix;
        const auto there = whatIsThere(candidate);
        if (!there)
            return {EvacuationSlot::Kind::Use, candidate};
        if (there->bytes == body)
            return {EvacuationSlot::Kind::AlreadySaved, candidate};
    }
    return {};
}

std::optional<EvacuationCandidate> whatIsOnDisk(const QString &path)
{
    struct stat status {
    };
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    auto bytes = readFile(path, maxEvacuatedBytes);
    return EvacuationCandidate {bytes ? std::optional(*std::move(bytes)) : std::nullopt};
}

mode_t evacuationMode(const QString &path)
{
    struct stat status {
    };
    constexpr mode_t ownerAlone = 0600;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return ownerAlone;
    return (status.st_mode & 0666U) | ownerAlone;
}

} // namespace Vesk
