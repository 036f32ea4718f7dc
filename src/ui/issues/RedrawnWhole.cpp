#include "ui/issues/RedrawnWhole.h"

#include "ui/issues/PainterNode.h"

#include <QQuickWindow>
#include <QSGRendererInterface>

namespace Vesk
{
namespace
{

class BlankNode : public PainterNode
{
public:
    using PainterNode::noteChanged;
    using PainterNode::PainterNode;

protected:
    void paint(QPainter & /*painter*/, const QRectF & /*area*/) override { }
};

} // namespace

RedrawnWhole::RedrawnWhole(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *RedrawnWhole::updatePaintNode(QSGNode *old, UpdatePaintNodeData * /*data*/)
{
    if (window()->rendererInterface()->graphicsApi() != QSGRendererInterface::Software) {
        return nullptr; // a graphics processor draws all anew as it is
    }
    auto *node = old ? static_cast<BlankNode *>(old) : new BlankNode(*window());
    node->noteChanged(boundingRect());
    return node;
}

} // namespace Vesk
