#include "git/GitPath.h"

#include <algorithm>

namespace Vesk::GitPath
{
namespace
{

constexpr char16_t escapeBase = 0xDC00;

constexpr bool isEscape(QChar c)
{
    return c.unicode() >= escapeBase + 0x80 && c.unicode() <= escapeBase + 0xFF;
}

bool isContinuation(uchar byte)
{
    return (byte & 0xC0U) == 0x80;
}

/** Bytes of the valid UTF-8 sequence at the start, 0 when there is none. */
qsizetype sequenceLength(QByteArrayView bytes)
{
    const auto byte = [&](qsizetype i) { return static_cast<uchar>(bytes[i]); };
    const uchar first = byte(0);
    if (first < 0x80)
        return 1;
    qsizetype length = 0;
    uchar lowest = 0x80; // of the second byte: shorter forms, surrogates and numbers beyond Unicode are out
    uchar highest = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        lowest = first == 0xE0 ? 0xA0 : 0x80;
        highest = first == 0xED ? 0x9F : 0xBF;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        lowest = first == 0xF0 ? 0x90 : 0x80;
        highest = first == 0xF4 ? 0x8F : 0xBF;
    }
    if (length == 0 || bytes.size() < length || byte(1) < lowest || byte(1) > highest)
        return 0;
    for (qsizetype i = 2; i < length; ++i) {
        if (!isContinuation(byte(i)))
            return 0;
    }
    return length;
}

char32_t codePoint(QByteArrayView sequence)
{
    const auto byte = [&](qsizetype i) { return static_cast<char32_t>(static_cast<uchar>(sequence[i])); };
    switch (sequence.size()) {
    case 1:
        return byte(0);
    case 2:
        return ((byte(0) & 0x1FU) << 6U) | (byte(1) & 0x3FU);
    case 3:
        return ((byte(0) & 0x0FU) << 12U) | ((byte(1) & 0x3FU) << 6U) | (byte(2) & 0x3FU);
    default:
        return ((byte(0) & 0x07U) << 18U) | ((byte(1) & 0x3FU) << 12U) | ((byte(2) & 0x3FU) << 6U)
            | (byte(3) & 0x3FU);
    }
}

} // namespace

QString decode(QByteArrayView bytes)
{
    if (std::ranges::all_of(bytes, [](char c) { return static_cast<uchar>(c) < 0x80; }))
        return QString::fromLatin1(bytes);
    // Not QString::fromUtf8: it takes a byte order mark for none of the name's.
    QString text;
    text.reserve(bytes.size());
    while (!bytes.isEmpty()) {
        const qsizetype length = sequenceLength(bytes);
        if (length == 0)
            text += QChar(static_cast<char16_t>(escapeBase + static_cast<uchar>(bytes.front())));
        else
            text += QStringView(QChar::fromUcs4(codePoint(bytes.first(length))));
        bytes = bytes.sliced(std::max<qsizetype>(length, 1));
    }
    return text;
}

QByteArray encode(QStringView text)
{
    QByteArray bytes;
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPaired = i > 0 && text[i - 1].isHighSurrogate();
        if (!isEscape(text[i]) || isPaired)
            continue;
        bytes += text.sliced(from, i - from).toUtf8();
        bytes += static_cast<char>(text[i].unicode() - escapeBase);
        from = i + 1;
    }
    return bytes + text.sliced(from).toUtf8();
}

QString shown(const QString &text)
{
    constexpr char16_t controlPictures = 0x2400;
    QString clean = text;
    for (qsizetype i = 0; i < clean.size(); ++i) {
        if (isEscape(clean[i]) && (i == 0 || !text[i - 1].isHighSurrogate()))
            clean[i] = QChar::ReplacementCharacter;
        else if (clean[i] < u' ')
            clean[i] = QChar(static_cast<char16_t>(controlPictures + clean[i].unicode()));
    }
    return clean;
}

QString inPatch(QStringView prefix, QStringView text)
{
    QString quoted;
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isForeign = isEscape(text[i]) && (i == 0 || !text[i - 1].isHighSurrogate());
        const ushort code = isForeign ? text[i].unicode() - escapeBase : text[i].unicode();
        if (isForeign || code < 0x20 || code == 0x7F) {
            quoted += u'\\' + QString::number(code, 8).rightJustified(3, u'0');
        } else if (code == u'"' || code == u'\\') {
            quoted += u'\\' + QString(text[i]);
        } else {
            quoted += text[i];
            continue;
        }
        isQuoted = true;
    }
    return isQuoted ? u'"' + prefix.toString() + quoted + u'"' : prefix.toString() + quoted;
}

} // namespace Vesk::GitPath
