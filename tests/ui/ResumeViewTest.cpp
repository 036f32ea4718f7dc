// The panel of past conversations without a window: what it lists, filters, says and refuses.
#include "ui/shell/ResumeView.h"

#include "sessions/ProjectChat.h"
#include "support/PastConversations.h"
#include "support/TestRegistry.h"
#include "ui/ShellStage.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QSignalSpy>
#include <QtTest>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::PastConversations;
using Test::ShellStage;

namespace
{

struct ResumeStage {
    ResumeStage()
    {
        shell.runtime().start();
        shell.addProject(u"one"_s, 0);
        shell.addProject(u"two"_s, 1);
    }
    [[nodiscard]] static PastConversations of(const QString &alias)
    {
        return PastConversations(QDir::homePath(), QDir::homePath() + u"/src/"_s + alias);
    }
    [[nodiscard]] QStringList titles()
    {
        QStringList titles;
        for (int row = 0; row < view.rows()->count(); ++row)
            titles.append(view.rows()->index(row).data().toString());
        return titles;
    }
    [[nodiscard]] QVariant first(int role) { return view.rows()->index(0).data(role); }
    void read(const QString &alias)
    {
        view.show(alias);
        QTRY_VERIFY(!view.loading());
    }

    ShellStage shell;
    QDateTime now = QDateTime::currentDateTime();
    ResumeView view {shell.runtime(), [this] { return now; }};
    QAbstractItemModelTester tester {view.rows(), QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class ResumeViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QDir(QDir::homePath() + u"/.claude"_s).removeRecursively(); }

    void listsAProjectAndFilters()
    {
        const PastConversations one = ResumeStage::of(u"one"_s);
        const PastConversations two = ResumeStage::of(u"two"_s);
        one.write(u"a"_s, {PastConversations::titled(u"결제  웹훅\n고치기"_s)}, 7300);
        one.write(u"b"_s, {PastConversations::titled(u"Refund rounding"_s)}, 60);
        two.write(u"c"_s, {PastConversations::titled(u"배포"_s)});
        ResumeStage stage;
        stage.read(u"one"_s);
        QCOMPARE(stage.titles(), (QStringList {u"Refund rounding"_s, u"결제 웹훅 고치기"_s}));
        QCOMPARE(stage.view.countText(), u"대화 2개"_s);
        stage.view.setFilter(u" 고치 웹훅 "_s);
        QCOMPARE(stage.titles(), QStringList {u"결제 웹훅 고치기"_s});
        QVERIFY(stage.first(ResumeRowsModel::DetailRole).toString().startsWith(u"2시간 · "_s));
        QCOMPARE(stage.view.countText(), u"대화 2개 중 1개"_s);
        stage.view.setFilter(u"nothing"_s);
        QCOMPARE(stage.view.emptyText(), u"제목에 이 말이 든 대화가 없습니다"_s);
        stage.view.setFilter({});

        stage.view.setAlias(u"two"_s);
        QVERIFY(stage.titles().isEmpty());
        QTRY_COMPARE(stage.titles(), QStringList {u"배포"_s});
        stage.shell.runtime().removeProject(u"two"_s);
        QCOMPARE(stage.view.alias(), u"one"_s);
        QTRY_COMPARE(stage.titles().size(), 2);
    }

    void whatChangedBetweenTwoReadings()
    {
        const PastConversations one = ResumeStage::of(u"one"_s);
        for (int i = 0; i < 1000; ++i)
            one.write(u"c%1"_s.arg(i), {PastConversations::said(u"말 %1"_s.arg(i))}, 100 + i);
        ResumeStage stage;
        stage.read(u"one"_s);
        QCOMPARE(stage.view.rows()->count(), 1000);
        QVERIFY(QFile::remove(one.path(u"c3"_s)));
        one.write(u"c500"_s, {PastConversations::said(u"말 500"_s), PastConversations::titled(u"새 제목"_s)});
        stage.view.refresh();
        QCOMPARE(stage.view.rows()->count(), 1000); // the old list stays while it is read anew
        QTRY_COMPARE(stage.view.rows()->count(), 999);
        QCOMPARE(stage.titles().first(), u"새 제목"_s);
    }

