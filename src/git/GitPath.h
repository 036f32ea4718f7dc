// Names of files as git gives them: bytes of any kind, carried in text without loss.
#pragma once

#include <QByteArray>
#include <QString>

namespace Vesk::GitPath
{

/** UTF-8 to text. A byte that is no part of valid UTF-8 becomes the low surrogate U+DC00 + byte, which no
   valid text holds alone, so that encode() gives back every byte. */
[[nodiscard]] QString decode(QByteArrayView bytes);

/** The bytes that decode() was given. */
[[nodiscard]] QByteArray encode(QStringView text);

/** For people, in one line: what stands for a foreign byte becomes the replacement character, a control
   character its picture. */
[[nodiscard]] QString shown(const QString &text);

/** `prefix` and the name as a patch has them: between quotes and with escapes where it has to be. */
[[nodiscard]] QString inPatch(QStringView prefix, QStringView text);

} // namespace Vesk::GitPath
