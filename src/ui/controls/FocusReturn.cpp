#include "ui/controls/FocusReturn.h"

#include <QQuickWindow>

#include <utility>

namespace Vesk
{

namespace
{

/** Those whose popup is open, in the order of opening. */
QList<FocusReturn *> &openReturns()
{
    static QList<FocusReturn *> returns;
    return returns;
}

bool canHold(const QQuickItem *item, const QQuickWindow *window)
{
    return item && item->window() == window && item->isVisible() && item->isEnabled();
}

} // namespace

FocusReturn::~FocusReturn()
{
    openReturns().removeOne(this);
}

void FocusReturn::begin(QQuickItem *place)
{
    m_holders.clear();
    m_window = place ? place->window() : nullptr;
    if (!m_window) {
        return;
    }
    if (auto *item = m_window->activeFocusItem(); item && item != m_window->contentItem()) {
        m_holders.append({item, item->property("visualFocus").toBool()});
    }
    openReturns().removeOne(this);
    for (auto below = openReturns().crbegin(); below != openReturns().crend(); ++below) {
        if ((*below)->m_window == m_window) {
            m_holders += (*below)->m_holders;
            break;
        }
    }
    openReturns().append(this);
}

void FocusReturn::end()
{
    openReturns().removeOne(this);
    const auto holders = std::exchange(m_holders, {});
    if (!m_window) {
        return;
    }
    const auto *now = m_window->activeFocusItem();
    if (now && now != m_window->contentItem()) {
        return;
    }
    for (const auto &holder : holders) {
        if (canHold(holder.item, m_window)) {
            holder.item->forceActiveFocus(holder.ringed ? Qt::TabFocusReason : Qt::PopupFocusReason);
            return;
        }
    }
}

} // namespace Vesk