    void emptyAndUnreadable()
    {
        ResumeStage stage;
        stage.read(u"one"_s);
        QCOMPARE(stage.view.emptyText(), u"이 프로젝트의 지난 대화가 없습니다"_s);
        stage.shell.runtime().removeProject(u"one"_s);
        stage.shell.runtime().removeProject(u"two"_s);
        QCOMPARE(stage.view.emptyText(), u"프로젝트 폴더를 추가하면 그 폴더의 지난 대화가 여기에 보입니다"_s);
        if (::geteuid() == 0)
            QSKIP("permissions do not hold for root");
        stage.shell.addProject(u"one"_s, 0);
        const PastConversations one = ResumeStage::of(u"one"_s);
        QVERIFY(QFile::setPermissions(one.folder(), QFile::WriteOwner));
        stage.view.refresh();
        QTRY_VERIFY(stage.view.errorText().contains(one.folder()));
        QVERIFY(QFile::setPermissions(one.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void resumingAndThrowingAway()
    {
        const PastConversations one = ResumeStage::of(u"one"_s);
        one.write(u"a"_s, {PastConversations::titled(u"제목"_s)});
        ResumeStage stage;
        stage.read(u"one"_s);
        const QString key = stage.view.rows()->keyAt(0);
        QSignalSpy resumed(&stage.view, &ResumeView::resumed);
        QSignalSpy asked(&stage.view, &ResumeView::deleteConfirmationNeeded);
        stage.view.resume(key);
        QTRY_COMPARE(resumed.size(), 1);
        ProjectChat *chat = stage.shell.runtime().agentStore().sessions().first();
        QCOMPARE(resumed.first().first().toString(), chat->id().toString(QUuid::WithoutBraces));
        QCOMPARE(stage.first(ResumeRowsModel::OpenRole), true);

        stage.view.requestDelete(key);
        QVERIFY(asked.isEmpty() && stage.view.notice().startsWith(u"열려 있는 대화"_s));
        QVERIFY(QFile::exists(key) && stage.view.trashedTitle().isEmpty());
        stage.shell.runtime().closeSession(chat);
        QTRY_COMPARE(stage.first(ResumeRowsModel::OpenRole), false);
        stage.view.requestDelete(key);
        QCOMPARE(asked.size(), 1);
        QVERIFY(stage.view.notice().isEmpty() && QFile::exists(key));
        for (int time = 0; time < 2; ++time) {
            stage.view.moveToTrash(key);
            QVERIFY(stage.view.notice().isEmpty() && !QFile::exists(key));
            QCOMPARE(stage.view.rows()->count(), 0);
            QCOMPARE(stage.view.trashedTitle(), u"제목"_s);
            if (time == 0) {
                stage.view.dismissTrashed();
                stage.view.undoTrash(); // by its key, without the toast
                QTRY_COMPARE(stage.titles(), QStringList {u"제목"_s});
                QVERIFY(stage.view.trashedTitle().isEmpty());
            }
        }
        one.write(u"a"_s, {PastConversations::titled(u"딴 것"_s)});
        stage.view.undoTrash();
        QVERIFY(stage.view.undoRefusal().startsWith(u"같은 이름의 파일이"_s));
        QCOMPARE(stage.view.trashedTitle(), u"제목"_s);
        QVERIFY(QFile::remove(key));

        one.write(u"b"_s, {PastConversations::titled(u"둘째"_s)});
        stage.read(u"one"_s);
        QVERIFY(QFile::remove(one.path(u"b"_s)));
        stage.view.moveToTrash(stage.view.rows()->keyAt(0));
        QVERIFY(stage.view.notice().startsWith(u"휴지통으로 옮기지 못했습니다"_s));
    }
};

VESK_TEST(ResumeViewTest)
#include "ResumeViewTest.moc"
