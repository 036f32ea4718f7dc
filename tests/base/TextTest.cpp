#include "base/Text.h"

#include "base/Utf8Clip.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

#include <string>

using namespace Vesk;
using namespace Qt::StringLiterals;

class TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsWhatAReaderSees_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("count");
        QTest::newRow("empty") << u""_s << qsizetype(0);
        QTest::newRow("latin") << u"abc"_s << qsizetype(3);
        QTest::newRow("hangul") << u"한글 글자"_s << qsizetype(5);
        QTest::newRow("jamo") << u"\u1112\u1161\u11AB\u1100\u1173\u11AF"_s << qsizetype(2);
        QTest::newRow("syllable and jamo") << u"하\u11AB글"_s << qsizetype(2);
        QTest::newRow("combining mark") << u"e\u0301x"_s << qsizetype(2);
        QTest::newRow("family") << u"👨‍👩‍👧‍👦!"_s << qsizetype(2);
        QTest::newRow("skin tone") << u"👍🏽👍"_s << qsizetype(2);
        QTest::newRow("flags") << u"🇰🇷🇺🇸🇯🇵"_s << qsizetype(3);
        QTest::newRow("crlf is one") << u"a\r\nb\n\r"_s << qsizetype(5);
        QTest::newRow("lone surrogates") << QString(2, QChar(0xD800)) << qsizetype(2);
    }
    void countsWhatAReaderSees()
    {
        QFETCH(const QString, text);
        QFETCH(const qsizetype, count);
        QCOMPARE(Text::characterCount(text), count);
        QCOMPARE(Text::firstCharacters(text, count), text);
        QCOMPARE(Text::clipped(text, count), text);
        if (count > 0) {
            QCOMPARE(Text::characterCount(Text::firstCharacters(text, count - 1)), count - 1);
            QVERIFY(Text::clipped(text, count - 1).endsWith(u'…'));
        }
    }

    void clipsBetweenCharacters()
    {
        QCOMPARE(Text::clipped(u"가나다"_s, 2), u"가나…"_s);
        QCOMPARE(Text::clipped(u"👨‍👩‍👧‍👦👍🏽x"_s, 2, u""_s),
                 u"👨‍👩‍👧‍👦👍🏽"_s);
        QCOMPARE(Text::firstCharacters(u"abc"_s, 0), u""_s);
        QCOMPARE(Text::firstCharacters(u"abc"_s, -1), u""_s);
    }

    void prefixesAddUp()
    {
        QVERIFY(rc::check("cutting at n and counting the rest gives the whole", [] {
            const auto units = *rc::gen::container<std::u16string>(rc::gen::elementOf(std::u16string(
                u"ab \r\n한글\u1112\u1161\u11AB\u0301\u200D\uFE0F\xD83D\xDC69\xD83C\xDDF0\u3042\u0E33")));
            const auto text = QString::fromStdU16String(units);
            const qsizetype count = Text::characterCount(text);
            const auto n = *rc::gen::inRange<qsizetype>(0, count + 2);
            const QString head = Text::firstCharacters(text, n);
            RC_ASSERT(text.startsWith(head));
            RC_ASSERT(Text::characterCount(head) + Text::characterCount(text.mid(head.size())) == count);
        }));
    }

    void looksOnlyAsFarAsAsked()
    {
        for (const QString &unit : {u"a"_s, u"한"_s, u"🇰🇷"_s, u"e\u0301"_s}) {
            const QString huge = unit.repeated(8'000'000);
            qsizetype sum = 0;
            for (int i = 0; i < 1000; ++i)
                sum += Text::clipped(huge, 80, u""_s).size();
            QCOMPARE(sum, 1000 * 80 * unit.size());
        }
    }

    void firstLineEndsAtAnyLineEnd()
    {
        for (const char16_t end : {u'\n', u'\r', u'\v', u'\f', u'\u0085', u'\u2028', u'\u2029'})
            QCOMPARE(Text::firstLine(u"가"_s + QChar(end) + u"나"_s), u"가"_s);
        QCOMPARE(Text::firstLine(u"whole"_s), u"whole"_s);
        QCOMPARE(Text::firstLine(u"\nx"_s), u""_s);
    }

    void trims()
    {
        QCOMPARE(Text::trimBlanks(u"\t \n a b\n \t"_s), u"\n a b\n"_s);
        QCOMPARE(Text::trimBlanks(u" \t "_s), u""_s);
        QCOMPARE(Text::trimWhitespace(u"\u00A0\u3000\r\n a \u2028\t"_s), u"a"_s);
    }

    void comparesNamesInAnyLocale()
    {
        QVERIFY(Text::compareNames(u"A-9"_s, u"A-10"_s) < 0);
        QVERIFY(Text::compareNames(u"나 2"_s, u"가 10"_s) > 0);
        QCOMPARE(Text::compareNames(u"A-9"_s, u"A-9"_s), 0);
    }

    void clipsUtf8_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qsizetype>("most");
        QTest::addColumn<QString>("kept");
        QTest::addColumn<qsizetype>("dropped");
        QTest::newRow("exact") << u"가나"_s << qsizetype(6) << u"가나"_s << qsizetype(0);
        QTest::newRow("inside three") << u"가나"_s << qsizetype(5) << u"가"_s << qsizetype(3);
        QTest::newRow("inside four") << u"a😀b"_s << qsizetype(4) << u"a"_s << qsizetype(5);
        QTest::newRow("nothing fits later") << u"éa"_s << qsizetype(1) << u""_s << qsizetype(3);
        QTest::newRow("none") << u"abc"_s << qsizetype(0) << u""_s << qsizetype(3);
        QTest::newRow("empty") << u""_s << qsizetype(0) << u""_s << qsizetype(0);
    }
    void clipsUtf8()
    {
        QFETCH(const QString, text);
        QFETCH(const qsizetype, most);
        const UTF8Clip clip = UTF8Clip::prefix(text, most);
        QTEST(clip.text, "kept");
        QTEST(clip.droppedBytes, "dropped");
    }
};

VESK_TEST(TextTest)
#include "TextTest.moc"
