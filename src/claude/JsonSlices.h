// JSON text taken apart without being changed: values are slices of the text that they came in, so that what
// goes back is byte for byte what came. For the few lines where that matters; the stream's reader is
// StreamDecoder.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace Vesk::JsonSlices
{

enum class Kind { Object, Array, String, Number, Bool, Null };

struct Member {
    QString key;
    std::string_view value;
};

/** Whether the text is one JSON value. Every other function here asks for a text that passed this, or a slice
    of one. */
[[nodiscard]] bool isValid(std::string_view text);

/** isValid(), and an object. */
[[nodiscard]] bool isValidObject(std::string_view text);
/** isValid(), and an array. */
[[nodiscard]] bool isValidArray(std::string_view text);

[[nodiscard]] Kind kind(std::string_view value);

/** The members of an object in their order; none for any other value. */
[[nodiscard]] std::vector<Member> members(std::string_view object);

/** The elements of an array; none for any other value. */
[[nodiscard]] std::vector<std::string_view> elements(std::string_view array);

/** The value of a key; of several the last, as the agent program reads it. */
[[nodiscard]] std::optional<std::string_view> value(std::string_view object, QStringView key);

/** The text of a string value with its escapes resolved; half of a surrogate pair becomes U+FFFD. */
[[nodiscard]] QString text(std::string_view string);

/** The text under a key, when it is a string. */
[[nodiscard]] std::optional<QString> stringAt(std::string_view object, QStringView key);

/** The value without white space between its tokens. */
[[nodiscard]] QByteArray compact(std::string_view value);

/** `text` as a JSON string with its quotes. Line and paragraph separators are escaped too: some readers of
    lines take them for line ends. */
[[nodiscard]] QByteArray quoted(const QString &text);

/** `object` with the key set to a value: in the place of the old one, else behind the last member. All other
    bytes stay. */
[[nodiscard]] QByteArray withMember(std::string_view object, QStringView key, QByteArrayView value);

} // namespace Vesk::JsonSlices
