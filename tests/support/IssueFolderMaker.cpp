#include "support/IssueFolderMaker.h"

#include <QDir>
#include <QFile>

#include <array>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

namespace
{

/** One issue file. Empty fields become placeholders. */
struct Issue {
    const char16_t *name;
    const char16_t *title;
    const char16_t *status;
    const char16_t *milestone;
    const char16_t *area;
    const char16_t *priority;
    const char16_t *estimate;
    const char16_t *blockedBy;
    const char16_t *blocks;
    int done;
    int tasks;
};

constexpr std::array issues {
    Issue {u"BILL-001-event-table", u"결제 사건 표 정리", u"done", u"M1 · 환불", u"backend", u"P0", u"2d",
           u"", u"BILL-004", 6, 6},
    Issue {u"BILL-003-log-keep", u"로그 보존 기간 늘리기", u"cancelled", u"M1 · 환불", u"infra", u"P2", u"",
           u"", u"", 0, 0},
    Issue {u"BILL-004-cancel-twice", u"취소 웹훅 중복 막기", u"doing", u"M1 · 환불", u"backend", u"P0", u"3d",
           u"BILL-001", u"BILL-007", 3, 5},
    Issue {u"BILL-005-refund-policy", u"환불 정책 문서화", u"review", u"M1 · 환불", u"docs", u"P1", u"1d",
           u"", u"BILL-007", 4, 4},
    Issue {u"BILL-007-part-refund", u"부분 환불 지원", u"blocked", u"M1 · 환불", u"backend", u"P1", u"5d",
           u"BILL-005", u"BILL-009 · BILL-012", 0, 4},
    Issue {u"BILL-009-refund-page", u"환불 화면 새로 그리기", u"todo", u"M1 · 환불", u"web", u"P1", u"4d",
           u"BILL-007", u"", 0, 3},
    Issue {u"BILL-010-batch", u"정산 배치 나누기", u"todo", u"M2 · 정산", u"backend", u"P1", u"3d",
           u"BILL-001", u"BILL-012", 0, 4},
    Issue {u"BILL-011-failure-note", u"정산 실패 알림", u"doing", u"M2 · 정산", u"backend", u"P1", u"1d", u"",
           u"", 1, 3},
    Issue {u"BILL-012-month-end", u"월말 정산 보고서", u"blocked", u"M2 · 정산", u"backend", u"P2", u"4d",
           u"BILL-007 · BILL-010", u"", 0, 2},
    Issue {u"BILL-013-fee-table", u"수수료 표 옮기기", u"todo", u"M2 · 정산", u"backend", u"P2", u"2d", u"",
           u"", 0, 2},
    Issue {u"BILL-014-ledger", u"원장 대사 자동화", u"todo", u"M3 · 원장", u"backend", u"P2", u"8d",
           u"BILL-012", u"", 0, 5},
    Issue {u"BILL-015-foreign-fee", u"해외 카드 수수료 확인", u"보류 — 외부 답변", u"", u"", u"", u"", u"",
           u"", 0, 0},
    Issue {u"BILL-016-receipt-font", u"영수증 글꼴 깨짐", u"", u"", u"web", u"", u"", u"", u"", 0, 0},
    Issue {u"BILL-017-failure-words", u"결제 실패 문구 정리", u"todo", u"", u"web", u"P2", u"1d", u"", u"", 0,
           2},
    Issue {u"BILL-018-old-keys", u"옛 키 폐기", u"done", u"", u"infra", u"P1", u"1d", u"", u"", 2, 2},
    Issue {u"BILL-019-clock", u"서버 시계 맞추기", u"done", u"", u"infra", u"P2", u"1d", u"", u"", 1, 1},
    Issue {u"BILL-020-index", u"주문 색인 다시 만들기", u"done", u"", u"backend", u"P1", u"2d", u"", u"", 3,
           3},
    Issue {u"BILL-021-audit", u"감사 기록 보내기", u"review", u"M3 · 원장", u"backend", u"P1", u"2d", u"",
           u"", 2, 3},
    Issue {u"BILL-022-retry", u"재시도 간격 고르기", u"todo", u"M3 · 원장", u"backend", u"P2", u"1d",
           u"BILL-021", u"", 0, 2},
    Issue {u"BILL-023-sandbox", u"시험 결제 계정 정리", u"cancelled", u"", u"infra", u"P2", u"", u"", u"", 0,
           0},
};

QString orDash(const char16_t *text)
{
    return *text == 0 ? u"—"_s : QString::fromUtf16(text);
}

QString textOf(const Issue &issue)
{
    const QString id = QString::fromUtf16(issue.name).section(u'-', 0, 1);
    const QString status = QString::fromUtf16(issue.status);
    QString cell = u"—"_s;
    if (!status.isEmpty()) {
        cell = u'`' + status.section(u' ', 0, 0) + u'`';
        if (status.contains(u' ')) {
            cell += u' ' + status.section(u' ', 1);
        }
    }
    QString text = u"# %1 · %2\n\n| 항목 | 값 |\n|---|---|\n"_s.arg(id, QString::fromUtf16(issue.title));
    const auto row = [&text](const QString &key, const QString &value) {
        text += u"| "_s + key + u" | "_s + value + u" |\n"_s;
    };
    row(u"상태"_s, cell);
    row(u"마일스톤"_s, orDash(issue.milestone));
    row(u"영역"_s, orDash(issue.area));
    row(u"우선순위"_s, orDash(issue.priority));
    row(u"추정"_s, orDash(issue.estimate));
    row(u"추천 모델"_s, issue.tasks > 4 ? u"Opus"_s : u"—"_s);
    row(u"추천 effort"_s, issue.tasks > 4 ? u"High"_s : u"—"_s);
    row(u"선행"_s, orDash(issue.blockedBy));
    row(u"후행"_s, orDash(issue.blocks));
    text +=
        u"\n## 배경\n\n결제 대행은 취소 웹훅을 최대 5번까지 다시 보낸다. 같은 취소가 1초 안에 두 번 오면 둘 다 "
        "검사를 지나 환불이 두 번 기록된다. 지난달에만 31건을 손으로 되돌렸다. 자세한 것은 "
        "[사건 표](BILL-001-event-table.md)에 있다.\n\n## 할 일\n\n"_s;
    static const QStringList tasks {
        u"두 번 오는 취소를 흉내 내는 테스트"_s,  u"이벤트 번호를 같은 트랜잭션에서 먼저 저장"_s,
        u"이미 처리한 번호면 `200`만 돌려주기"_s, u"겹친 환불을 찾는 점검 질의"_s,
        u"운영 문서에 되돌리는 절차 적기"_s,      u"배포 뒤 하루 지켜보기"_s};
    for (int i = 0; i < issue.tasks; ++i) {
        text += (i < issue.done ? u"- [x] "_s : u"- [ ] "_s) + tasks.at(i % tasks.size()) + u'\n';
    }
    text +=
        u"\n## 수용 기준\n\n같은 취소 100건을 동시에 보내도 환불은 1건만 남는다. 응답은 모두 200이고, 처리 시간은 지금의 "
        "1.1배를 넘지 않는다.\n\n## 결정 기록\n\n- 11-18 고유 색인으로 막는다. 잠금은 느리고, 잠금을 잡은 채 죽으면 "
        "풀 사람이 없다.\n"_s;
    return text;
}

} // namespace

