#include "markdown/DelimiterRows_p.h"

#include <algorithm>
#include <functional>

namespace Vesk
{
namespace
{

// "|", blanks, dashes and colons alone, from the first "|" on; quote marks may stand before it.
bool isDelimiterRow(QByteArrayView line)
{
    const auto isLead = [](char c) { return c == ' ' || c == '\t' || c == '>'; };
    const auto *const row = std::find_if_not(line.begin(), line.end(), isLead);
    if (row == line.end() || *row != '|')
        return false;
    const auto isSign = [](char c) { return c == '|' || c == '-' || c == ':' || c == ' ' || c == '\t'; };
    return std::all_of(row, line.end(), isSign) && std::find(row, line.end(), '-') != line.end();
}

} // namespace

WidenedRows::WidenedRows(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    m_bytes.reserve(bytes.size());
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype found = bytes.indexOf('\n', at);
        const qsizetype next = found < 0 ? bytes.size() : found + 1;
        append(QByteArrayView(bytes).sliced(at, next - at));
        at = next;
    }
}

void WidenedRows::append(QByteArrayView line)
{
    qsizetype size = line.size();
    while (size > 0 && (line[size - 1] == '\n' || line[size - 1] == '\r'))
        --size;
    const QByteArrayView row = line.first(size);
    if (isDelimiterRow(row)) {
        widen(row);
        line = line.sliced(size);
    }
    m_bytes.append(line);
}

void WidenedRows::widen(QByteArrayView line)
{
    constexpr qsizetype least = 3;
    qsizetype signs = 0; // of the cell so far
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line[i];
        m_bytes.append(c);
        signs = c == '-' || c == ':' ? signs + 1 : 0;
        const bool dashesEnd = c == '-' && (i + 1 == line.size() || line[i + 1] != '-');
        if (!dashesEnd)
            continue;
        const qsizetype all = signs + (i + 1 < line.size() && line[i + 1] == ':' ? 1 : 0);
        for (qsizetype k = all; k < least; ++k) {
            m_added.push_back(m_bytes.size());
            m_bytes.append('-');
        }
    }
}

QString WidenedRows::original(const char *chars, qsizetype size) const
{
    // Texts that the parser makes itself (a line end, a blank) lie elsewhere.
    const char *const begin = m_bytes.constData();
    const bool isOurs = !std::less<>()(chars, begin) && std::less<>()(chars, begin + m_bytes.size());
    const qsizetype from = isOurs ? chars - begin : 0;
    auto added = std::lower_bound(m_added.begin(), m_added.end(), from);
    if (!isOurs || added == m_added.end() || *added >= from + size)
        return QString::fromUtf8(chars, size);
    QByteArray text;
    qsizetype at = from;
    for (; added != m_added.end() && *added < from + size; ++added) {
        text.append(QByteArrayView(begin + at, *added - at));
        at = *added + 1;
    }
    text.append(QByteArrayView(begin + at, from + size - at));
    return QString::fromUtf8(text);
}

std::vector<qsizetype> WidenedRows::positions(const std::vector<qsizetype> &places) const
{
    std::vector<qsizetype> found;
    found.reserve(places.size());
    auto added = m_added.begin();
    qsizetype at = 0;
    qsizetype position = 0;
    for (const qsizetype place : places) {
        for (; at < place; ++at) {
            if (added != m_added.end() && *added == at) {
                ++added;
                continue;
            }
            const auto byte = static_cast<unsigned char>(m_bytes[at]);
            const bool continuation = (byte & 0xC0) == 0x80;
            constexpr unsigned char firstOfFour = 0xF0;
            position += continuation ? 0 : byte >= firstOfFour ? 2 : 1;
        }
        found.push_back(position);
    }
    return found;
}

} // namespace Vesk
