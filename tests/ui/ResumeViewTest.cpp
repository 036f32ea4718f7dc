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

struct Panel {
    Panel()
    {
        stage.runtime().start();
        stage.addProject(u"one"_s, 0);
        stage.addProject(u"two"_s, 1);
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

    ShellStage stage;
    QDateTime now = QDateTime::currentDateTime();
    ResumeView view {stage.runtime(), [this] { return now; }};
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
        const PastConversations one = Panel::of(u"one"_s);
        const PastConversations two = Panel::of(u"two"_s);
        one.write(u"a"_s, {PastConversations::titled(u"결제  웹훅\n고치기"_s)}, 7300);
        one.write(u"b"_s, {PastConversations::titled(u"Refund rounding"_s)}, 60);
        two.write(u"c"_s, {PastConversations::titled(u"배포"_s)});
        Panel panel;
        panel.read(u"one"_s);
        QCOMPARE(panel.titles(), (QStringList {u"Refund rounding"_s, u"결제 웹훅 고치기"_s}));
        QCOMPARE(panel.view.countText(), u"대화 2개"_s);
        panel.view.setFilter(u" 고치 웹훅 "_s);
        QCOMPARE(panel.titles(), QStringList {u"결제 웹훅 고치기"_s});
        QVERIFY(panel.first(ResumeRowsModel::DetailRole).toString().startsWith(u"2시간 · "_s));
        QCOMPARE(panel.view.countText(), u"대화 2개 중 1개"_s);
        panel.view.setFilter(u"nothing"_s);
        QCOMPARE(panel.view.emptyText(), u"제목에 이 말이 든 대화가 없습니다"_s);
        panel.view.setFilter({});

        panel.view.setAlias(u"two"_s);
        QVERIFY(panel.titles().isEmpty());
        QTRY_COMPARE(panel.titles(), QStringList {u"배포"_s});
        panel.stage.runtime().removeProject(u"two"_s);
        QCOMPARE(panel.view.alias(), u"one"_s);
        QTRY_COMPARE(panel.titles().size(), 2);
    }

    void whatChangedBetweenTwoReadings()
    {
        const PastConversations one = Panel::of(u"one"_s);
        for (int i = 0; i < 1000; ++i)
            one.write(u"c%1"_s.arg(i), {PastConversations::said(u"말 %1"_s.arg(i))}, 100 + i);
        Panel panel;
        panel.read(u"one"_s);
        QCOMPARE(panel.view.rows()->count(), 1000);
        QVERIFY(QFile::remove(one.path(u"c3"_s)));
        one.write(u"c500"_s, {PastConversations::said(u"말 500"_s), PastConversations::titled(u"새 제목"_s)});
        panel.view.refresh();
        QCOMPARE(panel.view.rows()->count(), 1000); // the old list stays while it is read anew
        QTRY_COMPARE(panel.view.rows()->count(), 999);
        QCOMPARE(panel.titles().first(), u"새 제목"_s);
    }

    void emptyAndUnreadable()
    {
        Panel panel;
        panel.read(u"one"_s);
        QCOMPARE(panel.view.emptyText(), u"이 프로젝트의 지난 대화가 없습니다"_s);
        panel.stage.runtime().removeProject(u"one"_s);
        panel.stage.runtime().removeProject(u"two"_s);
        QCOMPARE(panel.view.emptyText(), u"프로젝트 폴더를 추가하면 그 폴더의 지난 대화가 여기에 보입니다"_s);
        if (::geteuid() == 0)
            QSKIP("permissions do not hold for root");
        panel.stage.addProject(u"one"_s, 0);
        const PastConversations one = Panel::of(u"one"_s);
        QVERIFY(QFile::setPermissions(one.folder(), QFile::WriteOwner));
        panel.view.refresh();
        QTRY_VERIFY(panel.view.errorText().contains(one.folder()));
        QVERIFY(QFile::setPermissions(one.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    void resumingAndThrowingAway()
    {
        const PastConversations one = Panel::of(u"one"_s);
        one.write(u"a"_s, {PastConversations::titled(u"제목"_s)});
        Panel panel;
        panel.read(u"one"_s);
        const QString key = panel.view.rows()->keyAt(0);
        QSignalSpy resumed(&panel.view, &ResumeView::resumed);
        QSignalSpy asked(&panel.view, &ResumeView::deleteConfirmationNeeded);
        panel.view.resume(key);
        QTRY_COMPARE(resumed.size(), 1);
        ProjectChat *chat = panel.stage.runtime().agentStore().sessions().first();
        QCOMPARE(resumed.first().first().toString(), chat->id().toString(QUuid::WithoutBraces));
        QCOMPARE(panel.first(ResumeRowsModel::OpenRole), true);

        panel.view.requestDelete(key);
        QVERIFY(asked.isEmpty() && panel.view.notice().startsWith(u"열려 있는 대화"_s));
        panel.stage.runtime().closeSession(chat);
        QTRY_COMPARE(panel.first(ResumeRowsModel::OpenRole), false);
        panel.view.requestDelete(key);
        QCOMPARE(asked.size(), 1);
        QVERIFY(panel.view.notice().isEmpty() && QFile::exists(key));
        panel.view.moveToTrash(key);
        QVERIFY(!QFile::exists(key));
        QCOMPARE(panel.view.rows()->count(), 0);

        one.write(u"b"_s, {PastConversations::titled(u"둘째"_s)});
        panel.read(u"one"_s);
        QVERIFY(QFile::remove(one.path(u"b"_s)));
        panel.view.moveToTrash(panel.view.rows()->keyAt(0));
        QVERIFY(panel.view.notice().startsWith(u"휴지통으로 옮기지 못했습니다"_s));
    }
};

VESK_TEST(ResumeViewTest)
#include "ResumeViewTest.moc"
