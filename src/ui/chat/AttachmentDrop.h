// Where files and pictures may be dropped.
#pragma once

#include "ui/chat/AttachmentList.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Takes what can be attached; everything else is left to whoever lies below. */
class AttachmentDrop : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::AttachmentList *attachments MEMBER m_attachments NOTIFY attachmentsChanged REQUIRED)
    Q_PROPERTY(bool containsDrag READ containsDrag NOTIFY containsDragChanged)

public:
    explicit AttachmentDrop(QQuickItem *parent = nullptr);

    [[nodiscard]] bool containsDrag() const { return m_containsDrag; }

Q_SIGNALS:
    void attachmentsChanged();
    void containsDragChanged();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void setContainsDrag(bool contains);

    QPointer<AttachmentList> m_attachments;
    bool m_containsDrag = false;
};

} // namespace Vesk
