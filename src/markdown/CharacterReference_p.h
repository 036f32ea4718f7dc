// Character references such as "&amp;" and "&#x41;".
#pragma once

#include <QString>
#include <QStringView>

namespace Vesk
{

/** What a reference stands for; a name that is not known, or an impossible number, stays as it was written.
 */
[[nodiscard]] QString decodedReference(QStringView reference);

} // namespace Vesk
