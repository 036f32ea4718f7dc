#include "issues/IssueStatus.h"

#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class IssueStatusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("written");
        QTest::addColumn<bool>("terminal");
        QTest::newRow("its own word") << u"doing"_s << u"doing"_s << false;
        QTest::newRow("any case, blanks around") << u" \tIn Progress\n"_s << u"doing"_s << false;
        QTest::newRow("two Korean words") << u"진행 중"_s << u"doing"_s << false;
        QTest::newRow("waiting is blocked") << u"대기중"_s << u"blocked"_s << false;
        QTest::newRow("to wait is to do") << u"대기"_s << u"todo"_s << false;
        QTest::newRow("another spelling") << u"Canceled"_s << u"cancelled"_s << true;
        QTest::newRow("closed") << u"closed"_s << u"done"_s << true;
        QTest::newRow("a project's own word") << u" 설계 "_s << u"설계"_s << false;
        QTest::newRow("nothing") << u" "_s << QString() << false;
    }

    void readsWords()
    {
        QFETCH(QString, text);
        const IssueStatus status = IssueStatus::parse(text);
        QTEST(status.written(), "written");
        QTEST(status.isTerminal(), "terminal");
        QCOMPARE(IssueStatus::parse(status.written()), status);
    }

    void offersOwnWordsOnce()
    {
        const IssueStatus own = IssueStatus::parse(u"설계"_s);
        const auto offered = IssueStatus::vocabulary({own, IssueStatus::parse(u"done"_s), {}, own});
        QCOMPARE(offered.size(), 7);
        QCOMPARE(offered.last(), own);
        QCOMPARE(offered.first().written(), u"todo"_s);
    }
};

VESK_TEST(IssueStatusTest)
#include "IssueStatusTest.moc"
