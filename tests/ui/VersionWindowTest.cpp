// The version window on real repositories, driven by keys and the mouse. With VESK_SHOTS in the environment
// it leaves pictures there.
#include "support/TestRegistry.h"
#include "ui/controls/Theme.h"
#include "ui/VersionStage.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::BranchyRepository;
using Test::Repository;
using Test::ShellStage;
using Test::VersionStage;

class VersionWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        Theme::shared().setMode(u"system"_s);
        Theme::shared().setScale(1);
    }

    void showsARepository()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        VersionView &view = stage.view();
        QCOMPARE(view.state(), VersionView::State::Ready);
        QCOMPARE(stage.window()->title(), u"형상관리 — billing"_s);
        QCOMPARE(view.branch(), u"fix/cancel-twice"_s);
        QCOMPARE(view.aheadText(), u"2"_s);
        QCOMPARE(view.changes()->pathAt(0), u"src/refund/policy.cpp"_s);
        QVERIFY(view.selected().isEmpty()); // changes that are not committed come first
        QVERIFY(view.detail()->isWorkTree());
        QVERIFY(stage.withText(u"충돌 풀기 부탁하기"_s)->property("reason").toString().isEmpty());
        stage.picture(u"version-worktree"_s);

        view.select(view.commits()->hashAt(1));
        stage.settle();
        view.detail()->selectFile(u"src/webhook/cancel_handler.cpp"_s);
        stage.settle();
        QCOMPARE(view.detail()->title(), u"취소 웹훅을 두 번 받아도 한 번만 기록"_s);
        QTRY_VERIFY(view.detail()->body().startsWith(u"사건 번호"_s));
        QCOMPARE(view.detail()->added(), u"+5"_s);
        QCOMPARE(view.detail()->diff()->hunkCount(), 1);
        QVERIFY(view.detail()->patch().startsWith(u"diff --git a/src/webhook"_s));
        for (const QString &theme : {u"dark"_s, u"light"_s}) {
            Theme::shared().setMode(theme);
            stage.picture(u"version-"_s + theme);
        }
        view.setAllBranches(false);
        QVERIFY(view.commits()->count() < 16);
        QVERIFY(stage.warnings().isEmpty());
    }

    void goesByKeys()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        VersionView &view = stage.view();
        stage.press(Qt::Key_Down);
        stage.press(Qt::Key_Down);
        QCOMPARE(view.selected(), view.commits()->hashAt(2));
        stage.press(Qt::Key_End);
        QCOMPARE(view.selected(), view.commits()->hashAt(view.commits()->count() - 1));
        stage.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), view.selected());
        const auto copyByMenu = [&stage](int key, Qt::KeyboardModifiers modifiers, const QString &row) {
            stage.press(key, modifiers);
            stage.click(row);
            QTRY_VERIFY(!stage.withText(row)); // it fades
        };
        stage.press(Qt::Key_Up);
        copyByMenu(Qt::Key_Menu, Qt::NoModifier, u"제목 복사"_s);
        QTRY_COMPARE(QGuiApplication::clipboard()->text(), view.detail()->title());
        stage.press(Qt::Key_Home);
        stage.press(Qt::Key_Down);
        stage.settle();
        stage.press(Qt::Key_Return); // to its files
        const QString first = view.detail()->path();
        stage.press(Qt::Key_Down);
        QVERIFY(view.detail()->path() != first);
        for (int time = 0; time < 3; ++time) {
            copyByMenu(Qt::Key_F10, Qt::ShiftModifier, u"이름 복사"_s);
            QCOMPARE(QGuiApplication::clipboard()->text(), view.detail()->path().section(u'/', -1));
        }
        stage.press(Qt::Key_Escape); // back to the commits

        stage.press(Qt::Key_F, Qt::ControlModifier);
        for (const char letter : std::string("6.4"))
            QTest::keyClick(stage.window(), letter);
        QCOMPARE(view.commits()->matchCount(), 1); // a tag
        QCOMPARE(view.commits()->rowOf(view.selected()), view.commits()->matchFrom(0, 1));
        stage.picture(u"version-find"_s);
        stage.press(Qt::Key_Escape);
        QVERIFY(view.commits()->query().isEmpty());

        stage.press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(stage.shell().preferences().textSize(), 110);
        stage.press(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!stage.window()->isVisible());
        QVERIFY(stage.warnings().isEmpty());
    }

    void readingAgainMovesNothing()
    {
        BranchyRepository repository;
        for (int i = 0; i < 60; ++i)
            repository.commitLater(u"커밋 %1"_s.arg(i), 5);
        VersionStage stage(repository.path());
        VersionView &view = stage.view();
        QCOMPARE(view.selected(), view.commits()->hashAt(1)); // nothing is uncommitted
        view.select(view.commits()->hashAt(50));
        const QString chosen = view.selected();
        QSignalSpy selections(&view, &VersionView::selectionChanged);
        QSignalSpy diffs(view.detail(), &CommitDetail::fileChanged);
        repository.write(u"new.txt"_s, "새 줄\n");
        repository.commitLater(u"하나 더"_s);
        view.reload();
        view.reload(); // while the first one runs
        stage.settle();
        QCOMPARE(view.commits()->count(), 62);
        QCOMPARE(view.selected(), chosen);
        QCOMPARE(view.commits()->rowOf(chosen), 51);
        QVERIFY(selections.isEmpty() && diffs.isEmpty());

        QSignalSpy changed(view.commits(), &QAbstractItemModel::dataChanged);
        view.reload();
        stage.settle();
        QVERIFY(changed.isEmpty());
    }

    void showsMoreOnDemand()
    {
        BranchyRepository repository;
        repository.commitMany(520);
        VersionStage stage(repository.path());
        QCOMPARE(stage.view().commits()->count(), 501);
        stage.press(Qt::Key_End);
        const QString last = stage.view().selected();
        stage.click(u"더 보기"_s);
        stage.settle();
        QCOMPARE(stage.view().commits()->count(), 521);
        QCOMPARE(stage.view().selected(), last);
        QVERIFY(!stage.withText(u"더 보기"_s));
        stage.press(Qt::Key_Up); // the keys are the list's again
        QCOMPARE(stage.view().commits()->rowOf(stage.view().selected()),
                 stage.view().commits()->rowOf(last) - 1);
        QVERIFY(stage.warnings().isEmpty());
    }

    void readingAgainMovesNothingOfACutHistory()
    {
        BranchyRepository repository;
        repository.commitMany(520);
        VersionStage stage(repository.path());
        VersionView &view = stage.view();
        for (int i = 0; i < 40; ++i)
            stage.press(Qt::Key_Down);
        const QString chosen = view.selected();
        const auto place = [&] {
            stage.window()->grabWindow(); // laid out
            return stage.withText(view.detail()->title())->mapToScene({}).y();
        };
        const qreal before = place();
        repository.commitLater(u"하나 더"_s, 1'000'000);
        stage.press(Qt::Key_F5);
        stage.settle();
        QCOMPARE(view.commits()->count(), 501); // what came at the top has pushed one out
        QCOMPARE(view.selected(), chosen);
        QCOMPARE(place(), before);
        stage.press(Qt::Key_F, Qt::ControlModifier); // what comes above it moves nothing either
        QCOMPARE(place(), before);
        stage.press(Qt::Key_Escape);
        QCOMPARE(place(), before);

        // HEAD is older than all that the window holds
        repository.git({u"checkout"_s, u"-q"_s, u"--detach"_s, u"HEAD~515"_s});
        stage.press(Qt::Key_F5);
        stage.settle();
        QVERIFY(!view.headBanner().isEmpty());
        QVERIFY(stage.withText(view.headBanner())->isVisible());
        stage.click(u"이 브랜치 보기"_s);
        QVERIFY(view.headBanner().isEmpty());
        QVERIFY(stage.withText(u"HEAD"_s));
    }

    void onlyTheLastChoiceIsShown()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        VersionView &view = stage.view();
        QStringList shown;
        connect(view.detail(), &CommitDetail::filesChanged, &view, [&] {
            if (!view.detail()->filesLoading())
                shown.append(view.selected());
        });
        for (int row = 1; row < 8; ++row)
            view.select(view.commits()->hashAt(row));
        const QString last = view.selected();
        stage.settle();
        QCOMPARE(shown, QStringList {last});
    }

    void statesWithoutARepository()
    {
        const QTemporaryDir plain;
        VersionStage stage(plain.path());
        QCOMPARE(stage.view().state(), VersionView::State::NoRepository);
        QVERIFY(stage.withText(u"이 폴더는 git 저장소가 아닙니다"_s));
        QVERIFY(!stage.withText(u"커밋 부탁하기"_s)->property("reason").toString().isEmpty());
        stage.picture(u"version-none"_s);
        QVERIFY(QDir(plain.path()).removeRecursively());
        stage.press(Qt::Key_F5);
        stage.settle();
        QTRY_COMPARE(stage.view().state(), VersionView::State::FolderGone);
        QVERIFY(QDir().mkpath(plain.path()));
        stage.press(Qt::Key_F5);
        stage.settle();
        QTRY_COMPARE(stage.view().state(), VersionView::State::NoRepository);

        const Repository empty;
        VersionStage fresh(empty.path());
        QCOMPARE(fresh.view().state(), VersionView::State::Ready);
        QCOMPARE(fresh.view().commits()->count(), 1);
        QVERIFY(fresh.warnings().isEmpty());
    }

    void whatCannotBeReadIsSaid()
    {
        BranchyRepository repository;
        const QString hash = repository.commitLater(u"하나"_s);
        VersionStage stage(repository.path());
        QVERIFY(stage.view().faultBanner().isEmpty());
        repository.git({u"update-ref"_s, u"-d"_s, u"refs/heads/main"_s});
        repository.write(u".git/refs/heads/main"_s, QByteArray(40, '1') + '\n');
        repository.write(u".git/index"_s, "rubbish");
        stage.press(Qt::Key_F5);
        stage.settle();
        QCOMPARE(stage.view().state(), VersionView::State::Ready);
        QVERIFY(stage.withText(u"커밋과 변경을 읽지 못했습니다"_s));
        QVERIFY(!stage.withText(u"커밋 안 한 변경이 없습니다"_s));
        stage.picture(u"version-fault"_s);
        stage.click(u"복사"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), stage.view().faultText());

        repository.write(u".git/refs/heads/main"_s, hash.toUtf8() + '\n');
        QVERIFY(QFile::remove(repository.path(u".git/index"_s)));
        stage.press(Qt::Key_F5);
        stage.settle();
        QVERIFY(stage.view().faultBanner().isEmpty());
        QVERIFY(stage.warnings().isEmpty());
    }

    void fitsTheLeastWindow_data()
    {
        QTest::addColumn<int>("textSize");
        QTest::newRow("small") << 80;
        QTest::newRow("large") << 160;
    }
    void fitsTheLeastWindow()
    {
        QFETCH(int, textSize);
        BranchyRepository repository;
        repository.fill();
        for (int i = 0; i < 6; ++i)
            repository.git({u"tag"_s, u"a-rather-long-name-of-a-tag-%1"_s.arg(i)});
        VersionStage stage(repository.path());
        Theme::shared().setScale(textSize / 100.0);
        stage.window()->resize(900, 600);
        QTRY_COMPARE(stage.window()->contentItem()->width(), 900);
        const QImage laidOut = stage.window()->grabWindow();
        QVERIFY(!laidOut.isNull());
        stage.picture(u"version-least-%1"_s.arg(textSize));
        for (const QString &text : {u"지금"_s, u"+4"_s, u"+6"_s, u"부탁하기…"_s, u"다른 부탁…"_s}) {
            const QQuickItem *item = stage.withText(text);
            QVERIFY2(!item || item->mapToScene({item->width(), 0}).x() <= 900, qPrintable(text));
        }
        QVERIFY(stage.withText(u"지금"_s)); // the last column has not gone
        QVERIFY(stage.withText(textSize > 100 ? u"부탁하기…"_s : u"커밋 부탁하기"_s));
    }

    void aPullFetches()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        QSignalSpy ended(stage.view().fetch(), &VersionFetch::ended);
        const auto top = [&] { return stage.withText(u"지금"_s)->mapToScene({-300, 10}).toPoint(); };
        const auto drag = [&](int length) {
            const QPoint start = top();
            QTest::mousePress(stage.window(), Qt::LeftButton, {}, start);
            for (int y = 0; y <= length; y += 8)
                QTest::mouseMove(stage.window(), start + QPoint(0, y));
            QTest::mouseRelease(stage.window(), Qt::LeftButton, {}, start + QPoint(0, length));
            QTest::qWait(0);
        };
        const QPoint rest = top();
        drag(30); // too short
        QVERIFY(!stage.view().fetch()->running() && ended.isEmpty());
        QTRY_COMPARE(top(), rest);
        drag(160);
        QTRY_COMPARE(ended.size(), 1);
        stage.settle();

        for (const auto type : {QInputDevice::DeviceType::Mouse, QInputDevice::DeviceType::TouchPad}) {
            const QPointingDevice device(u"wheel"_s, 1, type, QPointingDevice::PointerType::Generic,
                                         QInputDevice::Capability::Scroll, 1, 3);
            const bool isPad = type == QInputDevice::DeviceType::TouchPad;
            const qsizetype before = ended.size();
            const QPoint start = top();
            for (int i = 0; i < 6; ++i) {
                QWheelEvent turn(start, stage.window()->mapToGlobal(start), isPad ? QPoint(0, 12) : QPoint(),
                                 isPad ? QPoint(0, 96) : QPoint(0, 120), {}, {},
                                 isPad ? Qt::ScrollUpdate : Qt::NoScrollPhase, false,
                                 Qt::MouseEventNotSynthesized, &device);
                QCoreApplication::sendEvent(stage.window(), &turn);
            }
            QTRY_COMPARE(ended.size(), before + 1);
            stage.settle();
            // At rest again, the wheel and the list that was dragged.
            QTRY_VERIFY(!stage.withText(u"당겨서 원격 확인"_s)
                        && !stage.withText(u"놓으면 원격을 확인합니다"_s));
        }
    }

    void patchesApply()
    {
        BranchyRepository repository;
        const QList<QByteArray> names {"plain.txt", "두 낱말.txt", "quote\"\\back", "line\nend", "caf\xe9"};
        for (const QByteArray &name : names)
            repository.write(name, "하나\n");
        repository.commitLater(u"처음"_s);
        for (const QByteArray &name : names)
            repository.write(name, "하나\n둘\n");
        VersionStage stage(repository.path());
        QByteArray patches;
        for (int row = 0; row < names.size(); ++row) {
            stage.view().selectChange(stage.view().changes()->pathAt(row));
            stage.settle();
            patches += stage.view().detail()->patch().toUtf8();
        }
        repository.git({u"checkout"_s, u"-q"_s, u"."_s});
        QFile file(repository.folder() + u"/all.patch"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(patches);
        file.close();
        repository.git({u"apply"_s, file.fileName()});
        stage.view().reload();
        stage.settle();
        QCOMPARE(stage.view().changes()->count(), 5);
    }

    void aDetachedHeadIsNamed()
    {
        BranchyRepository repository;
        repository.commitLater(u"하나"_s);
        repository.git({u"checkout"_s, u"-q"_s, u"--detach"_s});
        const QString hash = repository.commitLater(u"떨어진 커밋"_s);
        VersionStage stage(repository.path());
        QCOMPARE(stage.view().branch(), hash.left(8) + u" (브랜치 아님)"_s);
        QVERIFY(stage.withText(u"HEAD"_s));
        QVERIFY(!stage.view().requestReason(VersionRequests::Push).isEmpty());
    }

    void asksASession()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        ProjectChat &busy = stage.shell().addSession(u"billing"_s, u"환불"_s);
        ShellStage::run(busy, u"일해"_s);
        VersionRequests &requests = *stage.view().requests();
        QVERIFY(!requests.reasonOf(busy.id().toString(QUuid::WithoutBraces)).isEmpty());
        QVERIFY(!requests.send(u"푸시"_s, busy.id().toString(QUuid::WithoutBraces)));

        stage.click(u"푸시 부탁하기"_s);
        stage.picture(u"version-request"_s);
        stage.press(Qt::Key_Return, Qt::ControlModifier); // to a new session: the open one runs
        QTRY_COMPARE(stage.shell().runtime().agentStore().sessions().size(), 2);
        const auto *asked = stage.shell().runtime().agentStore().sessions().last();
        QVERIFY(asked->messages().rows().first().text.contains(u"fix/cancel-twice 브랜치의 커밋 2개"_s));
        QTRY_VERIFY(!stage.withText(u"보내기"_s)); // the sheet is gone
        stage.click(u"세션으로 가기"_s);
        QCOMPARE(stage.shownSession(), asked->id().toString(QUuid::WithoutBraces));
        stage.shell().addProject(u"storefront"_s, 4);
        stage.click(u"billing"_s);
        QTRY_VERIFY(stage.withText(u"storefront"_s));
        stage.click(u"storefront"_s);
        QCOMPARE(stage.shownProject(), u"storefront"_s);
        QVERIFY(stage.warnings().isEmpty());
    }

    void fetches()
    {
        BranchyRepository repository;
        repository.fill();
        VersionStage stage(repository.path());
        stage.click(u"원격 확인(fetch)"_s);
        QVERIFY(stage.view().fetch()->running());
        QTRY_COMPARE(stage.view().fetch()->notice(), u"fetch 완료 — 새로 받은 것이 없습니다"_s);
        QVERIFY(stage.withText(stage.view().fetch()->notice()));
        repository.git({u"config"_s, u"core.sshCommand"_s, u"false"_s});
        stage.press(Qt::Key_F5, Qt::ShiftModifier);
        QTRY_VERIFY(stage.view().fetch()->isProblem());
        QVERIFY(stage.view().fetch()->notice().contains(u"core.sshcommand"_s));
        stage.picture(u"version-fetch"_s);
        stage.settle();
    }
};

VESK_TEST(VersionWindowTest)
#include "VersionWindowTest.moc"
