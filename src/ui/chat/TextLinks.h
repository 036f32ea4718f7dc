// The links of a text by keyboard.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/**
 * Walks through the links of a text item that has the focus: Tab and Shift+Tab go from link to link and leave
 * the text behind the last one, Enter follows. The text is to show the range from `start` to `end`.
 */
class TextLinks : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *item MEMBER m_item WRITE setItem NOTIFY itemChanged)
    Q_PROPERTY(QQuickTextDocument *document MEMBER m_document WRITE setDocument NOTIFY itemChanged)
    /** The chosen link's address; empty for none. */
    Q_PROPERTY(QString address READ address NOTIFY chosenChanged)

public:
    using QObject::QObject;

    void setItem(QQuickItem *item);
    void setDocument(QQuickTextDocument *document) { m_document = document; }
    [[nodiscard]] QString address() const { return m_address; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void itemChanged();
    void chosenChanged(int start, int end); ///< positions in the document, both 0 for none
    void followed(const QString &address);

private:
    struct Link {
        int start = 0;
        int end = 0;
        QString address;
    };

    [[nodiscard]] QList<Link> links() const;
    void choose(const QList<Link> &links, qsizetype index);
    bool step(int by);

    QPointer<QQuickItem> m_item;
    QPointer<QQuickTextDocument> m_document;
    QString m_address;
    qsizetype m_chosen = -1;
};

} // namespace Vesk
