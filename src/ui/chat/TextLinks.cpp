#include "ui/chat/TextLinks.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QTextBlock>
#include <QTextDocument>

namespace Vesk
{

void TextLinks::setItem(QQuickItem *item)
{
    if (m_item == item) {
        return;
    }
    if (m_item) {
        m_item->removeEventFilter(this);
    }
    m_item = item;
    if (m_item) {
        m_item->installEventFilter(this);
    }
    Q_EMIT itemChanged();
}

bool TextLinks::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn: {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        const auto all = links();
        if (reason == Qt::TabFocusReason) {
            choose(all, 0);
        } else if (reason == Qt::BacktabFocusReason) {
            choose(all, all.size() - 1);
        }
        break;
    }
    case QEvent::FocusOut:
        choose({}, -1);
        break;
    case QEvent::KeyPress: {
        const auto *press = static_cast<QKeyEvent *>(event);
        const bool enter = press->key() == Qt::Key_Return || press->key() == Qt::Key_Enter;
        if (enter && !m_address.isEmpty() && !press->isAutoRepeat()) {
            Q_EMIT followed(m_address);
            return true;
        }
        if (press->key() == Qt::Key_Tab || press->key() == Qt::Key_Backtab) {
            const bool back = press->key() == Qt::Key_Backtab || press->modifiers() & Qt::ShiftModifier;
            return step(back ? -1 : 1);
        }
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

QList<TextLinks::Link> TextLinks::links() const
{
    QList<Link> found;
    const auto *document = m_document ? m_document->textDocument() : nullptr;
    for (auto block = document ? document->begin() : QTextBlock(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const auto fragment = part.fragment();
            const auto address = fragment.charFormat().anchorHref();
            const int end = fragment.position() + fragment.length();
            if (address.isEmpty()) {
                continue;
            }
            // A link with bold words in it is several fragments.
            if (!found.isEmpty() && found.last().end == fragment.position()
                && found.last().address == address) {
                found.last().end = end;
            } else {
                found.append({fragment.position(), end, address});
            }
        }
    }
    return found;
}

void TextLinks::choose(const QList<Link> &links, qsizetype index)
{
    const auto link = links.value(index);
    m_chosen = link.address.isEmpty() ? -1 : index;
    if (m_address.isEmpty() && link.address.isEmpty()) {
        return;
    }
    m_address = link.address;
    Q_EMIT chosenChanged(link.start, link.end);
}

// False when there is no link that way: the key goes on to the next item.
bool TextLinks::step(int by)
{
    const auto all = links();
    const auto next = m_chosen < 0 ? (by > 0 ? 0 : -1) : m_chosen + by;
    if (next < 0 || next >= all.size()) {
        return false;
    }
    choose(all, next);
    return true;
}

} // namespace Vesk
