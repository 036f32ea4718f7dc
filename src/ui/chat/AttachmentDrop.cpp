#include "ui/chat/AttachmentDrop.h"

namespace Vesk
{

AttachmentDrop::AttachmentDrop(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemAcceptsDrops);
}

void AttachmentDrop::dragEnterEvent(QDragEnterEvent *event)
{
    const bool takes = m_attachments && AttachmentList::canTake(*event->mimeData());
    if (takes) {
        // The source keeps what it gave, whatever it proposed.
        event->setDropAction(Qt::CopyAction);
    }
    event->setAccepted(takes);
    setContainsDrag(takes);
}

void AttachmentDrop::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(m_containsDrag);
}

void AttachmentDrop::dragLeaveEvent(QDragLeaveEvent *event)
{
    setContainsDrag(false);
    event->accept();
}

void AttachmentDrop::dropEvent(QDropEvent *event)
{
    setContainsDrag(false);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(m_attachments && m_attachments->take(*event->mimeData()));
}

void AttachmentDrop::setContainsDrag(bool contains)
{
    if (m_containsDrag != contains) {
        m_containsDrag = contains;
        Q_EMIT containsDragChanged();
    }
}

} // namespace Vesk
