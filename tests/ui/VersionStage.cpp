#include "ui/VersionStage.h"

#include "ui/controls/InstallUi.h"
#include "ui/version/VersionWindow.h"

#include <QDateTime>
#include <QDir>
#include <QtTest>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

namespace
{

const QDateTime firstCommit(QDate(2026, 11, 18), QTime(9, 4));

QByteArray handler(const QByteArray &body)
{
    return "HttpReply handleCancel(const Webhook& hook)\n{\n    const auto order = orders.find(hook.orderId);\n"
           "    if (!order) return HttpReply::ok();\n"
        + body + "    return HttpReply::ok();\n}\n";
}

} // namespace

BranchyRepository::BranchyRepository()
{
    git({u"config"_s, u"alias.at"_s,
         u"!f() { d=\"$1\"; shift; GIT_AUTHOR_DATE=\"$d\" GIT_COMMITTER_DATE=\"$d\" git \"$@\"; }; f"_s});
}

void BranchyRepository::runAt(const QStringList &arguments, bool mayFail)
{
    const QString date = firstCommit.addSecs(60LL * m_minutes).toString(Qt::ISODate);
    const QStringList all = QStringList {u"at"_s, date} + arguments;
    if (mayFail)
        tryGit(all);
    else
        git(all);
}

QString BranchyRepository::commitLater(const QString &subject, int minutes)
{
    m_minutes += minutes;
    git({u"add"_s, u"-A"_s});
    runAt({u"commit"_s, u"-q"_s, u"--allow-empty"_s, u"-m"_s, subject});
    return git({u"rev-parse"_s, u"HEAD"_s});
}

void BranchyRepository::commitMany(int count)
{
    git({u"config"_s, u"alias.many"_s,
         u"!seq %1 | awk '{ print \"commit refs/heads/main\\ncommitter a <a@b> \" 1760000000 + $1 "
         "\" +0000\\ndata \" length($1) + 1 \"\\nx\" $1 \"\\n\" }' | git fast-import --quiet"_s.arg(count)});
    git({u"many"_s});
}

void BranchyRepository::mergeLater(const QString &branch, const QString &subject)
{
    m_minutes += 60;
    runAt({u"merge"_s, u"-q"_s, u"--no-ff"_s, u"-m"_s, subject, branch});
}

void BranchyRepository::fill()
{
    write(u"src/webhook/cancel_handler.cpp"_s,
          handler("    if (events.seen(hook.eventId)) return HttpReply::ok();\n"
                  "    refunds.record(tx, *order, hook.amount);\n    events.markSeen(hook.eventId);\n"));
    write(u"src/refund/policy.cpp"_s, "int days = 7;\n");
    commitLater(u"웹훅 서명 확인을 앞으로 옮김"_s);
    commitLater(u"결제 사건 표에 고유 번호를 둠"_s, 200);
    git({u"checkout"_s, u"-q"_s, u"-b"_s, u"feature/tax-table"_s});
    write(u"src/tax/table.cpp"_s, "// 세율\n");
    commitLater(u"세율 표 초안"_s, 300);
    write(u"src/tax/table.cpp"_s, "// 세율\nreadTable(path);\n");
    commitLater(u"세율 표를 파일에서 읽음"_s);
    git({u"checkout"_s, u"-q"_s, u"main"_s});
    write(u"src/log/retention.cpp"_s, "keep(30);\n");
    commitLater(u"보존 기간을 설정으로 뺌"_s);
    mergeLater(u"feature/tax-table"_s, u"병합: 6월 세율 표"_s);
    git({u"tag"_s, u"v6.4"_s});
    git({u"checkout"_s, u"-q"_s, u"-b"_s, u"ops/log-retention"_s});
    write(u"src/log/retention.cpp"_s, "keep(14);\n");
    commitLater(u"오래된 로그를 밤마다 지움"_s);
    git({u"checkout"_s, u"-q"_s, u"main"_s});
    write(u"src/refund/reason.cpp"_s, "// 사유\n");
    commitLater(u"환불 창구에 사유 칸 추가"_s);
    mergeLater(u"ops/log-retention"_s, u"병합: 로그 보존 기간 줄이기"_s);
    git({u"init"_s, u"-q"_s, u"--bare"_s, folder() + u"/remote"_s});
    git({u"remote"_s, u"add"_s, u"origin"_s, folder() + u"/remote"_s});
    git({u"checkout"_s, u"-q"_s, u"-b"_s, u"fix/cancel-twice"_s});
    write(u"tests/cancel_twice_test.cpp"_s, "// 두 번 오는 취소\n");
    commitLater(u"두 번 오는 취소를 흉내 내는 테스트"_s);
    git({u"push"_s, u"-q"_s, u"-u"_s, u"origin"_s, u"fix/cancel-twice"_s});
    git({u"checkout"_s, u"-q"_s, u"main"_s});
    commitLater(u"정산 배치를 은행별로 나눔"_s);
    git({u"push"_s, u"-q"_s, u"origin"_s, u"main"_s});
    git({u"checkout"_s, u"-q"_s, u"-b"_s, u"docs/receipt"_s});
    write(u"src/refund/policy.cpp"_s, "int days = 14;\n");
    commitLater(u"영수증 메일 문구 다듬기"_s);
    git({u"checkout"_s, u"-q"_s, u"fix/cancel-twice"_s});
    write(u"src/db/event_store.cpp"_s, "bool insertOnce(Transaction& tx, EventId id);\n");
    commitLater(u"이벤트 번호를 같은 트랜잭션에 저장"_s);
    write(u"src/webhook/cancel_handler.cpp"_s,
          handler("    // 먼저 넣는다: 같은 번호가 이미 있으면 다른 웹훅이 처리하는 중이다.\n"
                  "    Transaction tx(db);\n"
                  "    if (!events.insertOnce(tx, hook.eventId)) return HttpReply::ok();\n"
                  "    refunds.record(tx, *order, hook.amount);\n    tx.commit();\n"));
    write(u"src/refund/policy.cpp"_s, "int days = 10;\n");
    m_minutes += 30;
    git({u"add"_s, u"-A"_s});
    runAt({u"commit"_s, u"-q"_s, u"-m"_s, u"취소 웹훅을 두 번 받아도 한 번만 기록"_s, u"-m"_s,
           u"사건 번호를 환불 기록과 같은 트랜잭션에 넣는다. 먼저 넣은 쪽만 기록한다."_s});
    runAt({u"merge"_s, u"docs/receipt"_s}, true); // both changed the same line
    write(u"src/db/event_store.cpp"_s, "bool insertOnce(Transaction& tx, EventId id);\n// 나중에\n");
    write(u"docs/refund_rules.md"_s, "# 환불 규칙\n");
    git({u"add"_s, u"docs/refund_rules.md"_s});
    write(u"bench/cancel.cpp"_s, "// 재기\n");
    write(u"logo.bin"_s, QByteArray(400, '\0'));
}

