// The states that a session's mark can show.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace Vesk::SessionMarks
{

Q_NAMESPACE
QML_NAMED_ELEMENT(SessionMarks)

/** In rising precedence: of several states that hold at once, the last one is shown. */
enum class Kind {
    Idle,       ///< seen, nothing happens
    Finished,   ///< turn over, not seen yet
    Background, ///< turn over, background work runs
    Running,
    Failed, ///< not seen yet
    WaitAnswer,
    WaitApproval
};
Q_ENUM_NS(Kind)

} // namespace Vesk::SessionMarks
