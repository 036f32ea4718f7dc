#include "markdown/MarkdownCheckbox.h"

#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;

class MarkdownCheckboxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsBoxes()
    {
        constexpr QStringView text =
            u"- [ ]\n \t* [x] a\r\n- [X]b\n-[ ]\n-  [ ] two blanks\n1. [ ] x\n+ [ ] x\n- [y] x\n"
            "```\n- [ ] in a fence\n```\n- [ ] c\n  ```sh\n- [x] never closed";
        QCOMPARE(MarkdownCheckbox::progress(text), (MarkdownCheckbox::Progress {.done = 2, .total = 4}));
        QCOMPARE(MarkdownCheckbox::progress({}), MarkdownCheckbox::Progress {});
    }

    void readsAnItem()
    {
        QCOMPARE(MarkdownCheckbox::parse(u"* [X]  끝 "), (MarkdownCheckbox::Item {true, u"끝"}));
        QCOMPARE(MarkdownCheckbox::parse(u"- [ ]"), (MarkdownCheckbox::Item {false, u""}));
        QVERIFY(!MarkdownCheckbox::parse(u" - [ ] x"));
    }
};

VESK_TEST(MarkdownCheckboxTest)
#include "MarkdownCheckboxTest.moc"
