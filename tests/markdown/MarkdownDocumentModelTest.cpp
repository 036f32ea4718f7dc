#include "markdown/MarkdownDocumentModel.h"

#include "base/Files.h"
#include "markdown/InPlaceWrite.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace Vesk;
using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace
{

constexpr AutosaveDelays hurriedDelays {milliseconds(5), milliseconds(15), milliseconds(1)};
// Nothing is saved unless the test says so.
constexpr AutosaveDelays lazyDelays {std::chrono::hours(1), std::chrono::hours(2), milliseconds(1)};

struct Editor {
    MarkdownDocumentModel document;
    QStringList infos;
    QStringList errors;

    explicit Editor(const QString &path, AutosaveDelays delays = lazyDelays)
        : document(path, nullptr, delays)
    {
        document.onLogInfo = [this](const QString &line) { infos.append(line); };
        document.onLogError = [this](const QString &line) { errors.append(line); };
        document.load();
    }

    void type(const QString &text)
    {
        document.setText(text);
        document.scheduleAutosave();
    }
};

const auto externalChange = MaybeConflict(DocumentConflict::ExternalChange);
const auto unreadable = MaybeConflict(DocumentConflict::Unreadable);
const auto missing = MaybeConflict(DocumentConflict::Missing);
const MaybeConflict noConflict;

} // namespace
Q_DECLARE_METATYPE(MaybeConflict)

class MarkdownDocumentModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = at(u"글.md"_s);
        put("old");
    }

    void autosaveWaitsWithAnUpperBound()
    {
        const AutosaveDelays delays;
        const auto after = [&](int waited) { return autosaveDelay(milliseconds(waited), delays).count(); };
        QCOMPARE(after(0), 1000);
        QCOMPARE(after(2000), 1000);
        QCOMPARE(after(2400), 600); // so that nothing waits longer than three seconds
        QCOMPARE(after(3000), 0);
        QCOMPARE(after(90'000), 0);
    }

    void aFileEventMeansWhatItFinds_data()
    {
        QTest::addColumn<QByteArray>("found");
        QTest::addColumn<bool>("gone");
        QTest::addColumn<bool>("dirty");
        QTest::addColumn<MaybeConflict>("conflict");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("savedText");
        const QString edit = u"edit"_s;
        const QString theirs = u"theirs"_s;
        const QString old = u"old"_s;
        QTest::newRow("clean follows") << "theirs"_ba << false << false << noConflict << theirs << theirs;
        QTest::newRow("dirty") << "theirs"_ba << false << true << externalChange << edit << old;
        QTest::newRow("the same edit") << "edit"_ba << false << true << noConflict << edit << edit;
        QTest::newRow("emptied, clean") << ""_ba << false << false << noConflict << u""_s << u""_s;
        QTest::newRow("no text, clean") << "\xFF"_ba << false << false << unreadable << old << old;
        QTest::newRow("cut character") << "\xED\x95"_ba << false << true << unreadable << edit << old;
        QTest::newRow("gone, clean") << ""_ba << true << false << noConflict << old << old;
        QTest::newRow("gone, dirty") << ""_ba << true << true << missing << edit << old;
    }

    // By an event, in the three ways to write; and by reading again where that is the same.
    void aFileEventMeansWhatItFinds()
    {
        QFETCH(QByteArray, found);
        QFETCH(bool, gone);
        QFETCH(bool, dirty);
        QFETCH(MaybeConflict, conflict);
        QFETCH(QString, text);
        QFETCH(QString, savedText);
        for (int way = 0; way < 3; ++way) {
            put("old");
            Editor editor(m_path);
            MarkdownDocumentModel &document = editor.document;
            document.startWatching();
            if (dirty)
                editor.type(u"edit"_s);
            QSignalSpy changes(&document, &MarkdownDocumentModel::stateChanged);
            if (gone)
                QVERIFY(QFile::remove(m_path));
            else if (way == 0)
                put(found); // cut off and written anew
            else if (way == 1)
                QVERIFY(writeAtomically(m_path, found));
            else {
                QVERIFY(QFile::rename(m_path, m_path + u'~'));
                put(found);
                QFile::remove(m_path + u'~');
            }
            QTRY_VERIFY(document.conflict() == conflict && document.text() == text
                        && document.savedText() == savedText);
            if (gone)
                QTRY_COMPARE(document.dirWatchPath(), m_dir->path());
            else
                QTRY_VERIFY(document.isWatchingFile());
            QVERIFY(!conflict || !changes.isEmpty());
            QCOMPARE(editor.errors.size(), conflict == unreadable ? 1 : 0);

            put("again", u"글.md"_s); // what was armed anew still hears
            QTRY_VERIFY(dirty && text != savedText ? document.conflict() == externalChange
                                                   : document.text() == u"again");
        }
    }

    void readingAgain()
    {
        Editor editor(m_path);
        MarkdownDocumentModel &document = editor.document;
        QVERIFY(document.everReadFromDisk());
        editor.type(u"edit"_s);
        put("\xC3");
        document.load();
        QCOMPARE(document.conflict(), unreadable);
        QVERIFY(document.isLocked() && document.text() == u"edit");
        QFile::remove(m_path);
        document.load();
        QCOMPARE(document.conflict(), missing);
        QCOMPARE(
            editor.errors.last(),
            u"md reload skipped (file missing): "_s + m_path
                + u" — 미저장 4자를 유지한다. 읽어올 내용이 없다; 남기려면 '저장'으로 이 경로에 다시 만들어야 한다."_s);
        put("\xEF\xBB\xBF# theirs\r\n"); // a byte order mark and such line ends stay
        document.load();
        QCOMPARE(document.conflict(), noConflict);
        QVERIFY(!document.isDirty() && !document.firstDirtyAt());
        editor.type(document.text() + u"x"_s);
        document.save(true);
        QCOMPARE(content(), "\xEF\xBB\xBF# theirs\r\nx");
    }

    void typingReachesTheDiskWithoutConflict()
    {
        Editor editor(m_path, hurriedDelays);
        MarkdownDocumentModel &document = editor.document;
        document.startWatching();
        for (int i = 0; i < 300; ++i) {
            editor.type(u"text %1"_s.arg(i));
            QTest::qWait(1);
            QVERIFY(!document.hasConflict());
        }
        QTRY_VERIFY(!document.isDirty());
        QCOMPARE(content(), "text 299");
        QTRY_VERIFY(document.isWatchingFile());
        QCOMPARE(editor.infos + editor.errors, QStringList());

        // Taken back before it was saved.
        const auto stamp = QFileInfo(m_path).lastModified();
        editor.type(u"other"_s);
        QVERIFY(document.firstDirtyAt());
        editor.type(u"text 299"_s);
        QVERIFY(!document.firstDirtyAt());
        QTest::qWait(30);
        QCOMPARE(QFileInfo(m_path).lastModified(), stamp);

        editor.type(u"half "_s + QChar(0xD800));
        QTRY_VERIFY(!document.isDirty());
        QCOMPARE(content(), document.text().toUtf8()); // repaired, not written without end
    }

    void anAutosaveIsHeldWhereOthersWrote()
    {
        Editor editor(m_path);
        MarkdownDocumentModel &document = editor.document;
        editor.type(u"edit"_s);
        put("theirs");
        for (int i = 0; i < 2; ++i)
            document.save(false);
        QCOMPARE(document.conflict(), externalChange);
        QCOMPARE(editor.infos, QStringList {u"md autosave held (external change): 글.md"_s});
        QCOMPARE(content(), "theirs");
        document.save(true);
        QCOMPARE(document.conflict(), noConflict);
        QCOMPARE(content(), "edit");
        QVERIFY(!document.isDirty());
    }

    void nothingIsWrittenOverWhatCannotBeRead()
    {
        Editor editor(m_path);
        MarkdownDocumentModel &document = editor.document;
        editor.type(u"edit"_s);
        put("\xFE\xFF");
        document.save(false);
        document.save(true);
        document.save(true);
        QCOMPARE(document.conflict(), unreadable);
        QCOMPARE(content(), "\xFE\xFF");
        QCOMPARE(editor.errors.size(), 2);
        QCOMPARE(
            editor.errors.first(),
            u"md read failed (autosave): "_s + m_path
                + u" — 비UTF8이거나 읽을 수 없는 파일. 내용을 채택하지도, 그 위에 저장하지도 않는다(원본 보호)."_s);
        QVERIFY(editor.errors.last().startsWith(u"md save blocked (unreadable file): "));
        document.flushOrEvacuate();
        QVERIFY(editor.errors.last().contains(u"원본을 읽지 못해(비UTF8·권한) 그 위에 쓰는 것을 막았다"));
        QCOMPARE(copies(), QByteArrayList {"edit"});
    }

    void aDeletedFileComesBackOnlyWhenAsked()
    {
        Editor editor(m_path);
        MarkdownDocumentModel &document = editor.document;
        document.startWatching();
        editor.type(u"edit"_s);
        QFile::remove(m_path);
        for (int i = 0; i < 2; ++i)
            document.save(false);
        QCOMPARE(document.conflict(), missing);
        QVERIFY(!QFile::exists(m_path));
        QCOMPARE(editor.infos.filter(u"md autosave skipped (file missing): "_s).size(), 1);
        QTRY_COMPARE(document.dirWatchPath(), m_dir->path());
        document.save(true);
        QCOMPARE(document.conflict(), noConflict);
        QCOMPARE(content(), "edit");
        QTRY_VERIFY(document.isWatchingFile());
    }

    void linksStayLinks()
    {
        QVERIFY(QFile::link(u"글.md"_s, at(u"first"_s)));
        QVERIFY(QFile::link(at(u"first"_s), at(u"second"_s)));
        Editor editor(at(u"second"_s), hurriedDelays);
        editor.type(u"edit"_s);
        QTRY_COMPARE(content(), "edit");
        QVERIFY(QFileInfo(at(u"first"_s)).isSymLink() && QFileInfo(at(u"second"_s)).isSymLink());

        QVERIFY(QFile::link(at(u"loop"_s), at(u"loop"_s)));
        Editor lost(at(u"loop"_s));
        lost.document.startWatching();
        lost.type(u"edit"_s);
        lost.document.save(true);
        QVERIFY(lost.errors.last().startsWith(u"md save aborted (symlink chain unresolved): "_s
                                              + at(u"loop"_s) + u" — 8홉을 따라가도"_s));
        QVERIFY(lost.document.isDirty() && QFileInfo(at(u"loop"_s)).isSymLink());

        QCOMPARE(::link(QFile::encodeName(m_path).constData(), QFile::encodeName(at(u"twin"_s)).constData()),
                 0);
        Editor twin(at(u"twin"_s));
        for (const auto *text : {"one", "two"}) {
            twin.type(QString::fromLatin1(text));
            twin.document.save(false);
            QCOMPARE(content(), text);
        }
        QCOMPARE(twin.infos.size(), 1);
        QVERIFY(twin.infos.first().contains(u"이 파일은 하드링크가 걸려 있어(링크 수 2) 원자적 교체 대신"));
    }

    void aSaveThatFailsIsTriedAgain()
    {
        Editor editor(m_path);
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit before {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit little {1000, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &little), 0);
        const QString text(5000, u'n');
        editor.type(text);
        editor.document.save(true);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QVERIFY(editor.errors.value(0).startsWith(u"md save failed: "_s + m_path + u" — "_s));
        QVERIFY(editor.document.isDirty() && !editor.document.hasConflict());
        QVERIFY(editor.document.saveFailed() && editor.document.conflictBadge().contains(m_path));
        QVERIFY(editor.document.canReload() && editor.document.reloadHelp().contains(u"내 편집은 버려짐"_s));
        QCOMPARE(content(), "old");
        editor.document.save(false);
        QCOMPARE(content(), text.toUtf8());
        QVERIFY(!editor.document.saveFailed() && editor.document.conflictBadge().isEmpty());
        QVERIFY(!editor.document.canReload());
    }

    void twoEditorsOfOneFile()
    {
        Editor one(m_path, hurriedDelays);
        Editor two(m_path, hurriedDelays);
        one.document.startWatching();
        two.document.startWatching();
        one.type(u"from one"_s);
        QTRY_COMPARE(two.document.text(), u"from one"_s);
        two.type(u"from two"_s);
        QTRY_COMPARE(one.document.text(), u"from two"_s);
        one.type(u"mine"_s);
        two.type(u"yours"_s);
        QTRY_VERIFY(one.document.hasConflict() != two.document.hasConflict());
        QCOMPARE(content(), one.document.hasConflict() ? "yours" : "mine");
    }

    void theWatchClimbsAndComesDown()
    {
        const QString path = at(u"a/b/c/글.md"_s);
        make(u"a/b/c"_s);
        QVERIFY(writeAtomically(path, "old"));
        Editor editor(path);
        MarkdownDocumentModel &document = editor.document;
        document.startWatching();
        QVERIFY(QDir(at(u"a"_s)).removeRecursively());
        QTRY_COMPARE(document.dirWatchPath(), m_dir->path());
        QVERIFY(editor.infos.last().contains(u"가 없어 3단계 위("_s + m_dir->path() + u")를 감시한다."_s));
        for (const QString &folder : {u"a"_s, u"a/b"_s, u"a/b/c"_s}) {
            make(folder);
            QTRY_COMPARE(document.dirWatchPath(), at(folder));
        }
        QVERIFY(QDir(m_dir->path()).rename(u"a/b/c"_s, u"a/b/z"_s)); // which is not what was watched
        QTRY_COMPARE(document.dirWatchPath(), at(u"a/b"_s));
        make(u"a/b/c"_s);
        QVERIFY(writeAtomically(path, "back"));
        QTRY_COMPARE(document.text(), u"back"_s);
        QVERIFY(document.isWatchingFile());
        document.stopWatching();
        QVERIFY(!document.isWatchingFile() && document.dirWatchPath().isEmpty());
        QCOMPARE(editor.errors, QStringList());
    }

    void whatCannotBeSavedGoesBeside()
    {
        const auto close = [this](const QString &text, const QByteArray &theirs) {
            Editor editor(m_path);
            editor.type(text);
            theirs.isNull() ? void(QFile::remove(m_path)) : put(theirs);
            editor.document.flushOrEvacuate();
            put("old");
            return (editor.errors + editor.infos).join(u'\n');
        };
        QVERIFY(close(u"edit"_s, "old").isEmpty());
        QVERIFY(close(QString(), "theirs").startsWith(u"md autosave held")); // nothing to keep
        QCOMPARE(copies(), QByteArrayList());
        const QString first = close(u"edit"_s, "theirs");
        QVERIFY(first.startsWith(u"md unsaved edits evacuated: "_s + m_path + u" → "_s + at(u"글.md--"_s)));
        QVERIFY(first.contains(
            u"먼저 고쳐 자동 저장이 보류됐다(덮어쓸지는 사람이 골라야 한다). 미저장 4자를 옆에"));
        const QString second = close(u"edit"_s, {});
        QVERIFY(second.contains(u"md unsaved edits already evacuated: "_s + m_path));
        QVERIFY(second.contains(u"원래 경로에 파일이 없어"));
        close(u"other edit"_s, "theirs");
        QCOMPARE(copies(), (QByteArrayList {"other edit", "edit"}));
        QCOMPARE(content(), "old");
    }

    void whereNothingCanBeWrittenTheLastResortTakesIt()
    {
        // Every name beside the file is taken.
        make(u"gone"_s);
        put("old", u"gone/글.md"_s);
        Editor editor(at(u"gone/글.md"_s));
        editor.type(u"edit"_s);
        make(u"gone/글.md--"_s + pathFingerprint(editor.document.path()) + u".unsaved"_s);
        for (int n = 2; n <= evacuationAttempts; ++n)
            make(u"gone/글.md--%1-%2.unsaved"_s.arg(pathFingerprint(editor.document.path())).arg(n));
        put("theirs", u"gone/글.md"_s);
        QVERIFY(!editor.document.flushOrEvacuate().kept);
        editor.document.setLastResort(at(u"resort/of/all"_s));
        const auto farewell = editor.document.flushOrEvacuate();
        QVERIFY(farewell.kept && farewell.copy.startsWith(at(u"resort/of/all/글.md--"_s)));
        QCOMPARE(readFile(farewell.copy, 1000).value_or("?"), "edit");
        QCOMPARE(Editor(m_path).document.flushOrEvacuate().copy, QString());
    }

    void aFolderThatWasRenamedIsHeardOfAgain()
    {
        make(u"a"_s);
        put("old", u"a/글.md"_s);
        Editor editor(at(u"a/글.md"_s), hurriedDelays);
        editor.document.startWatching();
        QVERIFY(QDir(m_dir->path()).rename(u"a"_s, u"b"_s));
        editor.type(u"mine"_s);
        QTRY_COMPARE(editor.document.conflict(), missing);
        QVERIFY(QDir(m_dir->path()).rename(u"b"_s, u"a"_s));
        QTRY_COMPARE(editor.document.conflict(), externalChange);
        QCOMPARE(editor.document.text(), u"mine"_s);
    }

    void closingWaitsForTheSaveUnderWay()
    {
        Editor editor(m_path, {milliseconds(0), milliseconds(0), milliseconds(1)});
        editor.type(u"first"_s); // on its way at once
        editor.document.setText(u"second"_s);
        editor.document.flushOrEvacuate();
        QCOMPARE(content(), "second");
        editor.type(u"third"_s);
        editor.document.load(); // what a person asks for comes behind it, too
        QCOMPARE(editor.document.text(), u"third"_s);
        QCOMPARE(editor.errors + editor.infos, QStringList());
    }

    void anInterruptedSaveIsToldOf()
    {
        QVERIFY(writeAtomically(inPlaceRecordPath(m_path), "vesk-inplace 1 3 4\noldnew!"));
        Editor finished(m_path);
        QCOMPARE(finished.document.text(), u"new!"_s);
        QVERIFY(finished.infos.value(0).startsWith(u"md interrupted save finished: "_s + m_path));
        QVERIFY(writeAtomically(inPlaceRecordPath(m_path), "vesk-inplace 1 3 4\noldnew?"));
        Editor left(m_path); // the file is neither of the two
        QCOMPARE(left.document.text(), u"new!"_s);
        QCOMPARE(copies(), QByteArrayList {"new?"});
        QVERIFY(left.errors.value(0).startsWith(u"md interrupted save not finished: "_s + m_path));
        QVERIFY(!QFile::exists(inPlaceRecordPath(m_path)));
    }

    void aLargeFile()
    {
        const QByteArray bytes = "가나다라 abc\n"_ba.repeated(1'200'000);
        put(bytes);
        Editor editor(m_path, hurriedDelays);
        QVERIFY(bytes.size() > 20'000'000 && editor.document.text().size() == 10'800'000);
        editor.type(editor.document.text() + u"끝"_s);
        QTRY_VERIFY(!editor.document.isDirty());
        QVERIFY(content() == bytes + "끝");
    }

    void conflictTexts()
    {
        namespace Texts = MarkdownConflictTexts;
        QVERIFY(Texts::badge(externalChange, u"다듬기"_s).startsWith(u"다른 곳(예: 다듬기)이 이 파일을"));
        QVERIFY(Texts::lockedNotice(unreadable, false, true).contains(u"한 번도 읽지 못해"));
        QVERIFY(Texts::lockedNotice(unreadable, true, true).contains(u"미저장 편집이 얹혀 있습니다 — 지금"));
        QVERIFY(Texts::lockedNotice(unreadable, true, false).contains(u"알 수 없습니다 — 지금 저장하면"));
        QVERIFY(Texts::lockedNotice(missing, true, true).isEmpty());
    }

private:
    [[nodiscard]] QString at(const QString &name) const { return m_dir->filePath(name); }
    [[nodiscard]] QByteArray content() const { return readFile(m_path, 100'000'000).value_or("?"); }
    void put(const QByteArray &bytes, const QString &name = u"글.md"_s) const
    {
        QFile file(at(name));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered));
        file.write(bytes);
    }
    void make(const QString &folder) const { QVERIFY(QDir(m_dir->path()).mkpath(folder)); }
    // What lies beside the document, by name.
    [[nodiscard]] QByteArrayList copies() const
    {
        QByteArrayList bytes;
        const QDir dir(m_dir->path());
        for (const QString &name : dir.entryList({u"*.unsaved"_s}, QDir::Files, QDir::Name))
            bytes.append(readFile(at(name), 1000).value_or("?"));
        return bytes;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

VESK_TEST(MarkdownDocumentModelTest)
#include "MarkdownDocumentModelTest.moc"
