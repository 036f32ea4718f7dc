#include "issues/IssueNumbering.h"

#include "issues/FileNameSlug.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

class IssueNumberingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsIds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("prefix"); // empty: no id
        QTest::addColumn<qint64>("number");
        QTest::addColumn<int>("width");
        QTest::newRow("an id") << u"FE-12"_s << u"FE"_s << qint64(12) << 2;
        QTest::newRow("more behind it") << u"FE-012-login"_s << u"FE"_s << qint64(12) << 3;
        QTest::newRow("Korean prefix") << u"이슈-7"_s << u"이슈"_s << qint64(7) << 1;
        QTest::newRow("a letter among digits") << u"2x-7"_s << u"2x"_s << qint64(7) << 1;
        QTest::newRow("no dash") << u"FE12"_s << QString() << qint64(0) << 0;
        QTest::newRow("no letter") << u"2024-12"_s << QString() << qint64(0) << 0;
        QTest::newRow("nothing before the dash") << u"-12"_s << QString() << qint64(0) << 0;
        QTest::newRow("two dashes") << u"FE--12"_s << QString() << qint64(0) << 0;
        QTest::newRow("number in the third place") << u"FE-BUG-12"_s << QString() << qint64(0) << 0;
        QTest::newRow("too large") << u"FE-99999999999999999999"_s << QString() << qint64(0) << 0;
        QTest::newRow("other digits") << u"FE-١٢"_s << QString() << qint64(0) << 0;
    }
    void readsIds()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, text);
        const auto token = IssueNumbering::parse(text);
        QCOMPARE(token.has_value(), !prefix.isEmpty());
        if (token) {
            QCOMPARE(token->prefix, prefix);
            QTEST(token->number, "number");
            QTEST(token->width, "width");
        }
    }

    void findsMentionsOutsideOfFences()
    {
        const auto tokens = IssueNumbering::idTokens(
            u"(A-1), `A-2`·A-3.\n  ```sh\nA-4\n ```\n[x](A-5-x.md) 2024-01 A-6\r\n```\nA-7"_s);
        QStringList found;
        for (const auto &token : tokens) {
            found.append(IssueNumbering::format(token.prefix, token.number, token.width));
        }
        QCOMPARE(found, (QStringList {u"A-1"_s, u"A-2"_s, u"A-3"_s, u"A-5"_s, u"A-6"_s}));
    }

    void infersPrefixAndNumber_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("board");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("next"); // as it is written
        QTest::newRow("an empty folder") << QStringList() << QStringList() << QStringList() << u"001"_s;
        QTest::newRow("the most common prefix and width")
            << QStringList {u"A-1"_s, u"B-0010"_s, u"B-0002"_s, u"B-3"_s} << QStringList() << QStringList()
            << u"B-0011"_s;
        QTest::newRow("the first of equals")
            << QStringList {u"A-1"_s, u"B-002"_s} << QStringList() << QStringList() << u"A-2"_s;
        QTest::newRow("cases are counted apart, their numbers together")
            << QStringList {u"fe-09"_s, u"FE-01"_s, u"FE-02"_s} << QStringList() << QStringList()
            << u"FE-10"_s;
        QTest::newRow("the board goes further")
            << QStringList {u"A-01"_s} << QStringList {u"A-0007"_s, u"B-9"_s} << QStringList() << u"A-08"_s;
        QTest::newRow("the board alone")
            << QStringList {u"notes"_s} << QStringList {u"A-0007"_s} << QStringList() << u"A-0008"_s;
        QTest::newRow("a mention moves nothing")
            << QStringList {u"A-1"_s} << QStringList() << QStringList {u"A-50"_s} << u"A-2"_s;
        QTest::newRow("mentions give a prefix, and the usual width")
            << QStringList() << QStringList() << QStringList {u"see A-50"_s} << u"A-001"_s;
        QTest::newRow("the last number there is") << QStringList {u"A-9223372036854775807"_s} << QStringList()
                                                  << QStringList() << u"A-9223372036854775807"_s;
    }
    void infersPrefixAndNumber()
    {
        QFETCH(QStringList, files);
        QFETCH(QStringList, board);
        QFETCH(QStringList, texts);
        const auto survey = IssueNumbering::survey(files, board, texts);
        QTEST(IssueNumbering::format(survey.prefix, survey.next, survey.digits), "next");
    }

    void tellsUsedFromMentioned()
    {
        const auto survey = IssueNumbering::survey({u"A-3"_s}, {u"a-5"_s}, {u"A-5, A-9 and B-20"_s});
        QVERIFY(!survey.isAvailable(3));
        QVERIFY(!survey.isAvailable(5));
        QVERIFY(!survey.isAvailable(0));
        QVERIFY(survey.isAvailable(9));
        QVERIFY(survey.isMentionedOnly(9));
        QVERIFY(!survey.isMentionedOnly(5));
        QVERIFY(!survey.isMentionedOnly(20));
        QCOMPARE(survey.maxSource(), (IssueNumbering::MaxSource {IssueNumbering::Source::References, 9}));
        QCOMPARE(IssueNumbering::survey({u"A-5"_s}, {u"A-5"_s}, {}).maxSource()->source,
                 IssueNumbering::Source::Files);
        QVERIFY(!IssueNumbering::survey({}, {}, {}).maxSource());
    }

    void proposesAFreeNumberThatReadsBack()
    {
        rc::check([] {
            QStringList ids;
            for (const auto number : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 2000))) {
                ids.append(IssueNumbering::format(*rc::gen::element(u"A"_s, u"a"_s, u"B"_s), number,
                                                  *rc::gen::inRange(0, 5)));
            }
            const qsizetype half = ids.size() / 2;
            const auto survey = IssueNumbering::survey(ids.first(half), ids.sliced(half), {});
            RC_ASSERT(survey.isAvailable(survey.next));
            const QString prefix = survey.prefix.isEmpty() ? u"A"_s : survey.prefix;
            const QString proposed = IssueNumbering::format(prefix, survey.next, survey.digits);
            const auto token = IssueNumbering::parse(proposed + u"-slug"_s);
            RC_ASSERT(token && token->prefix == prefix && token->number == survey.next);
            const auto after = IssueNumbering::survey({proposed}, ids, {});
            RC_ASSERT(after.prefix == prefix && after.next == survey.next + 1);
        });
    }

    void makesSlugs_data()
    {
        QTest::addColumn<QString>("slug");
        QTest::newRow(" Login: the 2nd form\n") << u"Login-the-2nd-form"_s;
        QTest::newRow("한글 제목 (초안)") << u"한글-제목-초안"_s;
        QTest::newRow("../../etc/passwd") << u"etcpasswd"_s;
        QTest::newRow("a\tb/c\\d\"e") << u"abcde"_s;
        QTest::newRow("Cafe\u0301") << u"Café"_s;
        QTest::newRow("🚀") << QString();
        QTest::newRow("  ") << QString();
    }
    void makesSlugs() { QTEST(FileNameSlug::slug(QString::fromUtf8(QTest::currentDataTag())), "slug"); }
};

VESK_TEST(IssueNumberingTest)
#include "IssueNumberingTest.moc"
