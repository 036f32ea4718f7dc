#include "ui/chat/ChatWords.h"

#include "sessions/AttachmentCache.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace Vesk::ChatWords
{

QString elapsed(qint64 seconds)
{
    const auto whole = std::max<qint64>(seconds, 0);
    const auto twoDigits = [](qint64 value) {
        return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
    };
    if (whole < 3600) {
        return QStringLiteral("%1:%2").arg(whole / 60).arg(twoDigits(whole % 60));
    }
    return QStringLiteral("%1:%2:%3")
        .arg(whole / 3600)
        .arg(twoDigits(whole / 60 % 60), twoDigits(whole % 60));
}

QString duration(qint64 milliseconds)
{
    const auto span = std::max<qint64>(milliseconds, 0);
    if (span < 60'000) {
        // Cut, not rounded: 59.96 seconds must not read as 60.0.
        return QStringLiteral("%1.%2초").arg(span / 1000).arg(span % 1000 / 100);
    }
    const auto minutes = span / 60'000;
    if (minutes < 60) {
        return QStringLiteral("%1분 %2초").arg(minutes).arg(span / 1000 % 60);
    }
    return QStringLiteral("%1시간 %2분").arg(minutes / 60).arg(minutes % 60);
}

QString waiting(qint64 seconds)
{
    if (seconds < 60) {
        return QStringLiteral("방금");
    }
    if (seconds < 3600) {
        return QStringLiteral("%1분째 대기").arg(seconds / 60);
    }
    return QStringLiteral("%1시간째 대기").arg(seconds / 3600);
}

QString tokens(qint64 count)
{
    if (count < 1000) {
        return QString::number(std::max<qint64>(count, 0));
    }
    if (count < 999'500) {
        return QStringLiteral("%1k").arg((count + 500) / 1000);
    }
    if (count % 1'000'000 == 0) {
        return QStringLiteral("%1M").arg(count / 1'000'000);
    }
    return QStringLiteral("%1M").arg(static_cast<double>(count) / 1e6, 0, 'f', 1);
}

QString modelName(const QString &model)
{
    static const QRegularExpression shape(
        QStringLiteral("^(?:claude-)?([a-z]+)(?:-(\\d{1,2}))?(?:-(\\d{1,2}))?(?:-\\d{8})?(?:\\[\\w+\\])?$"));
    const auto match = shape.match(model);
    if (!match.hasMatch()) {
        return model;
    }
    QString name = match.captured(1);
    name[0] = name.at(0).toUpper();
    if (match.hasCaptured(2)) {
        name += u' ' + match.captured(2);
    }
    if (match.hasCaptured(3)) {
        name += u'.' + match.captured(3);
    }
    return name;
}

QString pictureName()
{
    return QStringLiteral("이미지");
}

QString attachmentName(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    return AttachmentCache::isGivenName(name) ? pictureName() : name;
}

QString fileSize(qint64 bytes)
{
    if (bytes < 1024) {
        return QStringLiteral("%1B").arg(std::max<qint64>(bytes, 0));
    }
    if (bytes < 1024 * 1024) {
        return QStringLiteral("%1KB").arg((bytes + 512) / 1024);
    }
    return QStringLiteral("%1MB").arg(static_cast<double>(bytes) / (1024.0 * 1024.0), 0, 'f', 1);
}

QString rowTime(const QDateTime &at, const QDateTime &now)
{
    if (!at.isValid()) {
        return {};
    }
    const auto local = at.toLocalTime();
    return local.date() == now.toLocalTime().date() ? local.toString(QStringLiteral("HH:mm"))
                                                    : local.toString(QStringLiteral("M/d HH:mm"));
}

} // namespace Vesk::ChatWords