bool IssueFolderMaker::write(const QString &path, const QString &text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QString IssueFolderMaker::read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool IssueFolderMaker::fill(const QString &folder)
{
    bool fine = QDir().mkpath(folder);
    for (const auto &issue : issues) {
        fine = write(folder + u'/' + QString::fromUtf16(issue.name) + u".md"_s, textOf(issue)) && fine;
    }
    QString board = u"# 보드\n\n| 상태 | 개수 |\n|---|---|\n| doing | 1 |\n"_s;
    for (const auto *milestone : {u"M1 · 환불", u"M2 · 정산", u"M3 · 원장"}) {
        board += u"\n## "_s + QString::fromUtf16(milestone)
            + u"\n\n| ID | 제목 | 영역 | 우선 | 추정 | 상태 |\n|---|---|---|---|---|---|\n"_s;
        for (const auto &issue : issues) {
            if (QString::fromUtf16(issue.milestone) == QString::fromUtf16(milestone)
                && QString::fromUtf16(issue.name) != u"BILL-022-retry") {
                const QString name = QString::fromUtf16(issue.name);
                board += u"| [%1](%2.md) | %3 | %4 | %5 | %6 | `%7` |\n"_s.arg(
                    name.section(u'-', 0, 1), name, QString::fromUtf16(issue.title), orDash(issue.area),
                    orDash(issue.priority), orDash(issue.estimate),
                    name == u"BILL-011-failure-note" ? u"todo"_s : orDash(issue.status));
            }
        }
        if (QString::fromUtf16(milestone) == u"M3 · 원장") {
            board += u"| BILL-030 | 회계 연동 조사 | backend | P3 | — | `todo` |\n"_s;
        }
    }
    return write(folder + u"/BOARD.md"_s, board)
        && write(folder + u"/README.md"_s, u"# 이슈 관리 규칙\n\n(BILL-026)은 다음 분기에 쓴다.\n"_s) && fine;
}

bool IssueFolderMaker::fillMany(const QString &folder, int count)
{
    bool fine = QDir().mkpath(folder);
    for (int i = 1; i <= count; ++i) {
        const QString id = u"BIG-%1"_s.arg(i, 4, 10, QChar(u'0'));
        fine =
            write(folder + u'/' + id + u"-x.md"_s,
                  u"# %1 · 이슈 %2\n\n| 항목 | 값 |\n|---|---|\n| 상태 | `%3` |\n| 마일스톤 | M%4 |\n"_s.arg(
                      id, QString::number(i), i % 5 == 0 ? u"done"_s : u"todo"_s, QString::number(i % 10)))
            && fine;
    }
    return fine;
}

} // namespace Vesk::Test
