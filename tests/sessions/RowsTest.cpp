// The one-line texts of tool calls, what is kept of their output, and the announcements of the row list.
#include "sessions/MessageText.h"
#include "sessions/Transcript.h"
#include "support/TestRegistry.h"

#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;

namespace
{

/** A list that follows a transcript by its announcements alone. */
struct Follower {
    explicit Follower(const Transcript &transcript)
    {
        QObject::connect(&transcript, &Transcript::inserted, &context,
                         [&](qsizetype at) { rows.insert(at, transcript.rows().at(at).text); });
        QObject::connect(&transcript, &Transcript::removed, &context,
                         [&](qsizetype at) { rows.removeAt(at); });
        const auto refresh = [&](qsizetype at) { rows[at] = transcript.rows().at(at).text; };
        QObject::connect(&transcript, &Transcript::changed, &context, refresh);
        QObject::connect(&transcript, &Transcript::textGrew, &context, refresh);
        QObject::connect(&transcript, &Transcript::wasReset, &context, [&] {
            rows.clear();
            for (const ChatMessage &row : transcript.rows())
                rows << row.text;
        });
    }

    QObject context;
    QStringList rows;
};

} // namespace

class RowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void summaryLine_data()
    {
        QTest::addColumn<QJsonObject>("input");
        QTest::addColumn<QString>("line");
        using O = QJsonObject;
        const QString eighty(80, u'x');
        QTest::newRow("nothing to tell") << O {{u"limit"_qs, 3}} << u"T"_qs;
        QTest::newRow("a number is no text")
            << O {{u"command"_qs, 3}, {u"pattern"_qs, u"*.c"_qs}} << u"T · *.c"_qs;
        QTest::newRow("description before command")
            << O {{u"command"_qs, u"ls"_qs}, {u"description"_qs, u"List"_qs}} << u"T · List"_qs;
        QTest::newRow("first line") << O {{u"command"_qs, u"a\r\nb"_qs}} << u"T · a"_qs;
        QTest::newRow("80") << O {{u"query"_qs, eighty}} << u"T · "_qs + eighty;
        QTest::newRow("81") << O {{u"query"_qs, eighty + u'x'}} << u"T · "_qs + eighty + u'…';
        const QString families = QString(u"👨‍👩‍👧"_qs).repeated(80);
        QTest::newRow("80 user-perceived") << O {{u"query"_qs, families}} << u"T · "_qs + families;
        QTest::newRow("path of three") << O {{u"file_path"_qs, u"/a/b/c.txt"_qs}} << u"T · …/b/c.txt"_qs;
        QTest::newRow("path of two") << O {{u"file_path"_qs, u"/a/b.txt"_qs}} << u"T · /a/b.txt"_qs;
        QTest::newRow("path of one") << O {{u"path"_qs, u"/a.txt"_qs}} << u"T · /a.txt"_qs;
        QTest::newRow("long path keeps its end")
            << O {{u"path"_qs, u'/' + eighty + u"/d/e"_qs}} << u"T · …/d/e"_qs;
    }

    void summaryLine()
    {
        QFETCH(QJsonObject, input);
        QTEST(ToolActivity::summaryLine(u"T"_qs, input), "line");
    }

    void outputIsClippedByBytes_data()
    {
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("kept");
        const QString full(4000, u'x');
        QTest::newRow("blank") << u" \n\t"_qs << QString();
        QTest::newRow("trimmed") << u"\n ok \n"_qs << u"ok"_qs;
        QTest::newRow("4000") << full << full;
        QTest::newRow("4001") << full + u'x' << full + u"\n… (이후 1바이트 생략)"_qs;
        QTest::newRow("not inside a character")
            << QString(3999, u'x') + u"한글"_qs << QString(3999, u'x') + u"\n… (이후 6바이트 생략)"_qs;
    }

    void outputIsClippedByBytes()
    {
        QFETCH(QString, raw);
        QFETCH(QString, kept);
        ToolActivity activity;
        const QDateTime at = QDateTime::fromSecsSinceEpoch(5);
        activity.finish(raw, true, at);
        QCOMPARE(activity.output.value_or(QString()), kept);
        QCOMPARE(activity.output.has_value(), !kept.isEmpty());
        QCOMPARE(activity.outcome, ToolActivity::Outcome::Failed);
        QCOMPARE(activity.finishedAt, at);
    }

    void titleOfASession_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("title");
        QTest::newRow("first line") << u"\n\n  하나 \n둘"_qs << u"하나"_qs;
        QTest::newRow("blank") << u"  "_qs << u"새 세션"_qs;
        QTest::newRow("40") << QString(40, u'가') << QString(40, u'가');
        QTest::newRow("cut after a blank") << QString(39, u'a') + u" bc"_qs << QString(39, u'a') + u'…';
    }

    void titleOfASession()
    {
        QFETCH(QString, text);
        QTEST(titleFrom(text), "title");
    }

    void promptWithAttachments()
    {
        QCOMPARE(composePrompt(u"b"_qs, {}), u"b"_qs);
        QCOMPARE(composePrompt(u"b"_qs, {u"/x"_qs, u"/y"_qs}), u"b\n\n첨부 파일:\n- /x\n- /y"_qs);
        QCOMPARE(composePrompt({}, {u"/x"_qs}), u"첨부 파일:\n- /x"_qs);
    }

    void announcementsTellEveryChange()
    {
        QVERIFY(rc::check([] {
            Transcript transcript;
            Follower follower(transcript);
            const auto steps = *rc::gen::container<std::vector<std::pair<int, int>>>(
                rc::gen::pair(rc::gen::inRange(0, 8), rc::gen::inRange(0, 1000)));
            for (const auto &[what, seed] : steps) {
                const qsizetype count = transcript.rows().size();
                const QUuid id = count > 0 ? transcript.rows().at(seed % count).id : QUuid();
                ChatMessage row;
                row.text = QString::number(seed);
                row.streaming = true;
                switch (what) {
                case 0:
                    transcript.append(row);
                    break;
                case 1:
                    transcript.insert(seed % (count + 1), row);
                    break;
                case 2:
                    transcript.remove(id);
                    break;
                case 3:
                    transcript.appendText(id, row.text);
                    break;
                case 4:
                    transcript.setText(id, row.text);
                    break;
                case 5:
                    transcript.setError(id, seed % 2 == 0);
                    break;
                case 6:
                    transcript.finishStreaming();
                    break;
                default:
                    transcript.reset({row});
                    break;
                }
            }
            QStringList texts;
            for (const ChatMessage &row : transcript.rows())
                texts << row.text;
            RC_ASSERT(follower.rows == texts);
        }));
    }
};

VESK_TEST(RowsTest)

#include "RowsTest.moc"
