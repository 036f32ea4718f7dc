// Walking over bytes that a separator divides, without copying them.
#pragma once

#include <QByteArrayView>

#include <optional>

namespace Vesk
{

/** Gives the pieces in turn, empty ones too, also the one after the last separator. */
class GitFields
{
public:
    GitFields(QByteArrayView bytes, char separator)
        : m_rest(bytes)
        , m_separator(separator)
    {
    }

    [[nodiscard]] std::optional<QByteArrayView> next()
    {
        if (m_isDone)
            return std::nullopt;
        const qsizetype end = m_rest.indexOf(m_separator);
        m_isDone = end < 0;
        const QByteArrayView field = m_isDone ? m_rest : m_rest.first(end);
        m_rest = m_isDone ? QByteArrayView() : m_rest.sliced(end + 1);
        return field;
    }

private:
    QByteArrayView m_rest;
    char m_separator;
    bool m_isDone = false;
};

} // namespace Vesk
