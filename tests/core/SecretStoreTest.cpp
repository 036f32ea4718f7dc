#include "core/SecretStore.h"

#include "base/Files.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;

class SecretStoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = m_dir->filePath(u"app/secrets.env"_s);
    }

    void reads_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("value"); // null: absent
        QTest::newRow("plain") << QByteArray("KEY=abc\n") << u"abc"_s;
        QTest::newRow("export and quotes") << QByteArray("\t export KEY = \"abc\" \n") << u"abc"_s;
        QTest::newRow("only the first = divides") << QByteArray("KEY=a=b") << u"a=b"_s;
        QTest::newRow("one quote character") << QByteArray("KEY='\n") << u"'"_s;
        QTest::newRow("mismatched quotes") << QByteArray("KEY='abc\"\n") << u"'abc\""_s;
        QTest::newRow("one pair only") << QByteArray("KEY=''abc''\n") << u"'abc'"_s;
        QTest::newRow("no expansion")
            << QByteArray("KEY=$HOME\\n # no comment\n") << u"$HOME\\n # no comment"_s;
        QTest::newRow("first definition, though empty") << QByteArray("KEY=\nKEY=b\n") << u""_s;
        QTest::newRow("comment") << QByteArray(" #KEY=x\n") << QString();
        QTest::newRow("other key") << QByteArray("KEY2=x\nkey=y\nKEY\n") << QString();
        QTest::newRow("not UTF-8") << QByteArray("KEY=\xff\n") << QString();
    }
    void reads()
    {
        QFETCH(const QByteArray, file);
        QFETCH(const QString, value);
        write(file);
        const auto read = EnvFileSecretStore(m_path).read(u"KEY"_s);
        QCOMPARE(read.has_value(), !value.isNull());
        QCOMPARE(read.value_or(QString()), value);
    }

    void upserts_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("value"); // null: removal
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("new file") << QByteArray() << u"v"_s << QByteArray("KEY=v\n");
        QTest::newRow("moves to the end")
            << QByteArray("# c\nKEY=1\n\nA = 'x'\n") << u"v"_s << QByteArray("# c\n\nA = 'x'\nKEY=v\n");
        QTest::newRow("every definition goes")
            << QByteArray("export KEY=1\nA=2\n KEY = 3\n") << QString() << QByteArray("A=2\n");
        QTest::newRow("comment stays") << QByteArray("#KEY=x\n") << u"v"_s << QByteArray("#KEY=x\nKEY=v\n");
        QTest::newRow("no last line feed") << QByteArray("A=1") << u"v"_s << QByteArray("A=1\nKEY=v\n");
        QTest::newRow("trailing blank lines") << QByteArray("A=1\n\n\n") << QString() << QByteArray("A=1\n");
        QTest::newRow("last key leaves an empty file") << QByteArray("KEY=1\n") << QString() << QByteArray();
        QTest::newRow("unreadable file is replaced")
            << QByteArray("A=\xff\n") << u"v"_s << QByteArray("KEY=v\n");
    }
    void upserts()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QString, value);
        QFETCH(const QByteArray, after);
        if (!before.isEmpty())
            write(before);
        const EnvFileSecretStore store(m_path);
        const auto given = value.isNull() ? std::nullopt : std::optional(value);
        // Twice: the second time must change nothing, blank lines least of all.
        for (int i = 0; i < 2; ++i) {
            QVERIFY(store.upsert(u"KEY"_s, given));
            QCOMPARE(readFile(m_path, 1000).value(), after);
        }
        QCOMPARE(store.read(u"KEY"_s), given);
        QCOMPARE(QFile::permissions(m_path)
                     & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                 QFile::Permissions());
    }

    void whatCannotBeWritten()
    {
        const EnvFileSecretStore store(m_path);
        QVERIFY(store.upsert(u"A"_s, u"1"_s));
        QVERIFY(!store.upsert(u"KEY"_s, u"x\nA=2"_s));
        QCOMPARE(store.read(u"A"_s), u"1"_s);
        QVERIFY(!EnvFileSecretStore(m_path + u"/below/a/file"_s).upsert(u"KEY"_s, u"x"_s));
    }

    void priority()
    {
        const QString first = m_dir->filePath(u"first.env"_s);
        write("A=app\nB=app\nC=app\nE=\n");
        QVERIFY(writeAtomically(first, "A=first\nB=\"\"\nD=first\n"));
        const auto composite = CompositeSecretStore::overFiles({m_dir->filePath(u"none"_s), first, m_path});
        QCOMPARE(composite.read(u"A"_s), u"first"_s);
        QCOMPARE(composite.read(u"B"_s), u"app"_s); // an empty value falls through
        QCOMPARE(composite.read(u"C"_s), u"app"_s);
        QCOMPARE(composite.read(u"D"_s), u"first"_s);
        QVERIFY(!composite.read(u"E"_s));
        QVERIFY(QFile::remove(first)); // nothing is cached
        QCOMPARE(composite.read(u"A"_s), u"app"_s);
    }

private:
    void write(const QByteArray &bytes)
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QVERIFY(writeAtomically(m_path, bytes, 0644));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

VESK_TEST(SecretStoreTest)

#include "SecretStoreTest.moc"
