#include "git/GitIndex.h"

#include <QtEndian>

namespace Vesk::GitIndex
{
namespace
{

constexpr qsizetype headerBytes = 12;
constexpr qsizetype modeOffset = 24;     // of an entry: after two times, device and inode
constexpr qsizetype statBytes = 40;      // what stands before the hash
constexpr quint16 extendedFlag = 0x4000; // two more bytes of flags follow
constexpr quint32 typeMask = 0170000;
constexpr quint32 submoduleType = 0160000;

template <typename Number>
Number numberAt(QByteArrayView bytes, qsizetype at)
{
    return qFromBigEndian<Number>(bytes.data() + at);
}

/** The number of version 4 that says how much of the path before is dropped. Absent at the end of the bytes.
 */
std::optional<qsizetype> offsetAt(QByteArrayView bytes, qsizetype &at)
{
    constexpr qsizetype most = qsizetype {1} << 40;
    qsizetype value = 0;
    for (bool isFirst = true;; isFirst = false) {
        if (at >= bytes.size() || value > most)
            return std::nullopt;
        const auto byte = static_cast<uchar>(bytes[at++]);
        value = isFirst ? byte & 0x7FU : ((value + 1) << 7) + (byte & 0x7FU);
        if ((byte & 0x80U) == 0)
            return value;
    }
}

/** An extension named "link" says that most entries stand in another file. */
bool isSplit(QByteArrayView bytes, qsizetype at, qsizetype hashBytes)
{
    constexpr qsizetype extensionHeader = 8;
    while (at + extensionHeader <= bytes.size() - hashBytes) {
        if (bytes.sliced(at, 4) == "link")
            return true;
        at += extensionHeader + numberAt<quint32>(bytes, at + 4);
    }
    return false;
}

} // namespace

std::optional<QByteArrayList> submodules(QByteArrayView bytes, qsizetype hashBytes)
{
    if (bytes.size() < headerBytes || !bytes.startsWith("DIRC"))
        return std::nullopt;
    const auto version = numberAt<quint32>(bytes, 4);
    const auto count = numberAt<quint32>(bytes, 8);
    if (version < 2 || version > 4)
        return std::nullopt;

    QByteArrayList found;
    QByteArray path; // of version 4, where each tells only how it differs from the one before
    qsizetype at = headerBytes;
    for (quint32 entry = 0; entry < count; ++entry) {
        const qsizetype start = at;
        at += statBytes + hashBytes + 2;
        if (at > bytes.size())
            return std::nullopt;
        if ((numberAt<quint16>(bytes, at - 2) & extendedFlag) != 0)
            at += 2;
        if (version == 4) {
            const auto dropped = offsetAt(bytes, at);
            if (!dropped || *dropped > path.size())
                return std::nullopt;
            path.chop(*dropped);
        }
        const qsizetype end = at <= bytes.size() ? bytes.indexOf('\0', at) : -1;
        if (end < 0)
            return std::nullopt;
        const QByteArrayView name = bytes.sliced(at, end - at);
        if (version == 4) {
            path.append(name);
            at = end + 1;
        } else {
            at = start + (end - start + 8) / 8 * 8; // padded to eights, by one byte at least
        }
        if ((numberAt<quint32>(bytes, start + modeOffset) & typeMask) == submoduleType)
            found.append(version == 4 ? path : name.toByteArray());
    }
    if (isSplit(bytes, at, hashBytes))
        return std::nullopt;
    return found;
}

QByteArrayList submodulesOfListing(QByteArrayView bytes)
{
    QByteArrayList found;
    for (const QByteArray &record : QByteArray::fromRawData(bytes.data(), bytes.size()).split('\0')) {
        const qsizetype tab = record.indexOf('\t');
        if (tab >= 0 && record.startsWith("160000 ")
            && found.value(found.size() - 1) != record.sliced(tab + 1))
            found.append(record.sliced(tab + 1));
    }
    return found;
}

} // namespace Vesk::GitIndex
