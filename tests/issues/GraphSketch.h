// Graphs in one line of text.
#pragma once

#include "issues/IssueGraph.h"

namespace Vesk::Test
{

/** Issues in the order in which they are first named: "A" names one, "A=done" gives it a status, "A@M1" a
   milestone. "A>B": A blocks B, written at both. "A>B!" has a line through it at B, "A>B<" is written at B
   alone, "A>B>" at A alone. A name that begins with "?" has no file. */
[[nodiscard]] QList<IssueGraph::Input> sketchedInputs(const QString &text);
[[nodiscard]] IssueGraph::Graph sketchedGraph(const QString &text);

/** Some graph of a few issues, loops and finished issues among them. For use in a property. */
[[nodiscard]] QString anySketch();

} // namespace Vesk::Test
