// JSON text for property tests, with what parsers like to change: long numbers, escapes, odd white space.
#pragma once

#include <QByteArray>

#include <rapidcheck.h>

#include <string>
#include <vector>

namespace Vesk::Test
{

inline rc::Gen<std::string> jsonString()
{
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                            "a", "B", " ", "한", "😀", "\\u0041", "\\ud83d\\ude00", "\\ud83d", "\\udc00",
                            "\\\\", "\\\"", "\\/", "\\n", "{", "}", "[", "]", ",", ":", "\xe2\x80\xa8")),
                        [](const std::vector<std::string> &pieces) {
                            std::string text = "\"";
                            for (const std::string &piece : pieces)
                                text += piece;
                            return text + "\"";
                        });
}

inline rc::Gen<std::string> jsonValue(int depth);

inline rc::Gen<std::string> jsonList(int depth, bool isObject)
{
    const auto item = isObject
        ? rc::gen::apply([](const std::string &key, const std::string &space,
                            const std::string &value) { return key + space + ":" + space + value; },
                         jsonString(), rc::gen::element<std::string>("", " ", "\t"), jsonValue(depth - 1))
        : jsonValue(depth - 1);
    return rc::gen::map(rc::gen::resize(6, rc::gen::container<std::vector<std::string>>(item)),
                        [isObject](const std::vector<std::string> &items) {
                            std::string text;
                            for (const std::string &each : items)
                                text += (text.empty() ? "" : ",") + each;
                            return isObject ? "{" + text + "}" : "[" + text + "]";
                        });
}

inline rc::Gen<std::string> jsonValue(int depth)
{
    const auto scalar = rc::gen::oneOf(
        jsonString(),
        rc::gen::element<std::string>("true", "false", "null", "0", "-0", "9007199254740993123",
                                      "18446744073709551616", "-9223372036854775809", "1e400", "-1E+400",
                                      "1e-400", "0.1000", "1.7976931348623157e308"));
    if (depth <= 0)
        return scalar;
    return rc::gen::oneOf(scalar, rc::gen::lazy([depth] { return jsonList(depth, false); }),
                          rc::gen::lazy([depth] { return jsonList(depth, true); }));
}

/** The text of a valid JSON object. */
inline rc::Gen<QByteArray> jsonObject()
{
    return rc::gen::map(jsonList(3, true),
                        [](const std::string &text) { return QByteArray::fromStdString(text); });
}

} // namespace Vesk::Test
