// Times, sizes and counts as the session surface words them.
#pragma once

#include <QDateTime>
#include <QString>

namespace Vesk::ChatWords
{

/** A running time: "0:52", "1:24", "1:02:03". Negative times read as none. */
[[nodiscard]] QString elapsed(qint64 seconds);

/** How long something took: "0.3초", "9.8초", "1분 12초", "2시간 3분". */
[[nodiscard]] QString duration(qint64 milliseconds);

/** How long a prompt has been open: "방금" in its first minute, then "3분째 대기". */
[[nodiscard]] QString waiting(qint64 seconds);

/** A number of tokens: "950", "16k", "1.2M". */
[[nodiscard]] QString tokens(qint64 count);

/** A model by its short name: "Opus 4.5" for "claude-opus-4-5-20251101", "Opus" for "opus"; a name of another
    shape as it is. */
[[nodiscard]] QString modelName(const QString &model);

/** An attached file by its name; a picture from the clipboard, whose name was made up, as "이미지". */
[[nodiscard]] QString attachmentName(const QString &path);
[[nodiscard]] QString pictureName();

/** A size on disk: "512B", "184KB", "3.4MB". */
[[nodiscard]] QString fileSize(qint64 bytes);

/** When a row was made: the time alone on the day of `now`, else with month and day; empty for no time. */
[[nodiscard]] QString rowTime(const QDateTime &at, const QDateTime &now);

} // namespace Vesk::ChatWords
