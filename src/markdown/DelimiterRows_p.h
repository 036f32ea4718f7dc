// Makes the parser take the short delimiter rows of tables ("|-|-|") that GitHub takes.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace Vesk
{

/**
 * A text for md4c, which asks for three signs in each cell of a delimiter row: shorter cells are filled up
 * with dashes. As such a row may also stand in code or in running text, the text that the parser gives back
 * is freed of them.
 */
class WidenedRows
{
public:
    explicit WidenedRows(QStringView text);

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    /** What was written where the parser found `size` bytes at `chars`. */
    [[nodiscard]] QString original(const char *chars, qsizetype size) const;

    /** The places in the text of these places in bytes(), which are ascending. */
    [[nodiscard]] std::vector<qsizetype> positions(const std::vector<qsizetype> &places) const;

private:
    void append(QByteArrayView line);
    void widen(QByteArrayView line);

    QByteArray m_bytes;
    std::vector<qsizetype> m_added; // places of added dashes, ascending
};

} // namespace Vesk