VersionStage::VersionStage(const QString &folder)
{
    QObject::connect(&m_engine, &QQmlEngine::warnings, [this](const QList<QQmlError> &errors) {
        for (const QQmlError &error : errors)
            m_warnings.append(error.toString());
    });
    installUi(m_engine);
    m_shell.runtime().start();
    m_shell.runtime().upsertCatalogEntry(
        {.alias = u"billing"_s, .path = folder, .extraEnv = {}, .colorHex = {}});
    m_window = createVersionWindow(m_engine, m_shell.runtime(), u"billing"_s,
                                   {.showSession = [this](const QString &key) { m_shownSession = key; },
                                    .showProject = [this](const QString &alias) { m_shownProject = alias; }});
    if (!m_window)
        qFatal("the version window could not be made");
    m_window->resize(1440, 900);
    m_window->show();
    m_window->requestActivate();
    [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(m_window.get());
    settle();
}

VersionStage::~VersionStage() = default;

void VersionStage::settle() const
{
    QTRY_VERIFY_WITH_TIMEOUT(view().state() != VersionView::State::Loading && !view().loading()
                                 && !view().detail()->filesLoading() && !view().detail()->diffLoading(),
                             60000);
}

QQuickItem *VersionStage::withText(const QString &text) const
{
    return findItem(m_window->contentItem(),
                    [&text](const QQuickItem &item) { return item.property("text").toString() == text; });
}

void VersionStage::press(int key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(m_window.get(), static_cast<Qt::Key>(key), modifiers);
    QCoreApplication::processEvents();
}

void VersionStage::click(const QString &text) const
{
    QTRY_VERIFY2_WITH_TIMEOUT(withText(text), qPrintable(u"nothing shows "_s + text), 60000);
    m_window->grabWindow(); // what has just come is laid out
    const QQuickItem *item = withText(text);
    const QPointF centre = item->mapToScene({item->width() / 2, item->height() / 2});
    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre.toPoint());
    QCoreApplication::processEvents();
}

void VersionStage::picture(const QString &name) const
{
    const QString shots = qEnvironmentVariable("VESK_SHOTS");
    if (!shots.isEmpty()) {
        QTest::qWait(300);
        QDir().mkpath(shots);
        m_window->grabWindow().save(shots + u'/' + name + u".png"_s);
    }
}

} // namespace Vesk::Test
