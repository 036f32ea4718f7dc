#include "sessions/StreamObservation.h"

#include "support/TestRegistry.h"

#include <QtTest>

using namespace Vesk;

class StreamObservationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesKeepOnlyPlainWords_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("subtype");
        QTest::addColumn<QString>("name");
        const QString longest(32, u'a');
        QTest::newRow("plain") << u"system"_qs << u"new_thing-1.0"_qs << u"system/new_thing-1.0"_qs;
        QTest::newRow("no subtype") << u"odd"_qs << QString() << u"odd"_qs;
        QTest::newRow("32") << longest << longest << longest + u'/' + longest;
        QTest::newRow("33") << longest + u'a' << u"x"_qs << u"?/x"_qs;
        QTest::newRow("blank inside") << u"a b"_qs << u"비밀"_qs << u"?/?"_qs;
        QTest::newRow("empty type") << QString() << QString() << u"?"_qs;
    }

    void namesKeepOnlyPlainWords()
    {
        QFETCH(QString, type);
        QFETCH(QString, subtype);
        QTEST(StreamObservation::name(type, subtype), "name");
    }

    void preview_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("preview");
        QTest::newRow("line ends") << u" a\tb\vc\u0085d\u2028e\r\nf "_qs << u"a b c d e f"_qs;
        QTest::newRow("controls") << u"a\u0001\u001b[31m\u007fb"_qs << u"a[31mb"_qs;
        QTest::newRow("200 bytes") << QString(200, u'x') << QString(200, u'x');
        QTest::newRow("201 bytes") << QString(201, u'x') << QString(200, u'x') + u'…';
        QTest::newRow("never inside a character")
            << QString(199, u'x') + u"한"_qs << QString(199, u'x') + u'…';
        QTest::newRow("long") << QString(50000, u'한') << QString(66, u'한') + u'…';
    }

    void preview()
    {
        QFETCH(QString, text);
        QFETCH(QString, preview);
        QCOMPARE(StreamObservation::rawPreview(text), preview);
        const QByteArray utf8 = text.toUtf8();
        QCOMPARE(StreamObservation::rawPreview(std::string_view(utf8.constData(), size_t(utf8.size()))),
                 preview);
    }

    void warnsFromAQuarterOfTwentyLines_data()
    {
        QTest::addColumn<int>("total");
        QTest::addColumn<int>("dropped");
        QTest::addColumn<QString>("percent");
        QTest::newRow("19 of 19") << 19 << 19 << QString();
        QTest::newRow("4 of 20") << 20 << 4 << QString();
        QTest::newRow("5 of 20") << 20 << 5 << u"25%"_qs;
        QTest::newRow("rounded") << 21 << 6 << u"29%"_qs;
    }

    void warnsFromAQuarterOfTwentyLines()
    {
        QFETCH(int, total);
        QFETCH(int, dropped);
        QFETCH(QString, percent);
        StreamObservation observation;
        observation.totalLines = total;
        observation.decodeFailures = dropped;
        QCOMPARE(observation.warningLine().has_value(), !percent.isEmpty());
        if (!percent.isEmpty())
            QCOMPARE(
                *observation.warningLine(),
                u"ℹ️ 이 세션 스트림의 "_qs + percent
                    + u"를 Vesk가 못 읽고 버렸습니다 — Claude CLI가 바뀌었을 수 있습니다(자세한 내용은 감사 로그)."_qs);
    }

    void namesBeyondTheCapAreCountedWithoutTheirName()
    {
        StreamObservation observation;
        for (int i = 0; i < 32; ++i)
            QVERIFY(observation.noteUnknown(u"n%1"_qs.arg(i)));
        QVERIFY(!observation.noteUnknown(u"n3"_qs));
        QVERIFY(!observation.noteUnknown(u"beyond"_qs));
        observation.totalLines = 40;
        QCOMPARE(observation.unknownOverflow, 1);
        QCOMPARE(observation.droppedLines(), 34);
        QVERIFY(observation.detailText().startsWith(u" n3 2줄\n n0 1줄\n"_qs));
        QVERIFY(observation.detailText().endsWith(u"\n이름을 못 담은 줄 1 (종류 상한 32)"_qs));
    }

    void summary()
    {
        StreamObservation observation;
        observation.totalLines = 7;
        QVERIFY(!observation.summaryLine());
        QVERIFY(observation.detailText().isEmpty());
        observation.stderrLines = 2;
        QCOMPARE(*observation.summaryLine(), u"stderr 2줄"_qs);
        observation.decodeFailures = 1;
        QCOMPARE(*observation.summaryLine(), u"못 읽은 줄 1/7 (14%) · stderr 2줄"_qs);
        QCOMPARE(observation.detailText(), u"디코드 실패 1줄\nCLI stderr 2줄 — 내용은 감사 로그에"_qs);
    }
};

VESK_TEST(StreamObservationTest)

#include "StreamObservationTest.moc"
