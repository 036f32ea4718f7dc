#include "git/GitDiff.h"

#include "git/GitCommitChanges.h"
#include "git/GitPath.h"
#include "git/GitStatusReader.h"
#include "git/GitWordDiff.h"
#include "Repository.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Vesk::Test;
using namespace Qt::StringLiterals;
using Content = GitDiff::Content;
using LineKind = GitDiff::Line::Kind;
using GitWorkingTree::Change;

namespace
{

// "kind old new text" a line, to read a diff at a glance
QString told(const GitDiff::FileDiff &diff)
{
    QStringList lines;
    for (const GitDiff::Line &line : diff.content.lines) {
        const auto number = [](std::optional<qint64> value) {
            return value ? QString::number(*value) : u"."_s;
        };
        lines << u"%1 %2 %3 %4"_s.arg(QChar(u"m@ +-\\"[int(line.kind)]))
                     .arg(number(line.oldNumber), number(line.newNumber), line.text);
    }
    return lines.join(u'\n');
}

GitDiff::FileDiff diffOf(const Repository &repository, const QString &path)
{
    const auto status = GitStatusReader::read(repository.setting(), repository.path(), 1);
    for (const Change &change : status ? status->changes : QList<Change>()) {
        if (change.path == path)
            return GitDiff::read(repository.setting(), change, repository.path());
    }
    QTest::qFail(qPrintable(u"no change of "_s + path), __FILE__, __LINE__);
    return {};
}

// Marks what is emphasised.
QString marked(const QString &text, const QList<GitWordDiff::Range> &ranges)
{
    QString result = text;
    for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
        result.insert(range->start + range->length, u']');
        result.insert(range->start, u'[');
    }
    return result;
}

} // namespace

class GitDiffTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headers_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("numbers");
        QTest::newRow("one line") << QByteArray("@@ -0,0 +1 @@") << u"0 0 1 1"_s;
        QTest::newRow("with function") << QByteArray("@@  -12,3 +14,25 @@ int main() {") << u"12 3 14 25"_s;
        for (const char *line :
             {"@@ -1 @@", "@@ 1,2 +3,4 @@", "@@ -1,2 -3,4 @@", "@@ -1,2,3 +4 @@", "@@ -a +1 @@", "@@ - +1 @@",
              "@@ --1 +1 @@", "@@@ -1 -1 +1 @@@", "@@ -99999999999999999999 +1 @@"})
            QTest::newRow(line) << QByteArray(line) << QString();
    }

    void headers()
    {
        QFETCH(QByteArray, line);
        const auto header = GitDiff::hunkHeader(line);
        QString numbers;
        if (header)
            numbers = u"%1 %2 %3 %4"_s.arg(header->oldStart)
                          .arg(header->oldCount)
                          .arg(header->newStart)
                          .arg(header->newCount);
        QTEST(numbers, "numbers");
    }

    void linesOfADiff()
    {
        const auto diff = GitDiff::parse(
            "diff --git a/x b/y\nsimilarity index 90%\nindex 1..2 100644\n--- a/x\n+++ b/y\n"
            "@@ -1,4 +1,4 @@ f\r\n one\r\n--- two\n+++ zwei\n\n four\n\\ No newline at end of file\n"
            "\n@@ bad @@\n@@ -9 +9,2 @@\n+a\nGIT binary patch\n+b\n\\ x\n");
        QCOMPARE(
            told(diff),
            u"m . . similarity index 90%\n@ . . @@ -1,4 +1,4 @@ f\n  1 1 one\n- 2 . -- two\n+ . 2 ++ zwei\n"
            "  3 3 \n  4 4 four\n\\ . . \\ No newline at end of file\n@ . . @@ -9 +9,2 @@\n+ . 9 a\n"
            "m . . GIT binary patch\nm . . +b\n\\ . . \\ x"_s);
        QCOMPARE(diff.added, 2);
        QCOMPARE(diff.removed, 1);
        QCOMPARE(GitDiff::parse("").content.kind, Content::Kind::Empty);
        QCOMPARE(GitDiff::parse("diff --git a/x b/x\nindex 1..2\n").content.kind, Content::Kind::Empty);
        const auto binary =
            GitDiff::assemble(0, "diff --git a/x b/x\nBinary files a/x and b/x differ\n", 50, {}, {0});
        QCOMPARE(binary, GitDiff::FileDiff({.content = {.kind = Content::Kind::Binary}}));
    }

    void limits()
    {
        QByteArray text = "@@ -0,0 +1,2500 @@\n+";
        text += QByteArray("가").repeated(5000 / 3) + "ab\n";
        for (int i = 1; i < 2500; ++i)
            text += "+x\n";
        const auto diff = GitDiff::parse(text);
        QCOMPARE(diff.content.lines.size(), 2000);
        QCOMPARE(diff.omittedLines, 501);
        QCOMPARE(diff.added, 2500);
        QCOMPARE(diff.content.lines[1].text, QString(333, u'가'));
        QCOMPARE(diff.content.lines[1].clippedBytes, 5000 - 999);
        QCOMPARE(diff.content.lines.last().id, 1999);
    }

    void clippedOutput()
    {
        const QByteArray text = "@@ -0,0 +1,2 @@\n+first\n+seco";
        auto diff = GitDiff::assemble(1, text, text.size(), {}, {0, 1});
        QCOMPARE(diff.added, 2);
        QCOMPARE(diff.readBytes, text.size());
        diff = GitDiff::assemble(0, text, text.size() + 1, {}, {0});
        QCOMPARE(diff.added, 1);
        QCOMPARE(diff.readBytes, text.lastIndexOf('\n') + 1);
        QCOMPARE(diff.totalBytes, text.size() + 1);
        QCOMPARE(GitDiff::trimmedToLineBoundary("no end 한\xed\x95", true), QByteArrayView("no end 한"));
        QCOMPARE(GitDiff::trimmedToLineBoundary("no end 한", true), QByteArrayView("no end 한"));
        diff = GitDiff::assemble(128, text, text.size(), u" fatal: x\n"_s, {0});
        QCOMPARE(diff,
                 GitDiff::FileDiff({.content = {.kind = Content::Kind::Failed, .failure = u"fatal: x"_s}}));
        QCOMPARE(GitDiff::assemble(1, text, 5, {}, {0}).content.failure, u"git diff 실패(종료 코드 1)"_s);
    }

    // Cutting anywhere leaves a beginning of the same text, in whole lines or at least whole characters.
    void clippingKeepsWholePieces()
    {
        QVERIFY(rc::check([] {
            const auto pieces = *rc::gen::container<std::vector<std::string>>(
                rc::gen::element<std::string>("한", "😀", "a", "é", "\n", std::string(1, '\0')));
            QByteArray whole;
            for (const std::string &piece : pieces)
                whole += QByteArray::fromStdString(piece);
            const QByteArray cut = whole.left(*rc::gen::inRange<qsizetype>(0, whole.size() + 1));
            const QByteArrayView lines = GitDiff::trimmedToLineBoundary(cut, true);
            RC_ASSERT(lines.isValidUtf8());
            RC_ASSERT(whole.startsWith(lines));
            RC_ASSERT(lines.endsWith('\n') || (!cut.contains('\n') && cut.size() - lines.size() < 4));
            const QByteArrayView fields = GitCommitChanges::trimmedToFieldBoundary(cut, true);
            RC_ASSERT(whole.startsWith(fields));
            RC_ASSERT(fields.isEmpty() || fields.endsWith('\0'));
            RC_ASSERT(!cut.sliced(fields.size()).contains('\0'));
        }));
    }

    void listingsOfCommits()
    {
        const auto parse = [](QByteArray text) { return GitCommitChanges::parse(text.replace('@', '\0')); };
        const auto changes = parse("M@a\n\"b\"@R100@old@new@C75@x@y@D@gone@");
        QCOMPARE(changes.size(), 4);
        QCOMPARE(changes[0].path, u"a\n\"b\""_s);
        QCOMPARE(changes[0].worktree, u' ');
        QCOMPARE(changes[1].originalPath, u"old"_s);
        QCOMPARE(changes[1].path, u"new"_s);
        QCOMPARE(changes[1].badge(), u"R"_s);
        QCOMPARE(changes[2].kindLabel(), u"복사됨"_s);
        QCOMPARE(parse("M@a@R100@old@").size(), 1);
        QCOMPARE(parse("M@@M@b@").size(), 0);
        QCOMPARE(parse("M").size(), 0);
    }

    void wordsThatDiffer_data()
    {
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("added");
        const auto row = [](const char *name, const QString &removed, const QString &added) {
            QTest::newRow(name) << removed << added;
        };
        row("one word", u"int [alpha] = 1;"_s, u"int [beta] = 1;"_s);
        row("two places", u"if ([a] < b) return [x_1];"_s, u"if ([c] < b) return [x_2];"_s);
        row("blank between is bridged", u"the [red fox] jumps over it"_s, u"the [grey wolf] jumps over it"_s);
        row("added at the end", u"한국어 문장"_s, u"한국어 문장[ 입니다]"_s);
        row("indentation", u"[  ]return value;"_s, u"[    ]return value;"_s);
        row("nothing in common", u"alpha beta"_s, u"gamma delta epsilon"_s);
        row("the same", u"x y"_s, u"x y"_s);
        row("moved", u"[first, ]second, third"_s, u"second, third[, first]"_s);
        row("from nothing", QString(), u"something"_s);
    }

    void wordsThatDiffer()
    {
        QFETCH(QString, removed);
        QFETCH(QString, added);
        const auto plain = [](QString text) { return text.remove(u'[').remove(u']'); };
        const auto emphasis = GitWordDiff::compare(plain(removed), plain(added));
        QCOMPARE(marked(plain(removed), emphasis.removed), removed);
        QCOMPARE(marked(plain(added), emphasis.added), added);
    }

    // Without what is marked, both lines say the same, but for blanks that were bridged.
    void emphasisCoversEveryDifference()
    {
        QVERIFY(rc::check([] {
            const auto word = rc::gen::element<std::string>("a", "bc", " ", "  ", "한", "(", "😀", ";");
            const auto text = [&] {
                QString line;
                for (const std::string &piece : *rc::gen::container<std::vector<std::string>>(word))
                    line += QString::fromStdString(piece);
                return line;
            };
            const QString removed = text();
            const QString added = text();
            const auto emphasis = GitWordDiff::compare(removed, added);
            const auto rest = [](QString line, const QList<GitWordDiff::Range> &ranges) {
                qsizetype behind = line.size();
                for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
                    RC_ASSERT(range->length > 0 && range->start + range->length <= behind);
                    behind = range->start - 1;
                    line.remove(range->start, range->length);
                }
                return line.remove(u' ');
            };
            if (!emphasis.removed.isEmpty() || !emphasis.added.isEmpty())
                RC_ASSERT(rest(removed, emphasis.removed) == rest(added, emphasis.added));
        }));
    }

    void linesArePairedByRuns()
    {
        auto diff = GitDiff::parse(
            "@@ -1,5 +1,4 @@\n-aaa one\n-bbb one\n+aaa two\n+bbb two\n c\n-ddd one\n-eee one\n+ddd two\n");
        GitWordDiff::emphasise(diff.content.lines);
        QStringList lines;
        for (const GitDiff::Line &line : diff.content.lines.mid(1))
            lines << marked(line.text, line.emphasis);
        QCOMPARE(lines.join(u'|'), u"aaa [one]|bbb [one]|aaa [two]|bbb [two]|c|ddd one|eee one|ddd two"_s);
    }

    void changesOfAWorkTree()
    {
        const Repository repository;
        repository.write(u"plain.txt"_s, "one\ntwo\nthree\n");
        repository.write(u"moved.txt"_s, QByteArray("line\n").repeated(20));
        repository.write(u"gone.txt"_s, "x\n");
        repository.write(u"a*.txt"_s, "star\n");
        repository.write(u"ab.txt"_s, "other\n");
        repository.commit(u"base"_s);
        repository.write(u"plain.txt"_s, "one\nzwei\nthree\n");
        repository.git({u"add"_s, u"plain.txt"_s});
        repository.write(u"plain.txt"_s, "one\nzwei\nthree\r\nfour\r\n");
        repository.git({u"mv"_s, u"moved.txt"_s, u"renamed.txt"_s});
        repository.write(u"renamed.txt"_s, QByteArray("line\n").repeated(20) + "more\n");
        QFile::remove(repository.path(u"gone.txt"_s));
        repository.write(u"a*.txt"_s, "changed\n");
        repository.write(u"ab.txt"_s, "changed\n");
        repository.write(u"empty"_s, "");
        repository.write(u"-"_s, "dash\n");
        repository.write(u":odd \"name\"\n"_s, "odd\n");
        repository.write(QByteArray("caf\xe9"), "latin\n");
        repository.write(u"binary"_s, QByteArray("a\0b", 3));
        repository.write(u"folder/file"_s, "x");

        QCOMPARE(
            told(diffOf(repository, u"plain.txt"_s)),
            u"@ . . @@ -1,3 +1,4 @@\n  1 1 one\n- 2 . two\n- 3 . three\n+ . 2 zwei\n+ . 3 three\n+ . 4 four"_s);
        const auto renamed = diffOf(repository, u"renamed.txt"_s);
        QVERIFY2(told(renamed).contains(u"m . . rename from moved.txt"_s), qPrintable(told(renamed)));
        QCOMPARE(renamed.added, 1);
        QCOMPARE(diffOf(repository, u"gone.txt"_s).removed, 1);
        QCOMPARE(diffOf(repository, u"a*.txt"_s).added, 1);
        QVERIFY(diffOf(repository, u"empty"_s).content.lines.size() <= 1);
        QVERIFY(told(diffOf(repository, u"-"_s)).contains(u"+ . 1 dash"_s));
        QVERIFY(told(diffOf(repository, u":odd \"name\"\n"_s)).contains(u"+ . 1 odd"_s));
        QVERIFY(told(diffOf(repository, GitPath::decode("caf\xe9"))).contains(u"+ . 1 latin"_s));
        QCOMPARE(diffOf(repository, u"binary"_s).content.kind, Content::Kind::Binary);
        QCOMPARE(diffOf(repository, u"folder/"_s).content.kind, Content::Kind::Directory);
        const Change change {.path = u"plain.txt"_s, .worktree = u'M'};
        QCOMPARE(GitDiff::read(repository.settingWithoutGit(), change, repository.path()).content.failure,
                 u"git을 찾을 수 없습니다"_s);
        QVERIFY(!GitDiff::read(repository.setting(), change, repository.folder() + u"/gone"_s)
                     .content.failure.isEmpty());
    }

    void changesOfCommits()
    {
        const Repository repository({u"--object-format=sha256"_s});
        repository.write(u"a.txt"_s, "one\n");
        Change added {.path = u"a.txt"_s, .index = u'A'};
        QCOMPARE(told(diffOf(repository, u"a.txt"_s)).section(u'\n', -1),
                 u"+ . 1 one"_s); // before any commit
        repository.git({u"add"_s, u"-A"_s});
        QCOMPARE(diffOf(repository, u"a.txt"_s).added, 1);
        const QString root = repository.commit(u"root"_s);
        const auto listing = GitCommitChanges::read(repository.setting(), {.hash = root}, repository.path());
        QCOMPARE(listing, GitCommitChanges::Listing({.changes = {added}}));
        QCOMPARE(GitDiff::read(repository.setting(), added, repository.path(), {.hash = root}).added, 1);

        repository.git({u"mv"_s, u"a.txt"_s, u"b.txt"_s});
        const QString second = repository.commit(u"moved"_s);
        const GitCommitChanges::Target target {.hash = second, .parent = root};
        const auto moved = GitCommitChanges::read(repository.setting(), target, repository.path());
        QCOMPARE(moved.changes.size(), 1);
        QCOMPARE(moved.changes[0].originalPath, u"a.txt"_s);
        const auto diff = GitDiff::read(repository.setting(), moved.changes[0], repository.path(), target);
        QVERIFY(told(diff).contains(u"similarity index 100%"_s));
        const auto broken =
            GitCommitChanges::read(repository.setting(), {.hash = u"0123"_s}, repository.path());
        QVERIFY(broken.failure && !broken.failure->isEmpty());
    }
};

VESK_TEST(GitDiffTest)
#include "GitDiffTest.moc"
