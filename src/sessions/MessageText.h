// The texts that are made of what a person sends.
#pragma once

#include <QString>
#include <QStringList>

namespace Vesk
{

/** The name of a session, from its first message: that message's first line, at most 40 characters and "…".
 */
[[nodiscard]] QString titleFrom(const QString &text);

/** The prompt for the agent: the text, and below it the attached files, one path a line. */
[[nodiscard]] QString composePrompt(const QString &body, const QStringList &attachments);

} // namespace Vesk
