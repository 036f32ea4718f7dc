// An editor that is killed leaves a whole text behind, and every text that it knew to be saved.
#include "base/Files.h"
#include "markdown/MarkdownDocumentModel.h"
#include "markdown/typist/TypedText.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <unistd.h>

#include <array>

using namespace Vesk;
using namespace Qt::StringLiterals;

class KilledWhileTypingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeTextsOnly_data()
    {
        QTest::addColumn<bool>("linked");
        QTest::addColumn<int>("rounds");
        QTest::newRow("one name") << false << 30;
        QTest::newRow("two names") << true << 20;
    }

    // Four at a time, each in its own folder.
    void wholeTextsOnly()
    {
        QFETCH(bool, linked);
        QFETCH(int, rounds);
        constexpr int typists = 4;
        std::array<QTemporaryDir, typists> folders;
        for (QTemporaryDir &folder : folders) {
            QVERIFY(writeAtomically(folder.filePath(u"글.md"_s), Test::typedText(0).toUtf8()));
            QVERIFY(folder.isValid() && QDir(folder.path()).mkdir(u"other"_s));
            if (linked)
                QCOMPARE(::link(QFile::encodeName(folder.filePath(u"글.md"_s)).constData(),
                                QFile::encodeName(folder.filePath(u"other/글.md"_s)).constData()),
                         0);
        }
        int reported = 0;
        int finished = 0;
        for (int round = 0; round < rounds; ++round) {
            std::array<QProcess, typists> processes;
            for (int i = 0; i < typists; ++i)
                processes[i].start(QStringLiteral(VESK_TYPIST), {folders[i].filePath(u"글.md"_s)});
            for (int i = 0; i < typists; ++i) {
                QVERIFY(processes[i].waitForReadyRead(60'000));
                QTest::qSleep(QRandomGenerator::global()->bounded(12)); // any moment will do
                processes[i].kill();
                processes[i].waitForFinished(60'000);
            }
            for (int i = 0; i < typists; ++i) {
                const auto lines = processes[i].readAllStandardOutput().split('\n');
                const int known = lines.at(lines.size() - 2).toInt();
                reported = qMax(reported, known);
                checkFolder(folders[i], linked, known, finished);
                if (QTest::currentTestFailed())
                    return;
            }
        }
        qInfo("the last text known to be saved was number %d; %d writes in place were completed", reported,
              finished);
    }

private:
    static void checkFolder(const QTemporaryDir &folder, bool linked, int known, int &finished)
    {
        const QString path = folder.filePath(u"글.md"_s);
        if (!linked) {
            const auto bytes = readFile(path, 10'000'000);
            QVERIFY(bytes);
            QVERIFY2(Test::keysOf(QString::fromUtf8(*bytes)) >= known, "torn, or older than what was saved");
        }
        QStringList errors;
        MarkdownDocumentModel document(path);
        document.onLogError = [&errors](const QString &line) { errors.append(line); };
        document.onLogInfo = [&finished](const QString &) { ++finished; };
        document.load();
        QCOMPARE(errors, QStringList());
        QVERIFY(Test::keysOf(document.text()) >= known);
        if (linked)
            QCOMPARE(readFile(folder.filePath(u"other/글.md"_s), 10'000'000), document.text().toUtf8());
        QCOMPARE(
            QDir(folder.path()).entryList({u"*.unsaved"_s, u".vesk-inplace*"_s}, QDir::Files | QDir::Hidden),
            QStringList());
    }
};

VESK_TEST(KilledWhileTypingTest)
#include "KilledWhileTypingTest.moc"
