#include "markdown/MarkdownReader.h"

#include "markdown/CodeTokens.h"
#include "markdown/MarkdownLinks.h"
#include "markdown/MarkdownStyle.h"
#include "support/TestRegistry.h"

#include <QRegularExpression>
#include <QtTest>

#include <rapidcheck.h>

#include <string>
#include <vector>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

using Kind = MarkdownBlock::Kind;
using Marker = MarkdownBlock::Marker;

QList<MarkdownBlock> blocksOf(const QString &text)
{
    return MarkdownReader::parse(text).blocks;
}

// One line per block, such as "item(1) 3. text" or "quote2 para text", to read a whole text at a glance.
QString outline(const QString &text)
{
    QStringList lines;
    for (const MarkdownBlock &block : blocksOf(text)) {
        QString line;
        if (block.quoteDepth > 0)
            line += u"quote%1 "_s.arg(block.quoteDepth);
        if (block.listDepth > 0)
            line += u"list%1 "_s.arg(block.listDepth);
        switch (block.kind) {
        case Kind::Paragraph:
            line += u"p "_s + block.html;
            break;
        case Kind::Heading:
            line += u"h%1 "_s.arg(block.headingLevel) + block.html;
            break;
        case Kind::Code:
            line += u"code(%1) "_s.arg(block.language) + block.text;
            break;
        case Kind::Rule:
            line += u"rule"_s;
            break;
        case Kind::Table:
            line += u"table%1 "_s.arg(block.columnCount()) + block.cells.join(u'|');
            break;
        case Kind::ListItem: {
            const QString marks[] = {u"?"_s, u"-"_s, QString::number(block.number) + u'.', u"[ ]"_s,
                                     u"[x]"_s};
            line += marks[int(block.marker)] + u' ' + block.html;
        }
        }
        lines.append(line);
    }
    return lines.join(u'\n');
}

// Every '<' begins a tag of the white list, every '&' a reference, and the tags nest.
bool isSafe(const QString &html)
{
    static const QRegularExpression token(
        u"\\G(?:[^<&>\"']+|&(?:lt|gt|amp|quot|#39);|<(b|i|s|code|a href=\"[^\"<>]*\")>|</(b|i|s|code|a)>|<br>)"_s);
    QStringList open;
    qsizetype at = 0;
    while (at < html.size()) {
        const QRegularExpressionMatch match = token.match(html, at);
        if (!match.hasMatch())
            return false;
        if (!match.captured(1).isEmpty())
            open.append(match.captured(1).section(u' ', 0, 0));
        if (!match.captured(2).isEmpty() && (open.isEmpty() || open.takeLast() != match.captured(2)))
            return false;
        if (match.captured(1).startsWith(u"a href=\"javascript:"_s, Qt::CaseInsensitive))
            return false;
        at = match.capturedEnd();
    }
    return open.isEmpty();
}

} // namespace

class MarkdownReaderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inlineHtml_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("html");
        const auto row = [](const char *name, const QString &text, const QString &html) {
            QTest::newRow(name) << text << html;
        };
        row("styles", u"*a* **b** ~~c~~ ***d***"_s, u"<i>a</i> <b>b</b> <s>c</s> <i><b>d</b></i>"_s);
        row("code", u"`a  <b> &amp;`"_s, u"<code>a  &lt;b&gt; &amp;amp;</code>"_s);
        row("line ends stay", u"a\nb  \nc"_s, u"a<br>b<br>c"_s);
        row("nul", QString(u"a"_s + QChar(0) + u"b"_s), u"a\uFFFDb"_s);
        row("script", u"<script>alert(1)</script>"_s, u"&lt;script&gt;alert(1)&lt;/script&gt;"_s);
        row("handler", u"<img src=x onerror=a()>"_s, u"&lt;img src=x onerror=a()&gt;"_s);
        row("references", u"&lt;b&gt; &amp; &#x41;&#0; &rarr; &nope;"_s,
            u"&lt;b&gt; &amp; A\uFFFD → &amp;nope;"_s);
        row("escapes", u"\\*a\\* \\<b>"_s, u"*a* &lt;b&gt;"_s);

        row("link", u"[a](https://x.y/?a=1&b=2)"_s, u"<a href=\"https://x.y/?a=1&amp;b=2\">a</a>"_s);
        row("quote in address", u"[a](<https://x/\"onx='1>)"_s,
            u"<a href=\"https://x/&quot;onx=&#39;1\">a</a>"_s);
        row("file", u"[a](src/a.cpp) [b](/tmp/b.txt)"_s,
            u"<a href=\"src/a.cpp\">a</a> <a href=\"/tmp/b.txt\">b</a>"_s);
        row("file with line", u"[a](a.cpp:12) [b](src/b.cpp:1:2)"_s,
            u"<a href=\"a.cpp:12\">a</a> <a href=\"src/b.cpp:1:2\">b</a>"_s);
        row("script address", u"[x](javascript:alert(1))"_s, u"x (javascript:alert(1))"_s);
        row("hidden scheme", u"[x](<java&#9;script:a> 't') [y](JaVaScRiPt&colon;a)"_s,
            u"x (java\tscript:a) <a href=\"JaVaScRiPt&amp;colon;a\">y</a>"_s);
        row("other schemes", u"[x](data:text/html,a) [y](ftp://a/b) [z](//host/a) [w](#top)"_s,
            u"x (data:text/html,a) y (ftp://a/b) z (//host/a) w (#top)"_s);
        row("mail", u"<a@b.kr> [m](mailto:a@b.kr)"_s, u"a@b.kr m (mailto:a@b.kr)"_s);
        row("empty link", u"[](https://x.y)"_s, u"<a href=\"https://x.y\">https://x.y</a>"_s);
        row("reference link", u"[a][r]\n\n[r]: https://x.y 'title'"_s, u"<a href=\"https://x.y\">a</a>"_s);

        row("picture", u"![a *b*](http://x/y.png)"_s, u"<a href=\"http://x/y.png\">[그림: a b]</a>"_s);
        row("picture without text", u"![](a.png)"_s, u"<a href=\"a.png\">[그림]</a>"_s);
        row("picture in data", u"![a](data:image/png;base64,AA)"_s,
            u"[그림: a] (data:image/png;base64,AA)"_s);
        row("picture in link", u"[![a](http://x/y.png)](http://z)"_s,
            u"<a href=\"http://z\">[그림: a]</a>"_s);

        row("address in text", u"보기: https://x.y/a_b(c)에서, (http://z.kr/q?a=1)."_s,
            u"보기: <a href=\"https://x.y/a_b(c)\">https://x.y/a_b(c)</a>에서, "
            "(<a href=\"http://z.kr/q?a=1\">http://z.kr/q?a=1</a>)."_s);
        row("www", u"www.x.kr www. awww.x.kr http://"_s,
            u"<a href=\"http://www.x.kr\">www.x.kr</a> www. awww.x.kr http://"_s);
        row("address as link text", u"[http://a.b](http://c.d)"_s,
            u"<a href=\"http://c.d\">http://a.b</a>"_s);
        row("address in code", u"`http://a.b`"_s, u"<code>http://a.b</code>"_s);
        row("unfinished", u"**a [b](http://x `c"_s, u"**a [b](<a href=\"http://x\">http://x</a> `c"_s);
    }
    void inlineHtml()
    {
        QFETCH(const QString, text);
        const auto blocks = blocksOf(text);
        QCOMPARE(blocks.size(), 1);
        QTEST(blocks.first().html, "html");
        QVERIFY(isSafe(blocks.first().html));
    }

    void structure_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << u" \n\n"_s << u""_s;
        QTest::newRow("headings") << u"# a\nb\n\nc\n---\n***"_s << u"h1 a\np b\nh2 c\nrule"_s;
        QTest::newRow("lists") << u"- a\n  - b\n    1. c\n    2. d\n- e"_s
                               << u"list1 - a\nlist2 - b\nlist3 1. c\nlist3 2. d\nlist1 - e"_s;
        QTest::newRow("numbers go on")
            << u"7. a\n\n   more\n8. b"_s << u"list1 7. a\nlist1 p more\nlist1 8. b"_s;
        QTest::newRow("tasks") << u"- [ ] a\n- [x] b\n- c"_s << u"list1 [ ] a\nlist1 [x] b\nlist1 - c"_s;
        QTest::newRow("item of code")
            << u"- ```sh\n  ls\n  ```\n-\n- > q"_s
            << u"list1 - \nlist1 code(sh) ls\nlist1 - \nlist1 - \nquote1 list1 p q"_s;
        QTest::newRow("quotes") << u"> a\n> > b\n\nc"_s << u"quote1 p a\nquote2 p b\np c"_s;
        QTest::newRow("fence") << u"```c++ extra\nint a<b>;\n\n  x\n```\nz"_s
                               << u"code(c++) int a<b>;\n\n  x\np z"_s;
        QTest::newRow("open fence") << u"a\n```py\nx = 1\n"_s << u"p a\ncode(py) x = 1"_s;
        QTest::newRow("fence just opened") << u"```"_s << u"code() "_s;
        QTest::newRow("indented code") << u"    a\n    b"_s << u"code() a\nb"_s;
        QTest::newRow("table") << u"|a|b|\n|-|:-:|\n|*c*|`d|\n|e|f|g|"_s << u"table2 a|b|<i>c</i>|`d|e|f"_s;
        QTest::newRow("short row") << u"|a|b|\n|-|-|\n|c|\n\nz"_s << u"table2 a|b|c|\np z"_s;
        QTest::newRow("delimiters elsewhere") << u"```\n|a|\n|-|:-|\n```\n|-|\n\n> |a|\n> | -|"_s
                                              << u"code() |a|\n|-|:-|\np |-|\nquote1 table1 a"_s;
        QTest::newRow("table in list") << u"- a\n\n  |b|\n  |-|\n  |c|"_s << u"list1 - a\nlist1 table1 b|c"_s;
        QTest::newRow("html block") << u"<div>\n*a*\n</div>"_s
                                    << u"p &lt;div&gt;<br><i>a</i><br>&lt;/div&gt;"_s;
        QTest::newRow("crlf") << u"a\r\n\r\n- b\r\n"_s << u"p a\nlist1 - b"_s;
    }
    void structure()
    {
        QFETCH(const QString, text);
        QTEST(outline(text), "expected");
    }

    void tablesSayHowTheyStand()
    {
        const auto table = blocksOf(u"|a|b|c|d|\n|-|:-|:-:|-:|\n"_s).first();
        QCOMPARE(table.alignments,
                 (QList<int> {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight}));
        QVERIFY(!blocksOf(u"- a\n\n- b"_s).first().tight);
        QVERIFY(blocksOf(u"- a\n- b"_s).first().tight);
    }

    void capsCountWhatTheyDrop()
    {
        const auto many = MarkdownReader::parse(u"- a\n"_s.repeated(MarkdownReader::maxBlocks + 7));
        QCOMPARE(many.blocks.size(), MarkdownReader::maxBlocks);
        QCOMPARE(many.droppedBlocks, 7);

        const auto wide =
            blocksOf(u"|a"_s.repeated(262) + u"\n"_s + u"|-"_s.repeated(262) + u"\n|b|\n"_s).first();
        QCOMPARE(wide.columnCount(), MarkdownReader::maxTableColumns);
        QCOMPARE(wide.cells.size(), 2 * MarkdownReader::maxTableColumns);
        QCOMPARE(wide.droppedColumns, 6);
        const auto tall =
            blocksOf(u"|a|\n|-|\n"_s + u"|b|\n"_s.repeated(MarkdownReader::maxTableRows + 4)).first();
        QCOMPARE(tall.cells.size(), MarkdownReader::maxTableRows);
        QCOMPARE(tall.droppedRows, 5); // the head is a row too
        const auto large = blocksOf(u"|a"_s.repeated(200) + u"\n"_s + u"|-"_s.repeated(200) + u"\n"_s
                                    + u"|b|\n"_s.repeated(150))
                               .first();
        QCOMPARE(large.cells.size(), MarkdownReader::maxTableCells);
        QCOMPARE(large.droppedRows, 51);

        const auto deep = blocksOf(u"> "_s.repeated(100) + u"- "_s.repeated(100) + u"a"_s).last();
        QCOMPARE(deep.quoteDepth, MarkdownReader::maxDepth);
        QCOMPARE(deep.listDepth, MarkdownReader::maxDepth);

        const auto cut =
            MarkdownReader::parse(u"한"_s.repeated(MarkdownReader::maxCharacters - 1) + u"👍🏽!"_s);
        qsizetype kept = 0;
        for (const MarkdownBlock &block : cut.blocks)
            kept += block.html.size();
        QCOMPARE(kept, MarkdownReader::maxCharacters - 1);
        QCOMPARE(cut.droppedCharacters, 2);
    }

    void madeToBeSlow_data()
    {
        QTest::addColumn<QString>("text");
        const auto megabyte = [](const QString &unit) { return unit.repeated(1'000'000 / unit.size()); };
        for (const QString &unit :
             {u"x"_s,           u"한 "_s,     u"["_s,    u"]"_s,      u"*"_s,      u"*a_ "_s,
              u"[a](\n"_s,      u"[a]\r\n"_s, u"[`]`"_s, u"![[]()"_s, u"[a](<b"_s, u"`` ` "_s,
              u"<a x='"_s,      u"> "_s,      u"- "_s,   u"> a\n"_s,  u"|"_s,      u"www.a.b "_s,
              u"http://a.b("_s, u"a@b.c"_s,   u"a\n"_s,  u"&#x41;"_s, u"```\n"_s,  u"\\"_s})
            QTest::newRow(qPrintable(unit.simplified())) << megabyte(unit);
        QTest::newRow("nested brackets") << u"["_s.repeated(300'000) + u"]"_s.repeated(300'000);
        QTest::newRow("long reference")
            << u"[a]: "_s + u"x"_s.repeated(300'000) + u"\n\n"_s + u"[a]"_s.repeated(9'000);
        QTest::newRow("wide and tall table") << u"|a"_s.repeated(9'000) + u"\n"_s + u"|-"_s.repeated(9'000)
                + u"\n"_s + u"|\n"_s.repeated(200'000);
    }
    void madeToBeSlow()
    {
        QFETCH(const QString, text);
        const auto result = MarkdownReader::parse(text); // a quadratic road ends at the program's time limit
        qsizetype size = 0;
        for (const MarkdownBlock &block : result.blocks)
            size += block.html.size() + block.text.size();
        QVERIFY(size < 20'000'000);
    }

    void aLongParagraphComesInParts()
    {
        const QString words = u"낱말 word "_s.repeated(5000);
        for (const QString &begin :
             {u"- **"_s, u"> "_s, u"## "_s, u"[ "_s.repeated(20'000) + u"]("_s.repeated(20'000)}) {
            const auto blocks =
                blocksOf(begin + words.trimmed() + (begin.contains(u'*') ? u"**"_s : QString()));
            QVERIFY(blocks.size() > 5);
            QString all;
            for (const MarkdownBlock &block : blocks) {
                QVERIFY(block.html.size() < 3 * MarkdownReader::longParagraph);
                QCOMPARE(block.continues, &block != &blocks.first());
                QCOMPARE(block.quoteDepth, blocks.first().quoteDepth);
                QCOMPARE(block.html.startsWith(u"<b>"), begin.contains(u'*'));
                all += MarkdownLinks::plainText(block.html);
            }
            QVERIFY(all.endsWith(words.trimmed()));
        }
    }

    void codeHasColoursForWhatItHolds_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("tokens"); // k, s, n, c, +, - and the text
        const auto row = [](const char *language, const QString &code, const QString &tokens) {
            QTest::addRow("%s %s", language, qPrintable(code.left(20)))
                << QString::fromLatin1(language) << code << tokens;
        };
        row("cpp", u"if (a1 == 0x1F) return \"a\\\"b\"; // 끝"_s,
            u"k:if n:0x1F k:return s:\"a\\\"b\" c:// 끝"_s);
        row("cpp", u"/* 둘\n줄 */ int"_s, u"c:/* 둘\n줄 */ k:int"_s);
        row("CPP", u"/* 열린"_s, u"c:/* 열린"_s);
        row("python", u"x = \"\"\"여러\n줄\"\"\" # 말"_s, u"s:\"\"\"여러\n줄\"\"\" c:# 말"_s);
        row("sh", u"echo a#b $# 'x\nfi"_s, u"k:echo s:'x k:fi"_s);
        row("sql", u"SELECT 1 -- 하나"_s, u"k:SELECT n:1 c:-- 하나"_s);
        row("diff", u"@@ 1 @@\n-a\n+b\n c"_s, u"k:@@ 1 @@ -:-a +:+b"_s);
        row("mermaid", u"graph TD; if"_s, {});
        row("cpp", QString(CodeTokens::maxCharacters + 1, u'1'), {});
    }

    void codeHasColoursForWhatItHolds()
    {
        QFETCH(const QString, language);
        QFETCH(const QString, code);
        QFETCH(const QString, tokens);
        QStringList found;
        for (const CodeToken &token : CodeTokens::of(code, language))
            found << QString(u"ksnc+-"[int(token.kind)]) + u':' + code.mid(token.begin, token.size);
        QCOMPARE(found.join(u' '), tokens);
    }

    void tokensNeverOverlap()
    {
        QVERIFY(rc::check([](const std::string &code) {
            const QString text = QString::fromStdString(code);
            for (const QString &language :
                 {u"cpp"_s, u"py"_s, u"sh"_s, u"lua"_s, u"diff"_s, u"html"_s, u"js"_s}) {
                qsizetype end = 0;
                for (const CodeToken &token : CodeTokens::of(text, language)) {
                    RC_ASSERT(token.begin >= end);
                    RC_ASSERT(token.size > 0);
                    end = token.begin + token.size;
                }
                RC_ASSERT(end <= text.size());
            }
        }));
    }

    void plainReadingKeepsCode()
    {
        const QString costly = u"[a](\n"_s.repeated(40'000);
        const auto result = MarkdownReader::parse(costly + u"\n```json\n[1]\n```\n# <z>"_s);
        QVERIFY(result.asPlainText);
        const auto code = result.blocks.size() - 2;
        QCOMPARE(result.blocks[code].language, u"json"_s);
        QCOMPARE(result.blocks[code].text, u"[1]"_s);
        QVERIFY(!result.blocks[code].continues);
        QCOMPARE(result.blocks.last().html, u"# &lt;z&gt;"_s);
        QVERIFY(!MarkdownReader::parse(u"[a](b) "_s.repeated(1000)).asPlainText);
    }

    void onlyTagsOfTheWhiteList()
    {
        QVERIFY(rc::check("no text gives a tag of its own", [] {
            const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                "<", ">", "\"", "'", "&", "&lt;", "&#60;", "<script>", "[a](", ")", "![", "]", "[a]: ",
                "javascript:", "http://x.y", "<http://a>", "*", "**", "~~", "`", "```", "|", "|-|", "\n",
                "\n\n", "- ", "> ", "1. ", "    ", "\\", "한", "a", " ", "www.x.y", "\t", "#", "=", "[ ] "));
            std::string text;
            for (const std::string &part : parts)
                text += part;
            for (const MarkdownBlock &block : blocksOf(QString::fromStdString(text))) {
                RC_ASSERT(isSafe(block.html));
                const int columns = block.columnCount();
                const bool isWhole = columns > 0 ? block.cells.size() % columns == 0 : block.cells.isEmpty();
                RC_ASSERT(isWhole);
                RC_ASSERT((block.kind == Kind::Table) == (columns > 0));
                for (const QString &cell : block.cells)
                    RC_ASSERT(isSafe(cell));
            }
        }));
    }

    void tasksKnowTheirBoxes()
    {
        QVERIFY(rc::check("the box of a task stands where its block says", [] {
            const auto parts = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                "- [ ] a\n", "- [x] 같은 글\n", "  - [X] b\n", "* [ ]c\n", "1. [ ] d\n", "> - [x] e\n",
                "```\n", "\n", "    - [ ] f\n", "|-|-|\n", "| a | b |\n", "😀", "글\r\n", "[ ]", "~~~\n"));
            QString text;
            for (const auto &part : parts) {
                text += QString::fromStdString(part);
            }
            qsizetype last = -1;
            for (const auto &block : MarkdownReader::parse(text).blocks) {
                const bool task = block.marker == MarkdownBlock::Marker::TaskOpen
                    || block.marker == MarkdownBlock::Marker::TaskDone;
                RC_ASSERT(task == (block.taskAt >= 0));
                if (task) {
                    const auto box = QStringView(text).mid(block.taskAt - 1, 3);
                    RC_ASSERT(block.taskAt > last);
                    const bool open = block.marker == MarkdownBlock::Marker::TaskOpen;
                    RC_ASSERT(box.compare(open ? u"[ ]" : u"[x]", Qt::CaseInsensitive) == 0);
                    last = block.taskAt;
                }
            }
        }));
    }

    void growingTextKeepsItsFirstBlocks()
    {
        const auto before = blocksOf(u"# a\n\nb\n\nc"_s);
        const auto after = blocksOf(u"# a\n\nb\n\nc d\n\n- e"_s);
        QCOMPARE(firstDifference(before, after), 2);
        QCOMPARE(firstDifference(before, before), 3);
        QCOMPARE(firstDifference(before, before.first(1)), 1);
    }

    void styleComesLast()
    {
        const MarkdownStyle style {.linkColor = u"#93A8FF"_s,
                                   .codeBackground = u"#2A303A"_s,
                                   .codeFontFamilies = {u"JetBrains Mono"_s, u"A\"<B"_s},
                                   .codePixelSize = 12};
        QCOMPARE(
            style.apply(u"<a href=\"x\">y</a> &lt;code&gt; <code>z</code>"_s),
            u"<a style=\"text-decoration:none;color:#93A8FF;\" href=\"x\">y</a> &lt;code&gt; "
            "<span style=\"white-space:pre-wrap;font-family:'JetBrains Mono','A&quot;&lt;B';font-size:12px;"
            "background-color:#2A303A;\">z</span>"_s);
    }
};

VESK_TEST(MarkdownReaderTest)
#include "MarkdownReaderTest.moc"
