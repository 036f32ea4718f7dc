#include "sessions/StreamObservation.h"

#include "base/Utf8Clip.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace Vesk
{

namespace
{

constexpr int minLinesForWarning = 20;
constexpr int maxTokenLength = 32;

int percent(int part, int whole)
{
    return whole > 0 ? qRound(100.0 * part / whole) : 0;
}

bool isTokenCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_'
        || c == u'-' || c == u'.';
}

bool becomesSpace(QChar c)
{
    return (c >= u'\t' && c <= u'\r') || c == u'\u0085' || c == u'\u2028' || c == u'\u2029';
}

} // namespace

bool StreamObservation::noteUnknown(const QString &name)
{
    const auto known = unknownCounts.find(name);
    if (known != unknownCounts.end()) {
        ++known.value();
        return false;
    }
    if (unknownCounts.size() >= maxUnknownNames) {
        ++unknownOverflow;
        return false;
    }
    unknownCounts.insert(name, 1);
    return true;
}

int StreamObservation::droppedLines() const
{
    return std::accumulate(unknownCounts.cbegin(), unknownCounts.cend(), decodeFailures + unknownOverflow);
}

std::optional<QString> StreamObservation::warningLine() const
{
    const int dropped = droppedLines();
    if (totalLines < minLinesForWarning || dropped * qint64(4) < totalLines)
        return std::nullopt;
    return QStringLiteral("ℹ️ 이 세션 스트림의 %1%를 Vesk가 못 읽고 버렸습니다 — "
                          "Claude CLI가 바뀌었을 수 있습니다(자세한 내용은 감사 로그).")
        .arg(percent(dropped, totalLines));
}

std::optional<QString> StreamObservation::summaryLine() const
{
    const int dropped = droppedLines();
    QStringList parts;
    if (dropped > 0) {
        parts << QStringLiteral("못 읽은 줄 %1/%2 (%3%)")
                     .arg(dropped)
                     .arg(totalLines)
                     .arg(percent(dropped, totalLines));
    }
    if (stderrLines > 0)
        parts << QStringLiteral("stderr %1줄").arg(stderrLines);
    if (parts.isEmpty())
        return std::nullopt;
    return parts.join(QStringLiteral(" · "));
}

QString StreamObservation::detailText() const
{
    QStringList lines;
    if (decodeFailures > 0)
        lines << QStringLiteral("디코드 실패 %1줄").arg(decodeFailures);
    std::vector<std::pair<QString, int>> names;
    names.reserve(static_cast<size_t>(unknownCounts.size()));
    for (auto it = unknownCounts.cbegin(); it != unknownCounts.cend(); ++it)
        names.emplace_back(it.key(), it.value());
    std::sort(names.begin(), names.end(), [](const auto &a, const auto &b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    for (const auto &[unknownName, count] : names)
        lines << QStringLiteral(" %1 %2줄").arg(unknownName).arg(count);
    if (unknownOverflow > 0)
        lines << QStringLiteral("이름을 못 담은 줄 %1 (종류 상한 %2)")
                     .arg(unknownOverflow)
                     .arg(maxUnknownNames);
    if (stderrLines > 0)
        lines << QStringLiteral("CLI stderr %1줄 — 내용은 감사 로그에").arg(stderrLines);
    return lines.join(u'\n');
}

QString StreamObservation::name(const QString &type, const std::optional<QString> &subtype)
{
    const QString unnamed = QStringLiteral("?");
    QString result = token(type).value_or(unnamed);
    if (subtype && !subtype->isEmpty())
        result += u'/' + token(*subtype).value_or(unnamed);
    return result;
}

std::optional<QString> StreamObservation::token(const QString &text)
{
    if (text.isEmpty() || text.size() > maxTokenLength
        || !std::all_of(text.cbegin(), text.cend(), isTokenCharacter))
        return std::nullopt;
    return text;
}

QString StreamObservation::rawPreview(const QString &text)
{
    QString line;
    line.reserve(std::min<qsizetype>(text.size(), 2 * maxPreviewBytes));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n')
            continue; // the pair is one character
        if (becomesSpace(c))
            line += u' ';
        else if (c >= u' ' && c != u'\u007f')
            line += c;
    }
    const auto isSpace = [](QChar c) { return c == u' '; };
    const auto first = std::find_if_not(line.cbegin(), line.cend(), isSpace);
    const auto last = std::find_if_not(line.crbegin(), std::make_reverse_iterator(first), isSpace).base();
    const QString trimmed = line.sliced(first - line.cbegin(), last - first);
    const UTF8Clip clip = UTF8Clip::prefix(trimmed, maxPreviewBytes);
    return clip.droppedBytes == 0 ? clip.text : clip.text + QStringLiteral("…");
}

QString StreamObservation::rawPreview(std::string_view utf8)
{
    // A line can have many megabytes; its preview needs a few hundred bytes.
    constexpr size_t enough = 16 * 1024;
    size_t length = std::min(utf8.size(), enough);
    while (length > 0 && length < utf8.size() && (static_cast<unsigned char>(utf8[length]) & 0xC0) == 0x80)
        --length;
    return rawPreview(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(length)));
}

} // namespace Vesk
