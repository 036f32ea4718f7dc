#include "markdown/CodeLanguage_p.h"

#include <QHash>

namespace Vesk
{
namespace
{

QSet<QString> wordsIn(const char *list)
{
    const QStringList words = QString::fromLatin1(list).split(u' ');
    return {words.begin(), words.end()};
}

QHash<QString, CodeLanguage> languageTable()
{
    const QStringList slashes {QStringLiteral("//")};
    const QStringList hash {QStringLiteral("#")};
    const QStringList dashes {QStringLiteral("--")};
    const QString open = QStringLiteral("/*");
    const QString close = QStringLiteral("*/");
    const QString both = QStringLiteral("\"'");
    const QString all = QStringLiteral("\"'`");
    QHash<QString, CodeLanguage> table;
    const auto add = [&table](const char *names, const CodeLanguage &language) {
        for (const QString &name : QString::fromLatin1(names).split(u' '))
            table.insert(name, language);
    };
    add("c cc cpp cxx c++ h hpp objc",
        {slashes, open, close, both, true, false, false,
         wordsIn(
             "alignas auto bool break case catch char class concept const consteval constexpr const_cast continue "
             "co_await co_return co_yield decltype default delete do double dynamic_cast else enum explicit export "
             "extern false final float for friend goto if inline int long mutable namespace new noexcept nullptr "
             "operator override private protected public register reinterpret_cast requires return short signed "
             "sizeof static static_assert static_cast struct switch template this throw true try typedef typename "
             "union unsigned using virtual void volatile while")});
    add("java kotlin kt scala groovy cs csharp dart",
        {slashes, open, close, both, true, false, false,
         wordsIn(
             "abstract as async await base boolean break byte case catch char class const continue data def default "
             "do double else enum extends false final finally float for foreach fun if implements import in "
             "instanceof int interface internal is long namespace new null object open override package private "
             "protected public readonly return sealed short static string super switch synchronized this throw "
             "throws true try typeof using val var virtual void volatile when while yield")});
    add("js javascript jsx ts typescript tsx mjs qml vue",
        {slashes, open, close, all, true, false, false,
         wordsIn(
             "abstract any as async await boolean break case catch class const continue debugger declare default "
             "delete do else enum export extends false finally for from function get if implements import in "
             "instanceof interface keyof let namespace never new null number of private property protected public "
             "readonly required return set signal static string super switch this throw true try type typeof "
             "undefined unknown var void while with yield")});
    add("go golang",
        {slashes, open, close, all, true, false, false,
         wordsIn(
             "any bool break byte case chan const continue default defer else error fallthrough false float64 for "
             "func go goto if import int int64 interface iota map nil package range return rune select string struct "
             "switch true type uint8 var")});
    add("rust rs",
        {slashes, open, close, QStringLiteral("\""), true, false, false,
         wordsIn(
             "as async await bool break char const continue crate dyn else enum extern f32 f64 false fn for i32 i64 "
             "if impl in let loop match mod move mut pub ref return self Self static str String struct super trait "
             "true type u8 u32 u64 unsafe use usize where while")});
    add("swift",
        {slashes, open, close, QStringLiteral("\""), true, false, false,
         wordsIn(
             "actor as async await break case catch class continue default defer do else enum extension false for "
             "func guard if import in init inout internal is let nil override private protocol public return self "
             "Self some static struct super switch throw throws true try typealias var where while")});
    add("php",
        {{QStringLiteral("//"), QStringLiteral("#")},
         open,
         close,
         both,
         true,
         true,
         false,
         wordsIn(
             "abstract array as break case catch class const continue default do echo else elseif extends "
             "false final finally fn for foreach function if implements interface match namespace new null "
             "private protected public readonly return static switch this throw trait true try use while")});
    add("py python python3",
        {hash,
         {},
         {},
         both,
         true,
         false,
         false,
         wordsIn(
             "and as assert async await break case class continue def del elif else except False finally for from "
             "global if import in is lambda match None nonlocal not or pass raise return self True try while with "
             "yield")});
    add("rb ruby elixir ex",
        {hash,
         {},
         {},
         both,
         true,
         false,
         false,
         wordsIn(
             "alias and begin break case class def defmodule do else elsif end ensure false fn for if in module next "
             "nil not or raise require rescue return self super then true unless until when while yield")});
    add("sh bash zsh shell console fish",
        {hash,
         {},
         {},
         both,
         true,
         false,
         false,
         wordsIn(
             "case cd do done echo elif else esac eval exec exit export fi for function if in local read return set "
             "shift source then trap unset until while")});
    add("make makefile dockerfile docker",
        {hash,
         {},
         {},
         both,
         true,
         false,
         false,
         wordsIn(
             "ADD ARG CMD COPY ENTRYPOINT ENV EXPOSE FROM HEALTHCHECK LABEL RUN USER VOLUME WORKDIR AS define else "
             "endef endif ifdef ifeq ifndef ifneq include")});
    add("cmake",
        {hash,
         {},
         {},
         QStringLiteral("\""),
         true,
         true,
         false,
         wordsIn(
             "add_executable add_library add_subdirectory else elseif endforeach endfunction endif find_package "
             "foreach function if include option project return set target_link_libraries")});
    add("json json5 jsonc",
        {slashes, open, close, QStringLiteral("\""), true, false, false, wordsIn("true false null")});
    add("yaml yml toml ini conf properties",
        {hash, {}, {}, both, true, true, false, wordsIn("true false null yes no on off")});
    add("sql postgres postgresql mysql sqlite",
        {dashes, open, close, both, false, true, false,
         wordsIn(
             "add all alter and as asc begin between by case column commit constraint create cross default delete "
             "desc distinct drop else end exists false foreign from full group having if in index inner insert into "
             "is join key left like limit not null offset on or order outer primary references returning right "
             "rollback select set table then true union unique update using values view when where with")});
    add("lua",
        {dashes, QStringLiteral("--[["), QStringLiteral("]]"), both, true, false, false,
         wordsIn(
             "and break do else elseif end false for function goto if in local nil not or repeat return then "
             "true until while")});
    add("css scss less",
        {slashes, open, close, both, true, false, false,
         wordsIn("important import media supports keyframes from to and not only inherit initial none")});
    add("html xml svg", {{}, QStringLiteral("<!--"), QStringLiteral("-->"), both, false, false, false, {}});
    add("diff patch", {{}, {}, {}, {}, false, false, true, {}});
    return table;
}

} // namespace

const CodeLanguage *codeLanguage(const QString &name)
{
    static const QHash<QString, CodeLanguage> table = languageTable();
    const auto found = table.constFind(name.toLower());
    return found == table.constEnd() ? nullptr : &*found;
}

} // namespace Vesk
