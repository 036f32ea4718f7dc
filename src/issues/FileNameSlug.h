// The part of a file name that is made from a title.
#pragma once

#include <QString>

namespace Vesk::FileNameSlug
{

/** Letters of any script, digits, "-" and "_"; blanks inside become "-", anything else goes. May be empty. */
[[nodiscard]] QString slug(const QString &text);

} // namespace Vesk::FileNameSlug
