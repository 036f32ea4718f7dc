// Transcripts: what was said on a line, what the conversation is called, and in which folder it lies.
#include "claude/TranscriptFolders.h"
#include "claude/TranscriptLine.h"
#include "claude/TranscriptTitle.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <rapidcheck.h>

#include <cstring>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

QByteArray userLine(const QByteArray &content)
{
    return R"({"type":"user","message":{"content":)" + content + "}}";
}

QByteArray titleLine(const QByteArray &title)
{
    return "{\"type\":\"ai-title\",\"aiTitle\":\"" + title + "\"}";
}

QString written(const QTemporaryDir &folder, const QByteArray &bytes)
{
    QFile file(folder.filePath(u"t.jsonl"_s));
    [[maybe_unused]] const bool open = file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return file.fileName();
}

/** The title by the rule alone: every line parsed, no shortcut. */
std::optional<QString> plainTitle(const QByteArray &bytes)
{
    TranscriptDecoder decoder;
    std::optional<QString> candidate;
    for (const QByteArray &text : bytes.split('\n')) {
        const auto line = decoder.decode(std::string_view(text.constData(), std::size_t(text.size())));
        if (!line)
            continue;
        if (line->aiTitle && !line->aiTitle->trimmed().isEmpty())
            return line->aiTitle->left(maxTitleCharacters);
        if (!candidate && line->type == u"user" && line->text && !line->text->trimmed().isEmpty())
            candidate = line->text->trimmed().replace(u'\n', u' ').left(maxTitleCharacters);
    }
    return candidate;
}

// Outside the class: moc does not take raw strings like these.
const std::vector<std::string> scanPieces {
    R"({"type":"user","message":{"content":"hi there"}})",
    R"({"type":"user","message":{"content":" "}})",
    R"({"type":"x","aiTitle":"t1"})",
    R"({ "aiTitle" : "t2" })",
    R"({"aiTitle":7})",
    R"({"type":"assistant","a":"aiTitle iTi"})",
    "\"aiTitle\"",
    "{",
    "\n",
    "\n",
    "\n",
    "\r\n",
    "iTitleaiTitle",
};
constexpr std::string_view brokenLine = R"({"type":"user)";
const QByteArray brokenTitle = R"({"aiTitle":"half)";

QByteArray answerLine(const QByteArray &content)
{
    return R"({"type":"assistant","message":{"content":)" + content + "}}";
}

QByteArray fillerLine()
{
    return "{\"type\":\"assistant\",\"message\":{\"content\":[]},\"x\":\"" + QByteArray(100000, 'i')
        + "\"}\n";
}

} // namespace

class TranscriptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineTexts_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("text"); // "-" for absent
        QTest::newRow("string") << userLine("\"안녕\"") << u"안녕"_s;
        QTest::newRow("blocks") << userLine(
            R"([{"type":"text","text":"a"},{"type":"image"},{"type":"text","text":"b"}])")
                                << u"a\nb"_s;
        QTest::newRow("tool result alone")
            << userLine(R"([{"type":"tool_result","tool_use_id":"t","content":"out"}])") << u"-"_s;
        QTest::newRow("a string is no answer") << answerLine("\"x\"") << u"-"_s;
        QTest::newRow("answer") << answerLine(R"([{"type":"text","text":"x"}])") << u"x"_s;
        QTest::newRow("wrong types") << QByteArray(R"({"type":"user","message":[1],"timestamp":3})")
                                     << u"-"_s;
    }
    void lineTexts()
    {
        QFETCH(QByteArray, line);
        TranscriptDecoder decoder;
        const auto decoded = decoder.decode({line.constData(), std::size_t(line.size())});
        QVERIFY(decoded);
        QTEST(decoded->text.value_or(u"-"_s), "text");
        QVERIFY(!decoder.decode("[1]"));
        QVERIFY(!decoder.decode(brokenLine));
    }

    void timestampsWithAndWithoutFractions()
    {
        TranscriptDecoder decoder;
        const auto whole = decoder.decode(R"({"type":"user","timestamp":"2026-11-20T09:00:01Z"})");
        const auto fraction = decoder.decode(R"({"type":"user","timestamp":"2026-11-20T09:00:01.250Z"})");
        QVERIFY(whole && fraction);
        QCOMPARE(whole->timestamp.msecsTo(fraction->timestamp), 250);
    }

    void titles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title"); // "-" for absent
        const QByteArray filler = fillerLine();
        QTest::newRow("empty") << QByteArray() << u"-"_s;
        QTest::newRow("first message")
            << userLine("\"  첫\\n줄 \"") + '\n' + userLine("\"둘째\"") << u"첫 줄"_s;
        QTest::newRow("results before the first message")
            << userLine(R"([{"type":"tool_result","content":"x"}])") + '\n' + userLine("\" \"") + '\n'
                + userLine("\"여기\"") + '\n'
            << u"여기"_s;
        QTest::newRow("written title wins on the last line, without its end")
            << userLine("\"말\"") + '\n' + filler + filler + titleLine("제목") << u"제목"_s;
        QTest::newRow("written title behind a bad line") << brokenTitle + '\n' + titleLine("온전") + '\n'
                                                         << u"온전"_s;
        QTest::newRow("a blank title is none") << titleLine("  ") + '\n' + userLine("\"말\"") << u"말"_s;
        QTest::newRow("a title that is only talked about")
            << userLine("\"the \\\"aiTitle\\\" key\"") + '\n' + filler << u"the \"aiTitle\" key"_s;
        QTest::newRow("a line beyond the cap is passed over")
            << userLine('"' + QByteArray(maxTranscriptBytes + 100000, 'x') + '"') + '\n' + userLine("\"뒤\"")
            << u"뒤"_s;
        QTest::newRow("60 characters") << titleLine(QByteArray("가").repeated(61)) << QString(60, u'가');
        QTest::newRow("no text at all in 9 MB") << filler.repeated(90) << u"-"_s;
    }
    void titles()
    {
        QFETCH(QByteArray, bytes);
        const QTemporaryDir folder;
        QTEST(quickTitle(written(folder, bytes)).value_or(u"-"_s), "title");
    }

    void theTitleIsTheSameHoweverItArrives()
    {
        const bool held = rc::check("cutting a transcript anywhere gives the same title", [] {
            const auto pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(scanPieces));
            QByteArray bytes;
            for (const std::string &piece : pieces)
                bytes += QByteArray::fromStdString(piece);
            TitleScan scan;
            for (qsizetype at = 0, size = 0; at < bytes.size(); at += size) {
                size = std::min<qsizetype>(*rc::gen::inRange(1, 80), bytes.size() - at);
                std::memcpy(scan.room(), bytes.constData() + at, std::size_t(size));
                if (scan.take(size))
                    break;
            }
            RC_ASSERT(scan.finish() == plainTitle(bytes));
        });
        QVERIFY(held);
    }

    void firstMessageOfALargeFileIsNotSought()
    {
        const QTemporaryDir folder;
        const QString path = written(folder, userLine("\"말\"") + '\n');
        QCOMPARE(firstUserMessage(path), u"말"_s);
        QFile file(path);
        QVERIFY(file.resize(maxTranscriptBytes + 1));
        QVERIFY(!firstUserMessage(path));
        QCOMPARE(quickTitle(path), u"말"_s);
        QVERIFY(!quickTitle(folder.path()));
        QVERIFY(!quickTitle(folder.filePath(u"none"_s)));
    }

    void folderNames()
    {
        QCOMPARE(TranscriptFolders::encodedName(u"/home/me/my.project"_s), u"-home-me-my-project"_s);
        QCOMPARE(TranscriptFolders::encodedName(u"/a/b_c d"_s), u"-a-b_c d"_s);
        QCOMPARE(TranscriptFolders::currentName(u"/a/b_c d.한😀"_s), u"-a-b-c-d----"_s);
        QCOMPARE(TranscriptFolders::currentName(QString(300, u'x')).size(), 200);
    }

    void everyFolderOfAProjectIsFoundOnce()
    {
        const QTemporaryDir base;
        const QString root = base.filePath(u"projects"_s);
        const QString real = QFileInfo(base.path()).canonicalFilePath() + u"/my_app.x"_s;
        const QString link = base.filePath(u"link"_s);
        QVERIFY(QDir().mkpath(real) && QFile::link(real, link));
        const QStringList names {TranscriptFolders::encodedName(real), TranscriptFolders::currentName(real),
                                 TranscriptFolders::encodedName(link)};
        for (const QString &name : names)
            QVERIFY(QDir().mkpath(root + u'/' + name));
        const auto found = [&](const QString &project) {
            QStringList folders = TranscriptFolders::existing(root, project);
            for (QString &folder : folders)
                folder = QFileInfo(folder).fileName();
            return folders;
        };
        QCOMPARE(found(link).size(), 3);
        QCOMPARE(found(real).size(), 2);
        const QString deep = u"/"_s + QString(250, u'd');
        QVERIFY(QDir().mkpath(root + u'/' + TranscriptFolders::currentName(deep) + u"-a1b2c3"_s));
        QCOMPARE(found(deep).size(), 1);
        QVERIFY(found(u"/nowhere"_s).isEmpty());
    }
};

VESK_TEST(TranscriptTest)

#include "TranscriptTest.moc"
