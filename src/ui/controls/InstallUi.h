// What an engine needs before it can load any of the window's QML.
#pragma once

class QQmlEngine;

namespace Vesk
{

/** Gives `engine` the path of our QML modules and the drawers of icons and shadows, and chooses how text is
 * drawn. Once per engine, before the first window. */
void installUi(QQmlEngine &engine);

} // namespace Vesk
