// The texts that the typist program writes: each tells from its bytes alone whether it is whole.
#pragma once

#include <QString>

namespace Vesk::Test
{

/** The typist's text after `keys` keystrokes; its length varies, so that files grow and shrink. */
inline QString typedText(int keys)
{
    const QString line = QStringLiteral("줄 %1\n").arg(keys);
    return line.repeated(12'000 + keys * 37 % 3000);
}

/** The keystrokes behind a text; -1 when it is no whole text. */
inline int keysOf(const QString &text)
{
    const qsizetype end = text.indexOf(u'\n');
    bool ok = false;
    const int keys = text.mid(2, end - 2).toInt(&ok);
    return ok && text == typedText(keys) ? keys : -1;
}

} // namespace Vesk::Test
