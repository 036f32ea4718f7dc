#include "base/Utf8Clip.h"

namespace Vesk
{

namespace
{

struct Step {
    qsizetype units;
    qsizetype bytes;
};

/** The code point at `i`; a lone surrogate counts as the replacement character that stands for it. */
Step stepAt(QStringView text, qsizetype i)
{
    const char16_t unit = text[i].unicode();
    if (unit < 0x80)
        return {1, 1};
    if (unit < 0x800)
        return {1, 2};
    if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
        return {2, 4};
    return {1, 3};
}

/** Bytes of UTF-8. Tool output of megabytes passes here, so the common case is a loop without branches. */
qsizetype utf8Size(QStringView text)
{
    qsizetype bytes = 0;
    qsizetype surrogates = 0;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        bytes += 1 + static_cast<int>(unit >= 0x80) + static_cast<int>(unit >= 0x800);
        surrogates += static_cast<int>((unit & 0xF800U) == 0xD800U);
    }
    if (surrogates == 0)
        return bytes;
    bytes = 0;
    for (qsizetype i = 0; i < text.size();) {
        const Step step = stepAt(text, i);
        bytes += step.bytes;
        i += step.units;
    }
    return bytes;
}

} // namespace

UTF8Clip UTF8Clip::prefix(const QString &text, qsizetype maxBytes)
{
    constexpr qsizetype mostBytesPerUnit = 3;
    if (maxBytes >= text.size() * mostBytesPerUnit)
        return {text, 0};

    qsizetype units = 0;
    for (qsizetype bytes = 0; units < text.size();) {
        const Step step = stepAt(text, units);
        bytes += step.bytes;
        if (bytes > maxBytes)
            break;
        units += step.units;
    }
    if (units == text.size())
        return {text, 0};
    return {text.left(units), utf8Size(QStringView(text).sliced(units))};
}

} // namespace Vesk
