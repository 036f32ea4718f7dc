// The background panel: its rows, what of them is announced, and the panel itself in a window.
#include "support/TestRegistry.h"
#include "ui/chat/BackgroundModel.h"
#include "ui/chat/BackgroundWords.h"
#include "ui/chat/ChatWords.h"
#include "ui/ChatStage.h"
#include "ui/controls/InstallUi.h"
#include "ui/controls/Theme.h"

#include <QAbstractItemModelTester>
#include <QDesktopServices>
#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;

namespace
{

using Status = BackgroundTask::Status;
using RowKind = BackgroundRowKey::Kind;

const QDateTime begin = QDateTime::fromSecsSinceEpoch(1'700'000'000);

BackgroundTask task(const QString &id, int startedSecond, Status status = Status::Running)
{
    BackgroundTask made;
    made.id = id;
    made.type = u"agent"_s;
    made.description = id;
    made.startedAt = begin.addSecs(startedSecond);
    made.setStatus(status, begin.addSecs(startedSecond + 7));
    return made;
}

QJsonObject taskLine(const QString &subtype, const QString &id, const QJsonObject &more = {})
{
    QJsonObject line {{u"type"_s, u"system"_s}, {u"subtype"_s, subtype}, {u"task_id"_s, id}};
    for (auto entry = more.begin(); entry != more.end(); ++entry) {
        line.insert(entry.key(), entry.value());
    }
    return line;
}

QJsonObject agentEntry(int index, int phase, const QString &state, int tokens = 0)
{
    return {{u"type"_s, u"workflow_agent"_s},   {u"index"_s, index},  {u"label"_s, u"a%1"_s.arg(index)},
            {u"phaseIndex"_s, phase},           {u"state"_s, state},  {u"tokens"_s, tokens},
            {u"model"_s, u"claude-opus-4-5"_s}, {u"toolCalls"_s, 12}, {u"durationMs"_s, 61'000}};
}

QJsonObject phaseEntry(int index, const QString &title)
{
    return {{u"type"_s, u"workflow_phase"_s}, {u"index"_s, index}, {u"title"_s, title}};
}

QStringList titles(const QAbstractItemModel &model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row) {
        all << model.index(row, 0).data().toString();
    }
    return all;
}

/** The rows of a model as one who only hears of changes knows them. */
class Mirror
{
public:
    explicit Mirror(QAbstractItemModel &model)
    {
        const auto take = [this, &model](int first, int last) {
            for (int row = first; row <= last; ++row) {
                rows[row] = model.index(row, 0).data().toString();
            }
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context,
                         [this, take](const QModelIndex &, int first, int last) {
                             rows.insert(first, last - first + 1, QString());
                             take(first, last);
                         });
        QObject::connect(
            &model, &QAbstractItemModel::rowsRemoved, &m_context,
            [this](const QModelIndex &, int first, int last) { rows.remove(first, last - first + 1); });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved, &m_context,
                         [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
                             std::rotate(rows.begin() + to, rows.begin() + first, rows.begin() + last + 1);
                         });
        QObject::connect(
            &model, &QAbstractItemModel::dataChanged, &m_context,
            [take](const QModelIndex &first, const QModelIndex &last) { take(first.row(), last.row()); });
    }

    QStringList rows;

private:
    QObject m_context;
};

int count(QQuickItem *root, const char *type)
{
    int found =
        QString::fromLatin1(root->metaObject()->className()).startsWith(QLatin1StringView(type)) ? 1 : 0;
    for (QQuickItem *child : root->childItems()) {
        found += count(child, type);
    }
    return found;
}

/** What the desktop was asked to open. */
class OpenedFiles : public QObject
{
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl &url) { urls << url; }
};

} // namespace

class BackgroundPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void runningFirstThenTheLatest()
    {
        const QList<BackgroundTask> tasks {task(u"old"_s, 0), task(u"done"_s, 1, Status::Completed),
                                           task(u"failed"_s, 3, Status::Failed), task(u"new"_s, 2)};
        BackgroundKeys keys;
        const auto rows = backgroundRows(tasks, keys, {});
        QStringList names;
        for (const auto &row : rows) {
            names << row.title;
        }
        QCOMPARE(names, QStringList({u"new"_s, u"old"_s, u"failed"_s, u"done"_s}));
        QVERIFY(rows.at(0).since.isValid());
        QVERIFY(!rows.at(2).since.isValid());
        QCOMPARE(*rows.at(2).durationMs, 7000);

        // The same task under another id keeps its row.
        BackgroundTask renamed = task(u"t9"_s, 0);
        renamed.toolUseId = u"old"_s;
        QCOMPARE(backgroundRows({renamed}, keys, {}).first().key, rows.at(1).key);
    }

    void wordsOfATask_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("workflow");
        QTest::addColumn<QString>("endWord");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("detail");
        QTest::newRow("agent") << QString() << QString() << QString() << u"look"_s << u"하위 에이전트"_s
                               << u"실패"_s;
        QTest::newRow("command") << u"local_bash"_s << QString() << u"killed"_s << u"look"_s << u"명령"_s
                                 << u"강제 종료됨(killed)"_s;
        QTest::newRow("workflow") << u"local_workflow"_s << u"release"_s << u"stopped"_s << u"release"_s
                                  << u"워크플로"_s << u"중단됨(stopped) · look"_s;
        QTest::newRow("cut off") << QString() << QString() << QString() << u"look"_s << u"하위 에이전트"_s
                                 << u"세션과 함께 멈춤"_s;
        QTest::newRow("other") << u"monitor"_s << QString() << u"error"_s << u"look"_s << u"작업"_s
                               << u"실패"_s;
    }

    void wordsOfATask()
    {
        QFETCH(QString, type);
        QFETCH(QString, workflow);
        QFETCH(QString, endWord);
        BackgroundTask work = task(u"look"_s, 0, Status::Failed);
        if (!type.isEmpty()) {
            work.taskTypeRaw = type;
        }
        if (!workflow.isEmpty()) {
            work.workflowName = workflow;
        }
        if (!endWord.isEmpty()) {
            work.endWord = endWord;
        }
        work.endedWithChild = QByteArray(QTest::currentDataTag()) == "cut off";
        QTEST(BackgroundWords::title(work), "title");
        QTEST(BackgroundWords::kind(work), "kind");
        QTEST(BackgroundWords::detail(work), "detail");
    }

    void namesOfModels()
    {
        QCOMPARE(ChatWords::modelName(u"claude-opus-4-5-20251101"_s), u"Opus 4.5"_s);
        QCOMPARE(ChatWords::modelName(u"claude-sonnet-4-5[1m]"_s), u"Sonnet 4.5"_s);
        QCOMPARE(ChatWords::modelName(u"haiku"_s), u"Haiku"_s);
        QCOMPARE(ChatWords::modelName(u"gateway/My_Model"_s), u"gateway/My_Model"_s);
    }

    void aLogShowsItsEndAndCountsTheRest()
    {
        BackgroundTask work = task(u"w"_s, 0);
        for (int i = 0; i < 203; ++i) {
            work.appendActivity(QString::number(i));
        }
        BackgroundKeys keys;
        BackgroundFolding folding;
        const auto few = backgroundRows({work}, keys, folding);
        QCOMPARE(few.size(), 5);
        QCOMPARE(few.at(1).title, u"200"_s);
        QVERIFY(few.at(3).isLast);
        QCOMPARE(few.at(4).title, u"최근 3줄 · 전체 203줄"_s);
        folding.insert(few.at(4).key, true);
        const auto all = backgroundRows({work}, keys, folding);
        QCOMPARE(all.size(), 202);
        QCOMPARE(all.last().title, u"최근 200줄 · 전체 203줄 · 앞 3줄은 남아 있지 않음"_s);
        QCOMPARE(all.at(200).key, few.at(3).key);
    }

    void aWorkflowOpensWhereItRuns()
    {
        Test::ChatStage stage;
        BackgroundModel model;
        const QAbstractItemModelTester tester(&model);
        model.setChat(&stage.chat());
        model.setShown(true);
        stage.say(taskLine(
            u"task_started"_s, u"w"_s,
            {{u"workflow_name"_s, u"release"_s},
             {u"workflow_progress"_s,
              QJsonArray {phaseEntry(1, u"조사"_s), phaseEntry(2, u"검토"_s), phaseEntry(3, u"정리"_s),
                          agentEntry(1, 1, u"done"_s, 5000), agentEntry(2, 2, u"running"_s, 1000),
                          agentEntry(3, 2, u"failed"_s), agentEntry(4, 9, u"queued"_s)}}}));
        QTRY_COMPARE(
            titles(model),
            QStringList({u"release"_s, u"1 조사"_s, u"2 검토"_s, u"a2"_s, u"a3"_s, u"3 정리"_s, u"기타"_s}));
        QCOMPARE(model.index(2).data(BackgroundModel::TotalRole).toInt(), 2);
        QCOMPARE(model.index(2).data(BackgroundModel::FailedRole).toInt(), 1);
        QCOMPARE(model.index(0).data(BackgroundModel::DetailRole).toString(), u"토큰 6k · 도구 48회"_s);
        QCOMPARE(model.index(3).data(BackgroundModel::AccessibleTextRole).toString(),
                 u"a2, 실행 중, Opus 4.5, 토큰 1k, 도구 12회, 1분 1초"_s);
        QVERIFY(!model.index(5).data(BackgroundModel::CanOpenRole).toBool()); // a phase without agents

        // What a person did stays, and the parent is one step away.
        QCOMPARE(model.parentOf(3), 2);
        QCOMPARE(model.parentOf(2), 0);
        QCOMPARE(model.parentOf(0), -1);
        QVERIFY(model.setOpen(1, true));
        QVERIFY(!model.setOpen(1, true));
        QVERIFY(model.setOpen(3, false));
        stage.say(taskLine(u"task_progress"_s, u"w"_s,
                           {{u"workflow_progress"_s, QJsonArray {agentEntry(5, 2, u"running"_s)}}}));
        QTRY_COMPARE(model.index(3).data(BackgroundModel::TotalRole).toInt(), 3);
        QCOMPARE(titles(model),
                 QStringList({u"release"_s, u"1 조사"_s, u"a1"_s, u"2 검토"_s, u"3 정리"_s, u"기타"_s}));
        Test::ChatStage other;
        model.setChat(&other.chat());
        QVERIFY(model.isEmpty());
        model.setChat(&stage.chat());
        QCOMPARE(model.rowCount(), 6);
        stage.say(taskLine(u"task_notification"_s, u"w"_s, {{u"summary"_s, u"다 됐습니다"_s}}));
        QTRY_COMPARE(titles(model), QStringList({u"release"_s, u"다 됐습니다"_s}));
        QCOMPARE(model.runningText(), QString());
        QCOMPARE(model.finishedText(), u"끝남 1"_s);
    }

    void oneAgentsChangeIsOneRowsChange()
    {
        Test::ChatStage stage;
        BackgroundModel model;
        model.setChat(&stage.chat());
        model.setShown(true);
        QJsonArray entries {phaseEntry(1, u"모두"_s)};
        for (int i = 0; i < 2100; ++i) {
            entries << agentEntry(i, 1, u"running"_s);
        }
        stage.say(taskLine(u"task_progress"_s, u"w"_s, {{u"workflow_progress"_s, entries}}));
        QTRY_COMPARE(model.rowCount(), 2003);
        QCOMPARE(titles(model).last(), u"외 100개"_s);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        stage.say(taskLine(u"task_progress"_s, u"w"_s,
                           {{u"workflow_progress"_s, QJsonArray {agentEntry(1500, 1, u"done"_s)}}}));
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(inserted.count() + removed.count(), 0);
        QCOMPARE(changed.count(), 2); // the phase's count and the agent
        QCOMPARE(changed.at(1).at(0).toModelIndex().row(), 1502);
        QCOMPARE(changed.at(1).at(1).toModelIndex().row(), 1502);
    }

    void whateverHappensTheModelTellsIt()
    {
        QVERIFY(rc::check("rows followed by signals are the rows", [] {
            Test::ChatStage stage;
            BackgroundModel model;
            model.setChat(&stage.chat());
            const QAbstractItemModelTester tester(&model);
            const Mirror mirror(model);
            for (int step = *rc::gen::inRange(1, 25); step > 0; --step) {
                const QString id = QString::number(*rc::gen::inRange(0, 4));
                switch (*rc::gen::inRange(0, 6)) {
                case 0:
                    stage.useTool(id, u"Agent"_s, {{u"description"_s, id}});
                    break;
                case 1:
                    stage.toolResult(id, u"결과"_s, *rc::gen::arbitrary<bool>());
                    break;
                case 2:
                    stage.say(taskLine(u"task_notification"_s, id, {{u"output_file"_s, u"/o"_s}}));
                    break;
                case 3:
                    stage.say(taskLine(u"task_progress"_s, id,
                                       {{u"last_tool_name"_s, QString::number(*rc::gen::inRange(0, 9))},
                                        {u"tool_use_id"_s, QString::number(*rc::gen::inRange(0, 4))}}));
                    break;
                case 4:
                    stage.say(taskLine(
                        u"task_progress"_s, id,
                        {{u"workflow_progress"_s,
                          QJsonArray {phaseEntry(*rc::gen::inRange(0, 3), u"p"_s),
                                      agentEntry(*rc::gen::inRange(0, 6), *rc::gen::inRange(0, 4),
                                                 *rc::gen::element(u"done"_s, u"running"_s, QString()))}}}));
                    break;
                default:
                    model.activate(*rc::gen::inRange(-1, 20));
                    break;
                }
                model.setShown(false);
                model.setShown(true); // takes over what came, without the wait
            }
            RC_ASSERT(mirror.rows == titles(model));
            int heads = 0;
            for (int row = 0; row < model.rowCount(); ++row) {
                heads += model.parentOf(row) < 0 ? 1 : 0;
            }
            RC_ASSERT(heads == stage.chat().backgroundTasks().tasks().size());
        }));
    }

    void filesThatMayBeOpened()
    {
        const QTemporaryDir folder;
        for (const QString &name : {u"plain.output"_s, u"run.sh"_s, u"x.desktop"_s}) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QFile::setPermissions(folder.filePath(u"run.sh"_s), QFile::ReadOwner | QFile::ExeOwner);
        QCOMPARE(openableFile(u"plain.output"_s, folder.path()),
                 QUrl::fromLocalFile(folder.filePath(u"plain.output"_s)));
        QVERIFY(openableFile(folder.filePath(u"plain.output"_s), u"/"_s));
        for (const QString &name : {u"run.sh"_s, u"x.desktop"_s, u"none"_s, u"."_s, QString()}) {
            QVERIFY2(!openableFile(name, folder.path()), qPrintable(name));
        }
    }

    void thePanelInAWindow_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::addColumn<int>("width");
        QTest::addColumn<double>("scale");
        QTest::newRow("dark") << u"dark"_s << 404 << 1.0;
        QTest::newRow("light") << u"light"_s << 404 << 1.0;
        QTest::newRow("narrow") << u"dark"_s << 280 << 1.6;
    }

    void thePanelInAWindow()
    {
        QFETCH(QString, theme);
        QFETCH(int, width);
        QFETCH(double, scale);
        Theme::shared().setMode(theme);
        Theme::shared().setScale(scale);
        Test::ChatStage stage;
        QQmlEngine engine;
        QStringList warnings;
        connect(&engine, &QQmlEngine::warnings, this, [&warnings](const QList<QQmlError> &errors) {
            for (const auto &error : errors) {
                warnings << error.toString();
            }
        });
        installUi(engine);
        QQuickWindow window;
        window.resize(width, 900);
        QQmlComponent component(&engine);
        component.setData("import Vesk.Chat\nBackgroundPanel { focus: true }", {});
        QVERIFY2(component.isReady(), qPrintable(component.errorString()));
        std::unique_ptr<QObject> made(component.createWithInitialProperties(
            {{u"chat"_s, QVariant::fromValue(&stage.chat())}, {u"shown"_s, true}}));
        auto *panel = qobject_cast<QQuickItem *>(made.get());
        QVERIFY2(panel, qPrintable(component.errorString()));
        panel->setParentItem(window.contentItem());
        panel->setSize(QSizeF(window.size()));
        window.show();
        window.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        picture(window, theme, u"empty"_s);

        QFile output(stage.path(u"bench.output"_s));
        QVERIFY(output.open(QIODevice::WriteOnly));
        output.close();
        QJsonArray entries {phaseEntry(1, u"조사"_s), phaseEntry(2, u"검토"_s), phaseEntry(3, u"정리"_s)};
        for (int i = 0; i < 1200; ++i) {
            entries << agentEntry(i, i < 4 ? 1 : 2,
                                  i < 7        ? u"done"_s
                                      : i == 8 ? u"failed"_s
                                               : u"running"_s,
                                  900 * i);
        }
        stage.useTool(u"b"_s, u"Bash"_s, {{u"command"_s, u"x"_s}});
        stage.say(taskLine(u"task_started"_s, u"b"_s,
                           {{u"description"_s, u"ctest -L load"_s}, {u"task_type"_s, u"local_bash"_s}}));
        stage.say(taskLine(
            u"task_notification"_s, u"b"_s,
            {{u"output_file"_s, output.fileName()},
             {u"status"_s, u"stopped"_s},
             {u"summary"_s, QString(u"실데이터 크기에서 11분 40초. 쓰기 잠금 없음. "_s).repeated(9)}}));
        stage.useTool(
            u"t"_s, u"Agent"_s,
            {{u"description"_s, u"문서와 코드의 어긋남 찾기"_s}, {u"subagent_type"_s, u"Explore"_s}});
        for (const QString &line : {u"Grep"_s, u"Read"_s, u"Glob"_s, u"Read"_s}) {
            stage.say(taskLine(u"task_progress"_s, u"t1"_s,
                               {{u"tool_use_id"_s, u"t"_s}, {u"last_tool_name"_s, line}}));
        }
        stage.say(taskLine(u"task_progress"_s, u"w"_s,
                           {{u"workflow_name"_s, u"release-check"_s},
                            {u"description"_s, u"출시 전 점검"_s},
                            {u"workflow_progress"_s, entries}}));
        auto *list = panel->findChild<QQuickItem *>(u"backgroundList"_s);
        QVERIFY(list);
        QTRY_COMPARE(list->property("count").toInt(), 1 + 3 + 1196 + 1 + 3 + 1 + 2);
        picture(window, theme, u"work"_s);
        QVERIFY(count(list, "BackgroundEntry") < 80); // only what can be seen, and a little

        // By the keyboard: down to the running phase, fold it, to the end, open the command's task and its
        // file.
        list->forceActiveFocus();
        QTest::keyClick(&window, Qt::Key_Home);
        QTest::keyClick(&window, Qt::Key_Down);
        QTest::keyClick(&window, Qt::Key_Down);
        QTest::keyClick(&window, Qt::Key_Down);
        QTest::keyClick(&window, Qt::Key_Left); // from an agent to its phase
        QCOMPARE(list->property("currentIndex").toInt(), 2);
        QTest::keyClick(&window, Qt::Key_Left);
        QTRY_COMPARE(list->property("count").toInt(), 11);
        QTest::keyClick(&window, Qt::Key_C); // "ctest"
        QTest::keyClick(&window, Qt::Key_Return);
        QTRY_COMPARE(list->property("count").toInt(), 12);
        picture(window, theme, u"folded"_s);
        OpenedFiles opened;
        QTest::keyClick(&window, Qt::Key_End);
        QTest::keyClick(&window, Qt::Key_Return);
        QCOMPARE(opened.urls, {QUrl::fromLocalFile(output.fileName())});
        output.remove();
        QTest::keyClick(&window, Qt::Key_Return);
        picture(window, theme, u"problem"_s);
        QCOMPARE(opened.urls.size(), 1);

        const QSignalSpy closed(panel, SIGNAL(closeRequested()));
        QTest::keyClick(&window, Qt::Key_Escape);
        QCOMPARE(closed.count(), 1);
        QCOMPARE(warnings, QStringList());
        Theme::shared().setScale(1.0);
        Theme::shared().setMode(u"system"_s);
    }

private:
    static void picture(QQuickWindow &window, const QString &theme, const QString &name)
    {
        const QString folder = qEnvironmentVariable("VESK_SHOTS");
        if (!folder.isEmpty()) {
            QTest::qWait(200);
            QDir().mkpath(folder);
            window.grabWindow().save(
                u"%1/background-%2-%3-%4.png"_s.arg(folder, name, theme).arg(window.width()));
        }
    }
};

VESK_TEST(BackgroundPanelTest)
#include "BackgroundPanelTest.moc"
