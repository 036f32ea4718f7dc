#include "sessions/ChatMessage.h"

#include "base/Text.h"
#include "base/Utf8Clip.h"

#include <array>
#include <atomic>

namespace Vesk
{

namespace
{

constexpr qsizetype maxSummaryCharacters = 80;

/** The last two pieces of a path that has at least three; empty for a shorter one. */
QString pathTail(const QString &path)
{
    const QStringList pieces = path.split(u'/', Qt::SkipEmptyParts);
    if (pieces.size() < 3)
        return {};
    return pieces.at(pieces.size() - 2) + u'/' + pieces.last();
}

} // namespace

ToolActivity ToolActivity::begun(const StreamContent &block, const QDateTime &at)
{
    ToolActivity activity;
    activity.id = block.id ? *block.id : QUuid::createUuid().toString(QUuid::WithoutBraces);
    activity.name = block.name.value_or(QStringLiteral("도구"));
    activity.summary = summaryLine(activity.name, block.input.toObject());
    activity.startedAt = at;
    return activity;
}

QString ToolActivity::summaryLine(const QString &name, const QJsonObject &input)
{
    static constexpr std::array keys {QLatin1StringView("description"), QLatin1StringView("command"),
                                      QLatin1StringView("file_path"),   QLatin1StringView("path"),
                                      QLatin1StringView("pattern"),     QLatin1StringView("query"),
                                      QLatin1StringView("url"),         QLatin1StringView("skill"),
                                      QLatin1StringView("prompt"),      QLatin1StringView("subject")};
    for (const QLatin1StringView key : keys) {
        const QJsonValue value = input.value(key);
        if (!value.isString())
            continue;
        const QString line = Text::firstLine(value.toString());
        if (line.isEmpty())
            return name;
        const bool isPath = key == QLatin1StringView("file_path") || key == QLatin1StringView("path");
        // The tail is taken before the cut: what tells two long paths apart stands at their ends.
        const QString tail = isPath ? pathTail(line) : QString();
        if (!tail.isEmpty())
            return name + QStringLiteral(" · …/") + Text::clipped(tail, maxSummaryCharacters);
        return name + QStringLiteral(" · ") + Text::clipped(line, maxSummaryCharacters);
    }
    return name;
}

void ToolActivity::finish(const QString &rawOutput, bool isError, const QDateTime &at, qsizetype droppedBytes)
{
    const QString trimmed = Text::trimWhitespace(rawOutput);
    if (trimmed.isEmpty()) {
        output.reset();
    } else {
        const UTF8Clip clip = UTF8Clip::prefix(trimmed, maxOutputBytes);
        const qsizetype omitted = clip.droppedBytes + droppedBytes;
        output =
            omitted == 0 ? clip.text : clip.text + QStringLiteral("\n… (이후 %1바이트 생략)").arg(omitted);
    }
    outcome = isError ? Outcome::Failed : Outcome::Ok;
    finishedAt = at;
}

// Drawing every id from the system would cost more than all else that a row needs.
QUuid ChatMessage::freshId()
{
    static const QUuid first = QUuid::createUuid();
    static std::atomic<uint> count = 0;
    QUuid id = first;
    id.data1 += count.fetch_add(1, std::memory_order_relaxed);
    return id;
}

} // namespace Vesk
