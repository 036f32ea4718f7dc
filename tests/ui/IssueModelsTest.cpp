// What the issue window shows, without a window: rows of the list, texts of the editor, the forms.
#include "issues/IssueFolderPreference.h"
#include "sessions/ProjectChat.h"
#include "support/IssueFolderMaker.h"
#include "support/TestRegistry.h"
#include "ui/issues/BoardSync.h"
#include "ui/issues/IssueDetail.h"
#include "ui/issues/IssueList.h"
#include "ui/issues/IssueOnboarding.h"
#include "ui/issues/IssueRefChoice.h"
#include "ui/issues/IssueSessions.h"
#include "ui/issues/IssueText.h"
#include "ui/issues/NewIssueForm.h"
#include "ui/ShellStage.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThreadPool>
#include <QtTest>

#include <rapidcheck.h>

using namespace Vesk;
using namespace Qt::StringLiterals;
using Test::ShellStage;
using Test::IssueFolderMaker::read;
using Test::IssueFolderMaker::write;

namespace
{

/** A project "billing" with its issue folder. */
struct IssueStage {
    explicit IssueStage(bool filled = true)
    {
        shell.addProject(u"billing"_s, 0);
        QDir(folder).removeRecursively();
        if (filled) {
            Test::IssueFolderMaker::fill(folder);
            IssueFolderPreference::setFolder(folder, QDir::homePath() + u"/src/billing"_s,
                                             shell.preferences());
        }
        view = std::make_unique<IssuesView>(shell.runtime(), u"billing"_s);
        QObject::connect(view.get(), &IssuesView::problem, view.get(),
                         [this](const QString &text) { problems.append(text); });
    }
    [[nodiscard]] QString file(const QString &name) const { return folder + u'/' + name; }

    ShellStage shell;
    QString folder = QDir::homePath() + u"/src/billing/issues"_s;
    std::unique_ptr<IssuesView> view;
    QStringList problems;
};

const auto fourthIssue = u"BILL-004-cancel-twice.md"_s;

QStringList shown(const IssueList &list)
{
    QStringList rows;
    for (const auto &row : list.rows()) {
        rows.append(row.id.isEmpty() ? row.title
                                     : row.id + (row.ending.isEmpty() ? u""_s : u' ' + row.ending));
    }
    return rows;
}

} // namespace

class IssueModelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsGroupsFoldsAndFilters()
    {
        IssueStage stage;
        IssueList list;
        const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester chips(list.filter(),
                                             QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.setView(stage.view.get());
        const auto rows = shown(list);
        QCOMPARE(rows.first(6),
                 (QStringList {u"M1 · 환불"_s, u"BILL-004 3/5"_s, u"BILL-005 4/4"_s, u"BILL-007 선행 2"_s,
                               u"BILL-009 선행 1"_s, u"끝난 이슈 2건"_s}));
        QVERIFY(rows.contains(u"BILL-013 지금 가능"_s));
        QVERIFY2(rows.contains(u"BILL-030 지금 가능"_s) || rows.contains(u"BILL-030"_s),
                 "a row without a file");
        QCOMPARE(rows.last(), u"끝난 이슈 4건"_s);

        const auto folded = list.rowCount();
        list.toggleFold(5);
        QCOMPARE(list.rowCount(), folded + 2);
        list.activate(0);
        QVERIFY(!shown(list).contains(u"BILL-004 3/5"_s));
        // Choosing an issue unfolds what hides it.
        stage.view->select(stage.file(fourthIssue));
        QVERIFY(list.selectedRow() > 0);
        const auto &items = stage.view->store().items();
        const auto settled = std::ranges::find_if(
            items, [](const auto &item) { return IssueStatus::parse(item.doc.status()).isTerminal(); });
        stage.view->select(settled->path);
        IssueList later; // chosen before there was a list
        later.setView(stage.view.get());
        QVERIFY(later.selectedRow() > 0);
        stage.view->select(stage.file(fourthIssue));

        stage.view->setQuery(u"정산"_s);
        QVERIFY(shown(list).contains(u"BILL-012 선행 2"_s));
        QVERIFY(!shown(list).contains(u"BILL-005 4/4"_s));
        stage.view->setQuery(u"nothing has this"_s);
        QCOMPARE(list.rowCount(), 0);
        QCOMPARE(list.emptyText(), u"조건에 맞는 이슈가 없습니다"_s);
        stage.view->setQuery({});

        // The chip of a word of the project's own.
        int other = -1;
        for (int chip = 0; chip < list.filter()->rowCount(); ++chip) {
            if (list.filter()->index(chip).data() == u"보류"_s) {
                other = chip;
            }
        }
        list.filterBy(other);
        QCOMPARE(shown(list), (QStringList {u"마일스톤 없음"_s, u"BILL-015"_s}));
        list.filterBy(0);
        QVERIFY(list.rowCount() > 10);

        // A reload keeps what stands, and says why a file cannot be read.
        QFile bad(stage.file(u"BILL-031-bad.md"_s));
        QVERIFY(bad.open(QIODevice::WriteOnly));
        bad.write("# BILL-031 \xff\xfe");
        bad.close();
        const auto before = list.rowCount();
        stage.view->reload();
        QCOMPARE(list.rowCount(), before + 1);
        QVERIFY(std::ranges::any_of(list.rows(), [](const auto &row) { return !row.unreadable.isEmpty(); }));
    }

    void manyIssuesStayFluid()
    {
        IssueStage stage;
        Test::IssueFolderMaker::fillMany(stage.folder, 5000);
        stage.view->reload();
        IssueList list;
        list.setView(stage.view.get());
        QVERIFY(list.rowCount() > 4000);
        QElapsedTimer time;
        time.start();
        for (const auto &query : {u"b"_s, u"bi"_s, u"big"_s, u"big-4"_s, u"big-49"_s}) {
            stage.view->setQuery(query);
        }
        qInfo("five keystrokes in 5000 issues: %lld ms", static_cast<long long>(time.elapsed()));
        QVERIFY(list.rowCount() > 50);
    }

    void bodyAndEditsKeepEveryOtherByte()
    {
        QCOMPARE(IssueText::body(u"# A · b\n\n| a | b |\n|---|---|\n\n## 할 일\n| x | y |\n"_s).simplified(),
                 u"## 할 일 | x | y |"_s);
        QCOMPARE(IssueText::body(u"글\n# A\n"_s), u"글\n# A\n"_s);
        QCOMPARE(IssueText::toggledTask(u"- [ ] a"_s, 3), u"- [x] a"_s);
        QCOMPARE(IssueText::toggledTask(u"- [X] a"_s, 3), u"- [ ] a"_s);
        QVERIFY(!IssueText::toggledTask(u"- [?] a"_s, 3));
        QVERIFY(!IssueText::toggledTask(u"- [ ] a"_s, -1));
        QVERIFY(!IssueText::toggledTask(u"- [ ] a"_s, 40));
        QCOMPARE(IssueText::caretAfter(u"a\nb"_s, u"x\na\nb"_s, 3), 5);
        QCOMPARE(IssueText::caretAfter(u"one\ntwo\nthree"_s, u"ONE\nnew\ntwo\nTHREE"_s, 5), 9);
        QCOMPARE(IssueText::caretAfter(u"one\ntwo\nthree"_s, u"ONE\nT\nTHREE"_s, 6),
                 5); // that line is another
        QCOMPARE(IssueText::caretAfter(u"one\ntwo\nthree"_s, QString(), 13), 0);
        QCOMPARE(IssueText::withEdit(u"a\r\nb\r\nc"_s, u"a\nb\nx\nc"_s), u"a\r\nb\r\nx\r\nc"_s);
        QCOMPARE(IssueText::withEdit(u"a\r\nb\nc\u00A0"_s, u"a\nbb\nc\u00A0"_s), u"a\r\nbb\nc\u00A0"_s);
        const auto texts =
            rc::gen::map(rc::gen::container<std::string>(rc::gen::elementOf(std::string("ab\r\n "))),
                         [](const std::string &text) { return QString::fromStdString(text); });
        rc::check("an edit leaves what it does not touch", [&texts] {
            const QString text = *texts;
            const QString edited = IssueText::editorText(*texts);
            RC_ASSERT(IssueText::editorText(IssueText::withEdit(text, edited)) == edited);
            RC_ASSERT(IssueText::withEdit(text, IssueText::editorText(text)) == text);
        });
    }

    void detailReadsChangesAndSaves()
    {
        IssueStage stage;
        IssueDetail detail;
        const QAbstractItemModelTester fields(detail.fields());
        const QAbstractItemModelTester refs(detail.blocks());
        detail.setView(stage.view.get());
        QVERIFY(!detail.isOpen());
        stage.view->select(stage.file(fourthIssue));
        QCOMPARE(detail.issueId(), u"BILL-004"_s);
        QStringList notes;
        for (int block = 0; block < detail.preview()->rowCount(); ++block) {
            notes.append(detail.preview()->index(block).data(MarkdownBlockModel::NoteRole).toString());
        }
        notes.removeAll(QString());
        QCOMPARE(notes, QStringList {u"3/5"_s});
        QCOMPARE(detail.fileText(), u"issues/"_s + fourthIssue);
        QCOMPARE(detail.blocks()->index(0).data(IssueRefRows::TitleRole), u"부분 환불 지원"_s);
        QVERIFY(!detail.blocks()->index(0).data(IssueRefRows::NoteRole).toString().isEmpty());

        // Rows of the table change in place, on disk too.
        detail.setField(u"우선순위"_s, u"P2"_s);
        QVERIFY(read(stage.file(fourthIssue)).contains(u"| 우선순위 | P2 |\n"));
        detail.addRef(true, u"BILL-013"_s);
        QVERIFY(read(stage.file(fourthIssue)).contains(u"BILL-001 · BILL-013"));
        QCOMPARE(detail.blockedBy()->rowCount(), 2);
        QSignalSpy changed(stage.view.get(), &IssuesView::statusChanged);
        detail.setStatus(u"review"_s);
        QCOMPARE(changed.count(), 1);
        QVERIFY(read(stage.file(fourthIssue)).contains(u"| 상태 | `review` |"));
        QVERIFY2(read(stage.file(u"BOARD.md"_s)).contains(u"| P0 | 3d | `review` |"), "the board follows");
        stage.view->undoStatus();
        QVERIFY(read(stage.file(fourthIssue)).contains(u"| 상태 | `doing` |"));
        QTRY_COMPARE(detail.statusWord(), u"doing"_s);

        // What is typed is saved when another issue is chosen, and told of until then.
        detail.document()->setText(detail.document()->text() + u"덧붙임"_s);
        QTRY_VERIFY(detail.unsavedText().startsWith(u"미저장 3자 · "));
        stage.view->select(stage.file(u"BILL-005-refund-policy.md"_s));
        QVERIFY(read(stage.file(fourthIssue)).endsWith(u"덧붙임"));

        // A conflict stands in the way of both.
        detail.document()->setText(detail.document()->text() + u"나"_s);
        write(stage.file(u"BILL-005-refund-policy.md"_s), u"# BILL-005 · 다른 글\n"_s);
        QTRY_VERIFY(detail.document()->hasConflict());
        detail.setStatus(u"done"_s);
        QCOMPARE(stage.problems.size(), 1);
        QCOMPARE(read(stage.file(u"BILL-005-refund-policy.md"_s)), u"# BILL-005 · 다른 글\n"_s);
        detail.document()->load();
        detail.setStatus(u"done"_s);
        QCOMPARE(stage.problems.size(), 2); // it has no table
        detail.setStatus(u"done"_s);
        QCOMPARE(stage.view->toldProblems(), stage.problems.first(2)); // both are to be read, each once
        stage.view->putAway(stage.problems.first());
        QCOMPARE(stage.view->toldProblems(), stage.problems.mid(1, 1));
        stage.problems.removeLast();

        // Someone who writes the file first has the open editor save.
        stage.view->select(stage.file(fourthIssue));
        detail.document()->setText(detail.document()->text() + u"!"_s);
        stage.view->setStatus(stage.file(fourthIssue), u"done"_s);
        QVERIFY(read(stage.file(fourthIssue)).endsWith(u"덧붙임!"));
        QTRY_COMPARE(detail.statusWord(), u"done"_s);
    }

    void unsavedTextOutlivesItsEditor()
    {
        IssueStage stage;
        IssueDetail detail;
        detail.setView(stage.view.get());
        const QString path = stage.file(fourthIssue);
        const auto type = [&](const QString &text) {
            stage.view->select(path);
            detail.document()->setText(detail.document()->text() + text);
            write(path, u"# BILL-004 · 다른 글 "_s + text);
            stage.view->select(stage.file(u"BILL-005-refund-policy.md"_s));
        };
        type(u"하나"_s);
        QCOMPARE(stage.problems.size(), 1);
        QVERIFY(stage.problems.last().contains(fourthIssue + u"--"_s)); // where the copy is

        // With no place for a copy either it waits here.
        for (int n = 0; n <= evacuationAttempts; ++n) {
            const QString number = n < 2 ? QString() : u'-' + QString::number(n);
            QDir(stage.folder).mkpath(fourthIssue + u"--"_s + pathFingerprint(path) + number + u".unsaved"_s);
        }
        write(QFileInfo(stage.shell.runtime().catalogPath()).path() + u"/unsaved"_s, u"in the way"_s);
        type(u"둘"_s);
        QVERIFY(stage.problems.last().contains(u"이 창에만 남아"));
        stage.view->select(path);
        QVERIFY(detail.document()->text().endsWith(u"둘"));
        QVERIFY(!detail.unsavedText().isEmpty());
        detail.saveNow();
        QVERIFY(read(path).endsWith(u"둘"));
    }

    void whatCannotBeReadIsNotCalledSaved()
    {
        IssueStage stage;
        QVERIFY(QFile::link(u"loop.md"_s, stage.file(u"loop.md"_s)));
        write(stage.file(u"empty.md"_s), {});
        write(stage.file(u"long.md"_s), QString(4'100'000, u'x'));
        stage.view->reload();
        IssueDetail detail;
        detail.setView(stage.view.get());
        stage.view->select(stage.file(u"loop.md"_s));
        QVERIFY(detail.diskText() != u"저장됨" && detail.emptyText() == detail.diskText());
        stage.view->select(stage.file(u"empty.md"_s));
        QCOMPARE(detail.diskText(), u"저장됨"_s);
        QCOMPARE(detail.emptyText(), u"본문이 비어 있습니다"_s);
        QVERIFY(detail.tooLongText().isEmpty());
        stage.view->select(stage.file(u"long.md"_s));
        QVERIFY(detail.emptyText().isEmpty() && !detail.tooLongText().isEmpty());
    }

    void aTickRewritesItsOwnBox()
    {
        IssueStage stage;
        const QString path = stage.file(fourthIssue);
        const QString text = u"# BILL-004 · 제목 😀\n\n| 항목 | 값 |\n|-|-|\n| 상태 | todo |\n\n"
                             "- [ ] 같은 글\n  - [ ] 같은 글\n```\n- [ ] 같은 글\n```\n> - [ ] 인용 😀\n\n"
                             "    - [ ] 코드\n\n1. [ ] 번호\n- [x] 같은 글\n"_s;
        write(path, text);
        stage.view->reload();
        IssueDetail detail;
        detail.setView(stage.view.get());
        stage.view->select(path);
        int ticked = 0;
        for (int block = 0; block < detail.preview()->rowCount(); ++block) {
            const auto at = detail.preview()->taskAt(block);
            QCOMPARE(at >= 0,
                     !detail.preview()->index(block).data(MarkdownBlockModel::TaskRole).toString().isEmpty());
            if (at < 0) {
                continue;
            }
            ++ticked;
            const QString before = detail.document()->text();
            detail.toggleTask(block);
            QString expected = before;
            expected[at] = before[at] == u' ' ? u'x' : u' ';
            QCOMPARE(read(path), expected);
            QVERIFY(QStringView(before).mid(at - 1, 3) == u"[ ]"
                    || QStringView(before).mid(at - 1, 3) == u"[x]");
        }
        QCOMPARE(ticked, 5);
    }

    void aLongTextIsReadWithoutWaiting()
    {
        IssueStage stage;
        const QString path = stage.file(fourthIssue);
        QString text =
            u"# BILL-004 · 긴 글\n\n| 항목 | 값 |\n|-|-|\n| 상태 | todo |\n| 선행 |  |\n\n- [ ] 하나\n"_s;
        while (text.size() < 250'000) {
            text += u"\n문단 %1\n"_s.arg(text.size());
        }
        write(path, text);
        stage.view->reload();
        IssueDetail detail;
        const QAbstractItemModelTester preview(detail.preview());
        detail.setView(stage.view.get());
        stage.view->select(path);
        QCOMPARE(detail.title(), u"긴 글"_s); // as the list has it
        QVERIFY(detail.emptyText().isEmpty());
        QCOMPARE(detail.preview()->rowCount(), 0);
        QTRY_VERIFY(detail.preview()->rowCount() > 1000);

        // What is changed in one breath does not undo itself.
        detail.addRef(true, u"BILL-001"_s);
        detail.addRef(true, u"BILL-005"_s);
        QVERIFY(read(path).contains(u"`BILL-001` · `BILL-005`"));
        QTRY_COMPARE(detail.blockedBy()->rowCount(), 2);
        detail.document()->setText(read(path).replace(u"하나"_s, u"둘"_s));
        detail.toggleTask(0); // where it was: the preview has to catch up first
        QVERIFY(!detail.document()->text().contains(u"[x]"));
        QTRY_COMPARE(detail.preview()->index(0).data(MarkdownBlockModel::HtmlRole).toString(), u"둘"_s);
        detail.toggleTask(0);
        QVERIFY(read(path).contains(u"- [x] 둘"));

        // A reading that comes too late is of no use.
        detail.document()->setText(detail.document()->text() + u"\n끝\n"_s);
        detail.saveNow();
        stage.view->select(stage.file(u"BILL-005-refund-policy.md"_s));
        const int rows = detail.preview()->rowCount();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(detail.issueId(), u"BILL-005"_s);
        QCOMPARE(detail.preview()->rowCount(), rows);
    }

    void boardIsBroughtIntoLine()
    {
        IssueStage stage;
        BoardSync sync;
        sync.setView(stage.view.get());
        QCOMPARE(sync.statusTitle(), u"상태 1건"_s);
        QCOMPARE(sync.statusLines(), QStringList {u"BILL-011  todo → doing"_s});
        QCOMPARE(sync.addedLines().first(), u"BILL-022"_s);
        QVERIFY(sync.apply());
        QVERIFY(read(stage.file(u"BOARD.md"_s)).contains(u"[BILL-022](BILL-022-retry.md)"));
        sync.setView(stage.view.get());
        QVERIFY(!sync.canApply());
        QCOMPARE(sync.remarks().first(), u"보드가 이미 파일과 같습니다 — 고칠 것이 없습니다."_s);
        QFile::remove(stage.file(u"BOARD.md"_s));
        sync.setView(stage.view.get());
        QCOMPARE(sync.error(), u"BOARD.md를 읽지 못했습니다"_s);
    }

    void aNewIssueIsWritten()
    {
        IssueStage stage;
        NewIssueForm form;
        form.setView(stage.view.get());
        QCOMPARE(form.prefix(), u"BILL"_s);
        QVERIFY(!form.canCreate());
        form.setNumber(u"004"_s);
        QCOMPARE(form.numberProblem(), u"이미 쓰인 번호"_s);
        form.setNumber(u"026"_s);
        QCOMPARE(form.numberHint(), u"언급만 된 번호"_s);
        form.setTitle(u"환불 취소 되돌리기"_s);
        QCOMPARE(form.fileName(), u"BILL-026-환불-취소-되돌리기.md"_s);
        QVERIFY(form.fieldNames().contains(u"추천 모델"_s));
        QVERIFY(form.choices(u"마일스톤"_s).contains(u"M2"_s) || !form.choices(u"마일스톤"_s).isEmpty());
        form.setValue(u"우선순위"_s, u"P1"_s);
        form.setValue(u"상태"_s, u"doing"_s);
        form.addRef(true, u"BILL-004"_s);
        form.addRef(true, u"BILL-005"_s);
        form.removeRef(true, 0);
        // Somebody is faster.
        write(stage.file(form.fileName()), u"mine"_s);
        QVERIFY(!form.create());
        QCOMPARE(read(stage.file(form.fileName())), u"mine"_s);
        QFile::remove(stage.file(form.fileName()));
        QSignalSpy created(stage.view.get(), &IssuesView::created);
        QVERIFY(form.create());
        QCOMPARE(created.count(), 1);
        QCOMPARE(stage.view->selectedId(), u"BILL-026"_s);
        const QString text = read(stage.file(u"BILL-026-환불-취소-되돌리기.md"_s));
        QVERIFY(text.startsWith(u"# BILL-026"));
        QVERIFY(text.contains(u"doing"));
        const auto item = *stage.view->store().itemAtPath(stage.view->selectedPath());
        QCOMPARE(item.doc.value(IssueKeys::priority()), u"P1"_s);
        QCOMPARE(item.doc.blockedBy(), QStringList {u"BILL-005"_s});
        QCOMPARE(item.doc.status(), u"doing"_s);
    }

    void aFolderIsMadeAndTriaged()
    {
        IssueStage stage(false);
        QCOMPARE(stage.view->folderState(), IssuesView::FolderState::Unset);
        IssueOnboarding form;
        form.setView(stage.view.get());
        form.setKey(u"pay-1한"_s);
        QCOMPARE(form.key(), u"PAY1"_s);
        form.setFolderName(u"../out"_s);
        QVERIFY(!form.canCreate());
        form.setFolderName(u"docs/issues"_s);
        QVERIFY(form.canCreate());
        form.create();
        QCOMPARE(stage.view->folderState(), IssuesView::FolderState::Ready);
        QVERIFY(stage.view->offersTriage());
        stage.view->startTriage();
        const auto *chat = stage.shell.runtime().agentStore().sessions().last();
        QVERIFY(chat->composerInput().startsWith(u"docs/issues/README.md의"));
        QVERIFY(chat->composerInput().contains(u"PAY1-<번호>"));
        QDir(QDir::homePath() + u"/src/billing/docs"_s).removeRecursively();
        stage.view->reload();
        QCOMPARE(stage.view->folderState(), IssuesView::FolderState::Missing);
    }

    void sessionsOfAnIssueAreListed()
    {
        IssueStage stage;
        IssueSessions sessions;
        const QAbstractItemModelTester tester(&sessions);
        sessions.setView(stage.view.get());
        sessions.setPath(stage.file(fourthIssue));
        QCOMPARE(sessions.rowCount(), 0);
        stage.view->workOn(stage.file(fourthIssue));
        QCOMPARE(sessions.rowCount(), 1);
        auto *chat = stage.shell.runtime().agentStore().sessions().last();
        chat->setTitle(u"웹훅"_s);
        QCOMPARE(sessions.index(0).data(), u"웹훅"_s);
        QCOMPARE(sessions.index(0).data(IssueSessions::LiveRole), false);
        QCOMPARE(sessions.index(0).data(IssueSessions::MomentRole), QString()); // nothing was said yet
        ChatMessage message;
        message.at = QDateTime::currentDateTime();
        chat->messages().reset({message});
        QVERIFY(!sessions.index(0).data(IssueSessions::MomentRole).toString().isEmpty());
        QSignalSpy chosen(&stage.shell.runtime().issues(), &IssueCrossings::sessionChosen);
        sessions.show(0);
        QCOMPARE(chosen.count(), 1);
        stage.shell.runtime().closeSession(chat);
        QCOMPARE(sessions.rowCount(), 0);

        IssueRefChoice choice;
        choice.setView(stage.view.get());
        choice.setWithout({u"bill-004"_s});
        choice.setQuery(u"웹훅"_s);
        QCOMPARE(choice.rows()->rowCount(), 0);
        choice.setQuery(u"회계"_s);
        QCOMPARE(choice.idAt(0), u"BILL-030"_s);
    }
};

VESK_TEST(IssueModelsTest)
#include "IssueModelsTest.moc"
