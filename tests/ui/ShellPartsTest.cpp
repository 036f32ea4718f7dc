// The parts of the main window that need no window: rows by key, colours, remembered places.
#include "support/TestRegistry.h"
#include "ui/controls/KeyedRowsModel.h"
#include "ui/controls/ProjectPalette.h"
#include "ui/shell/Projects.h"
#include "ui/shell/Settings.h"
#include "ui/shell/ViewSettings.h"

#include <QAbstractItemModelTester>
#include <QTemporaryDir>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

class Rows : public KeyedRowsModel
{
public:
    using KeyedRowsModel::KeyedRowsModel;
    using KeyedRowsModel::keys;
    using KeyedRowsModel::setKeys;
    QVariant data(const QModelIndex &index, int role) const override
    {
        return holds(index) && role == Qt::DisplayRole ? QVariant(keys().at(index.row())) : QVariant();
    }
};

} // namespace

class ShellPartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsBecomeWhateverIsAsked()
    {
        QVERIFY(rc::check([] {
            Rows rows;
            const QAbstractItemModelTester tester(&rows,
                                                  QAbstractItemModelTester::FailureReportingMode::Fatal);
            QStringList mirror; // follows the announcements alone
            QObject::connect(&rows, &Rows::rowsRemoved, [&mirror](const QModelIndex &, int first, int last) {
                mirror.remove(first, last - first + 1);
            });
            QObject::connect(&rows, &Rows::rowsInserted, [&](const QModelIndex &, int first, int last) {
                for (int row = first; row <= last; ++row) {
                    mirror.insert(row, rows.keys().at(row));
                }
            });
            for (int step = 0; step < 6; ++step) {
                QStringList wanted;
                for (const int number : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 12))) {
                    if (const QString key = QString::number(number); !wanted.contains(key)) {
                        wanted.append(key);
                    }
                }
                rows.setKeys(wanted);
                RC_ASSERT(rows.keys() == wanted);
                RC_ASSERT(mirror == wanted);
            }
        }));
    }

    void oneRowMoreIsOneRowAnnounced()
    {
        Rows rows;
        rows.setKeys({u"a"_s, u"b"_s, u"c"_s});
        QSignalSpy inserted(&rows, &Rows::rowsInserted);
        QSignalSpy removed(&rows, &Rows::rowsRemoved);
        rows.setKeys({u"a"_s, u"x"_s, u"b"_s, u"c"_s});
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.constFirst().at(1).toInt(), 1);
        QCOMPARE(inserted.constFirst().at(2).toInt(), 1);
        QCOMPARE(removed.size(), 0);
    }

    void sectionsOfTheSettings()
    {
        constexpr auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
        SettingsSections sections;
        const QAbstractItemModelTester sectionsTester(&sections, fatal);
        for (int row = 0; row < sections.rowCount(); ++row) {
            QCOMPARE(sections.rowOf(sections.idAt(row)), row);
            QVERIFY(QFile::exists(u":/qt/qml/Vesk/Shell/"_s + sections.fileAt(row)));
            const QString icon = sections.index(row).data(SettingsSections::IconRole).toString();
            QVERIFY(QFile::exists(u":/qt/qml/Vesk/Controls/icons/%1.svg"_s.arg(icon)));
        }
        QCOMPARE(sections.rowOf(u"gone"_s), 0);
        SettingsPlaces places({{u"a"_s, QDir::homePath() + u"/b"_s}});
        const QAbstractItemModelTester placesTester(&places, fatal);
        QCOMPARE(places.index(0).data(SettingsPlaces::ShownPathRole).toString(), u"~/b"_s);
    }

    void projectColours()
    {
        QList<ProjectCatalogEntry> entries;
        for (int lane = 0; lane < ProjectPalette::laneCount; ++lane) {
            QCOMPARE(ProjectPalette::nextLane(entries), lane);
            QCOMPARE(ProjectPalette::laneForHex(ProjectPalette::hexForLane(lane).toLower()), lane);
            entries.append({.alias = QString::number(lane),
                            .path = {},
                            .extraEnv = {},
                            .colorHex = ProjectPalette::hexForLane(lane)});
        }
        QCOMPARE(ProjectPalette::nextLane(entries), 0);
        entries.removeAt(3);
        QCOMPARE(ProjectPalette::nextLane(entries), 3);
        QCOMPARE(
            ProjectPalette::laneOf({.alias = {}, .path = {}, .extraEnv = {}, .colorHex = u"#123456"_s}, 5),
            -1);
        QCOMPARE(
            ProjectPalette::laneOf({.alias = {}, .path = {}, .extraEnv = {}, .colorHex = u"teal-ish"_s}, 5),
            5);
        QCOMPARE(ProjectPalette::laneOf({.alias = {}, .path = {}, .extraEnv = {}, .colorHex = {}}, 9), 1);
        entries.append({.alias = u"own"_s, .path = {}, .extraEnv = {}, .colorHex = u"#123456"_s});
        QCOMPARE(ProjectPalette::colorOf(entries, u"own"_s),
                 (ProjectPalette::ProjectColor {-1, QColor(0x12, 0x34, 0x56)}));
        QCOMPARE(ProjectPalette::colorOf(entries, u"gone"_s), ProjectPalette::ProjectColor());
    }

    void shortenedPaths()
    {
        QCOMPARE(ProjectPalette::shortenedPath(u"/home/ann/src"_s, u"/home/ann"_s), u"~/src"_s);
        QCOMPARE(ProjectPalette::shortenedPath(u"/home/anna/src"_s, u"/home/ann"_s), u"/home/anna/src"_s);
        QCOMPARE(ProjectPalette::shortenedPath(u"/home/ann"_s, u"/home/ann"_s), u"~"_s);
        QCOMPARE(ProjectPalette::shortenedPath(u"/srv"_s, u"/"_s), u"/srv"_s);
    }

    void rememberedPlaces_data()
    {
        QTest::addColumn<QRect>("remembered");
        QTest::addColumn<QRect>("expected");
        const QRect wanted(100, 50, 1200, 800);
        QTest::newRow("as it was") << wanted << wanted;
        QTest::newRow("on the second screen") << wanted.translated(1920, 0) << wanted.translated(1920, 0);
        QTest::newRow("half out at the left") << wanted.translated(-600, 0) << wanted.translated(-600, 0);
        QTest::newRow("its screen is gone") << wanted.translated(6000, 0) << QRect(240, 90, 1440, 900);
        QTest::newRow("title bar above the screens")
            << wanted.translated(0, -400) << QRect(240, 90, 1440, 900);
        QTest::newRow("too small") << QRect(100, 50, 300, 200) << QRect(100, 50, 900, 600);
    }

    void rememberedPlaces()
    {
        QFETCH(QRect, remembered);
        const QList<QRect> screens {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1920, 1080)};
        QTEST(fittingGeometry(remembered, screens), "expected");
        QCOMPARE(fittingGeometry({}, {QRect(0, 0, 1024, 700)}), QRect(0, 0, 1024, 700));
    }

    void copiesNeverReplaceAnEarlierCopy()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"projects.json"_s);
        QCOMPARE(keepCopyAside(path).value(), QString());
        for (const QByteArray &content : {QByteArray("[one"), QByteArray("[two")}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.close();
            const auto copy = keepCopyAside(path);
            QVERIFY(copy);
            QFile kept(*copy);
            QVERIFY(kept.open(QIODevice::ReadOnly));
            QCOMPARE(kept.readAll(), content);
        }
        QVERIFY(QFile::exists(path + u".bak"_s));
        QVERIFY(QFile::exists(path + u".bak-2"_s));
    }
};

VESK_TEST(ShellPartsTest)
#include "ShellPartsTest.moc"
