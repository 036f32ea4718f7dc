// One line of code, with the words that differ marked.
#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class DiffText : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text MEMBER m_text WRITE setText NOTIFY changed REQUIRED)
    /** What is marked: pairs of start and length, in UTF-16 units. */
    Q_PROPERTY(QList<int> emphasis MEMBER m_emphasis WRITE setEmphasis NOTIFY changed)
    Q_PROPERTY(QColor ink MEMBER m_ink WRITE setInk NOTIFY changed)
    Q_PROPERTY(QColor mark MEMBER m_mark WRITE setMark NOTIFY changed)
    Q_PROPERTY(QFont font MEMBER m_font WRITE setFont NOTIFY changed)
    /** How far the line is scrolled to the left. */
    Q_PROPERTY(qreal offset MEMBER m_offset WRITE setOffset NOTIFY changed)
    /** Where the line ends, were it not scrolled. */
    Q_PROPERTY(qreal textWidth READ textWidth NOTIFY changed)

public:
    explicit DiffText(QQuickItem *parent = nullptr);

    void setText(const QString &text) { set(m_text, text); }
    void setEmphasis(const QList<int> &emphasis) { set(m_emphasis, emphasis); }
    void setInk(const QColor &ink) { set(m_ink, ink); }
    void setMark(const QColor &mark) { set(m_mark, mark); }
    void setFont(const QFont &font) { set(m_font, font); }
    void setOffset(qreal offset) { set(m_offset, offset); }
    [[nodiscard]] qreal textWidth() const;

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    template <typename Value>
    void set(Value &member, const Value &value)
    {
        if (member != value) {
            member = value;
            update();
            Q_EMIT changed();
        }
    }

    QString m_text;
    QList<int> m_emphasis;
    QColor m_ink;
    QColor m_mark;
    QFont m_font;
    qreal m_offset = 0;
};

} // namespace Vesk
