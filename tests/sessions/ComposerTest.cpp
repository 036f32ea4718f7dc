// What is completed at a caret, and what a search among files finds in good and bad trees.
#include "sessions/ComposerAtFileSearch.h"
#include "sessions/ComposerAutocomplete.h"
#include "sessions/ComposerAutocompleteModel.h"
#include "sessions/ComposerFileLookup.h"
#include "support/TestRegistry.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <rapidcheck.h>

#include <filesystem>

using namespace Vesk;
using namespace Qt::StringLiterals;
using ComposerAutocomplete::Trigger;

namespace
{

void touch(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class ComposerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tokensAtTheCaret_data()
    {
        QTest::addColumn<QString>("text"); // "|" is the caret
        QTest::addColumn<QString>("token");
        QTest::newRow("at the start") << u"/he|"_s << u"/he"_s;
        QTest::newRow("inside a word") << u"a/he|"_s << QString();
        QTest::newRow("behind a blank") << u"a /he|"_s << u"/he"_s;
        QTest::newRow("behind a line end") << u"가\n@|"_s << u"@"_s;
        QTest::newRow("behind a letter") << u"me@host|"_s << QString();
        QTest::newRow("a path is completed") << u"see @src/ma| now"_s << u"@src/ma"_s;
        QTest::newRow("only up to the caret") << u"@sr|c"_s << u"@sr"_s;
        QTest::newRow("before the trigger") << u"|/he"_s << QString();
        QTest::newRow("behind the word") << u"/he |"_s << QString();
        QTest::newRow("two in one word") << u"/@a|"_s << u"/@a"_s;
        QTest::newRow("empty") << u"|"_s << QString();
    }

    void tokensAtTheCaret()
    {
        QFETCH(QString, text);
        QFETCH(const QString, token);
        const auto caret = text.indexOf(u'|');
        text.remove(caret, 1);
        const auto found = ComposerAutocomplete::detect(text, caret);
        QCOMPARE(found ? text.sliced(found->range.start, found->range.length) : QString(), token);
        if (found) {
            QCOMPARE(found->range.start + found->range.length, caret);
            QCOMPARE(found->trigger, token.startsWith(u'/') ? Trigger::Slash : Trigger::At);
            QCOMPARE(found->query, token.sliced(1));
        }
        QVERIFY(!ComposerAutocomplete::detect(text, text.size() + 1));
    }

    void commandsAreFilteredInOrder()
    {
        const QStringList commands {u"review"_s, u"Release"_s, u"compact"_s};
        QCOMPARE(ComposerAutocomplete::filterSlash({}, commands),
                 (QStringList {u"Release"_s, u"compact"_s, u"review"_s}));
        QCOMPARE(ComposerAutocomplete::filterSlash(u"RE"_s, commands),
                 (QStringList {u"Release"_s, u"review"_s}));
    }

    void filesAreRanked()
    {
        using ComposerAtFileSearch::rank;
        const QStringList paths {u"cancel/notes.md"_s,    u"docs/order_cancel.md"_s,
                                 u"b/Cancel_twice.cpp"_s, u"a/cancel_handler.cpp"_s,
                                 u"a/other.cpp"_s,        u"c/cancel_twice.cpp"_s};
        QCOMPARE(rank(u"CANCEL"_s, paths, 8),
                 (QStringList {u"b/Cancel_twice.cpp"_s, u"c/cancel_twice.cpp"_s, u"a/cancel_handler.cpp"_s,
                               u"docs/order_cancel.md"_s, u"cancel/notes.md"_s}));
        QCOMPARE(rank({}, paths, 2), (QStringList {u"a/cancel_handler.cpp"_s, u"a/other.cpp"_s}));
        const QString decomposed = u"설계.md"_s.normalized(QString::NormalizationForm_D);
        QCOMPARE(rank(u"설계"_s, {decomposed}, 8), QStringList {decomposed});
        QVERIFY(rank(u"x"_s, {u"x"_s}, 0).isEmpty());
    }

    void aTreeIsWalkedOnlyWhereItMakesSense()
    {
        const QTemporaryDir tree;
        for (const auto &path : {u"src/main.cpp"_s, u"top.txt"_s, u".hidden"_s, u".git/x"_s, u"a/.next/x"_s,
                                 u"a/node_modules/x"_s, u"build/x"_s, u"shut/x"_s})
            touch(tree.filePath(path));
        touch(tree.filePath(u"two\nlines"_s));
        QFile badName(tree.filePath(u"rename-me"_s));
        QVERIFY(badName.open(QIODevice::WriteOnly));
        badName.close();
        std::filesystem::rename(tree.filePath(u"rename-me"_s).toStdString(),
                                tree.path().toStdString() + "/bad\xff\xfe");
        QVERIFY(QFile::link(tree.path(), tree.filePath(u"a/round"_s)));
        QVERIFY(QFile::link(tree.filePath(u"self"_s), tree.filePath(u"self"_s)));
        QVERIFY(QFile::setPermissions(tree.filePath(u"shut"_s), {}));
        QStringList found = ComposerAtFileSearch::search({}, tree.path(), 100);
        found.removeOne(u"shut/x"_s); // nothing is shut to the system's owner
        QFile::setPermissions(tree.filePath(u"shut"_s),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(found, (QStringList {u"src/main.cpp"_s, u"top.txt"_s}));
        QVERIFY(ComposerAtFileSearch::search({}, tree.filePath(u"top.txt"_s), 8).isEmpty());
        QVERIFY(ComposerAtFileSearch::search({}, tree.filePath(u"nowhere"_s), 8).isEmpty());
        std::stop_source stopped;
        stopped.request_stop();
        QVERIFY(ComposerAtFileSearch::search({}, tree.path(), 8, stopped.get_token()).isEmpty());
    }

    void aHugeTreeStopsAtTheCap()
    {
        const QTemporaryDir tree;
        for (int folder = 0; folder < 9; ++folder) {
            QDir().mkdir(tree.filePath(QString::number(folder)));
            for (int file = 0; file < 1000; ++file)
                touch(tree.filePath(u"%1/%2"_s.arg(folder).arg(file)));
        }
        QCOMPARE(ComposerAtFileSearch::search({}, tree.path(), 10'000).size(),
                 ComposerAtFileSearch::maxPaths);
    }

    void aNewerSearchTakesTheOldersPlace()
    {
        const QTemporaryDir tree;
        touch(tree.filePath(u"one"_s));
        touch(tree.filePath(u"two"_s));
        ComposerFileLookup lookup;
        QSignalSpy found(&lookup, &ComposerFileLookup::found);
        for (const auto &query : {u"o"_s, u"on"_s, u"two"_s})
            lookup.find(query, tree.path());
        QVERIFY(lookup.isRunning());
        QTRY_VERIFY(!lookup.isRunning());
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().first().toStringList(), QStringList {u"two"_s});
        lookup.find(u"one"_s, tree.path());
        lookup.cancel();
        QVERIFY(!found.wait(200));
    }

    void theModelFollowsAndGoesRound()
    {
        ComposerAutocompleteModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        const auto token = [](const QString &text) {
            return ComposerAutocomplete::detect(text, text.size());
        };
        model.update(token(u"@"_s), {u"a"_s, u"src/Main.cpp"_s, u"c"_s});
        QVERIFY(model.isActive());
        model.moveHighlight(-1);
        QCOMPARE(model.selected(), u"c"_s);
        model.moveHighlight(5);
        QCOMPARE(model.highlighted(), 1);
        model.update(token(u"@src/ma"_s), {u"src/Main.cpp"_s, u"src/ma"_s});
        QCOMPARE(model.highlighted(), 1);
        const auto first = model.index(0);
        QCOMPARE(model.data(first, ComposerAutocompleteModel::NameRole).toString(), u"Main.cpp"_s);
        QCOMPARE(model.data(first, ComposerAutocompleteModel::FolderRole).toString(), u"src"_s);
        QCOMPARE(model.data(first, ComposerAutocompleteModel::MatchLengthRole).toInt(), 2);
        model.update(token(u"/re"_s), {u"review"_s});
        QCOMPARE(model.highlighted(), 0);
        QCOMPARE(model.data(model.index(0), ComposerAutocompleteModel::NameRole).toString(), u"/review"_s);
        QCOMPARE(model.data(model.index(0), ComposerAutocompleteModel::MatchLengthRole).toInt(), 3);
        model.setPendingConfirm(true);
        model.update(token(u"/re"_s), {});
        QVERIFY(!model.isActive() && !model.pendingConfirm() && !model.selected());
        model.moveHighlight(1);
        QCOMPARE(model.highlighted(), 0);
    }
};

VESK_TEST(ComposerTest)
#include "ComposerTest.moc"
