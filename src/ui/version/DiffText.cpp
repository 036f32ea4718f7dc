#include "ui/version/DiffText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

namespace Vesk
{

namespace
{

constexpr int tabColumns = 8;

/** The layout of the one line; its text is not wrapped. */
QTextLine layOut(QTextLayout &layout, const QFont &font)
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(QFontMetricsF(font).horizontalAdvance(u' ') * tabColumns);
    layout.setTextOption(option);
    layout.setCacheEnabled(false);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line;
}

} // namespace

DiffText::DiffText(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
}

qreal DiffText::textWidth() const
{
    QTextLayout layout(m_text, m_font);
    const QTextLine line = layOut(layout, m_font);
    return line.isValid() ? line.naturalTextWidth() : 0;
}

void DiffText::paint(QPainter *painter)
{
    QTextLayout layout(m_text, m_font);
    const QTextLine line = layOut(layout, m_font);
    if (!line.isValid())
        return;
    const qreal inset = 1;
    for (qsizetype i = 0; i + 1 < m_emphasis.size(); i += 2) {
        const qreal from = line.cursorToX(m_emphasis[i]);
        const qreal to = line.cursorToX(m_emphasis[i] + m_emphasis[i + 1]);
        painter->fillRect(QRectF(from - m_offset, inset, to - from, height() - 2 * inset), m_mark);
    }
    painter->setPen(m_ink);
    layout.draw(painter, QPointF(-m_offset, (height() - line.height()) / 2));
}

} // namespace Vesk
