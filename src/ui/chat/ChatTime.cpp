#include "ui/chat/ChatTime.h"

#include "ui/chat/ChatWords.h"

namespace Vesk
{

QString ChatTime::elapsed(const QDateTime &from, const QDateTime &now) const
{
    return from.isValid() ? ChatWords::elapsed(from.secsTo(now)) : QString();
}

QString ChatTime::waiting(const QDateTime &since, const QDateTime &now) const
{
    return since.isValid() ? ChatWords::waiting(since.secsTo(now)) : QString();
}

} // namespace Vesk
