// Any code in any language gives parts in order, within the text, none within another and none through a
// character. The first byte chooses the language.
#include "markdown/CodeTokens.h"

#include <QString>

#include <array>
#include <cstdint>
#include <cstdlib>

namespace
{

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace Vesk;
    // One of each family.
    static constexpr std::array<const char *, 19> languages {
        "cpp",  "java",  "ts",   "go",   "rust", "swift", "php", "python", "ruby", "bash",
        "make", "cmake", "json", "yaml", "sql",  "lua",   "css", "html",   "diff"};
    if (size == 0)
        return 0;
    const auto code =
        QString::fromUtf8(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    const QList<CodeToken> tokens =
        CodeTokens::of(code, QString::fromLatin1(languages.at(data[0] % languages.size())));
    expect(tokens.isEmpty() || code.size() <= CodeTokens::maxCharacters);
    qsizetype behind = 0;
    for (const CodeToken &token : tokens) {
        expect(token.begin >= behind && token.size > 0 && token.size <= code.size() - token.begin);
        behind = token.begin + token.size;
        for (const qsizetype border : {token.begin, behind})
            expect(border == 0 || border == code.size()
                   || !(code[border].isLowSurrogate() && code[border - 1].isHighSurrogate()));
    }
    return 0;
}
