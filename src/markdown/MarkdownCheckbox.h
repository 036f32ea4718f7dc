// Task lists: "- [ ] open", "* [x] done".
#pragma once

#include <QStringView>

#include <optional>

namespace Vesk::MarkdownCheckbox
{

/** How many boxes there are, and how many of them are checked. */
struct Progress {
    int done = 0;
    int total = 0;
    bool operator==(const Progress &) const = default;
};

struct Item {
    bool checked = false;
    QStringView text; ///< behind the box, without blanks around it; a view of the line that was read
    bool operator==(const Item &) const = default;
};

/** The item on a line that has no blanks around it; absent when it is none. */
[[nodiscard]] std::optional<Item> parse(QStringView line);

/** The boxes of a text, those in code fences left out. */
[[nodiscard]] Progress progress(QStringView text);

} // namespace Vesk::MarkdownCheckbox
