#include "ui/issues/BoardSync.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

void BoardSync::setView(IssuesView *view)
{
    m_view = view;
    const auto plan = IssueBoardUpdate::propose(view->desk());
    m_plan = plan.value_or(IssueBoardSync::Plan());
    m_error = plan ? QString() : plan.error();
    Q_EMIT changed();
}

QString BoardSync::statusTitle() const
{
    return m_plan.statusChanges.isEmpty() ? QString() : u"상태 %1건"_s.arg(m_plan.statusChanges.size());
}

QStringList BoardSync::statusLines() const
{
    QStringList lines;
    for (const auto &change : m_plan.statusChanges) {
        lines.append(change.id + u"  "_s + (change.from.isEmpty() ? u"—"_s : change.from) + u" → "_s
                     + change.to);
    }
    return lines;
}

QString BoardSync::addedTitle() const
{
    return m_plan.added.isEmpty() ? QString() : u"보드에 없던 이슈 %1건을 추가"_s.arg(m_plan.added.size());
}

QString BoardSync::summaryTitle() const
{
    return m_plan.summaryChanges.isEmpty() ? QString()
                                           : u"요약 개수 %1칸"_s.arg(m_plan.summaryChanges.size());
}

QStringList BoardSync::summaryLines() const
{
    QStringList lines;
    for (const auto &change : m_plan.summaryChanges) {
        lines.append(change.status + u"  "_s + change.from + u" → "_s + change.to);
    }
    return lines;
}

QStringList BoardSync::remarks() const
{
    if (!m_error.isEmpty()) {
        return {};
    }
    QStringList lines;
    if (!canApply()) {
        lines.append(u"보드가 이미 파일과 같습니다 — 고칠 것이 없습니다."_s);
    } else {
        lines.append(u"상태 칸과 요약 개수만 고칩니다 — 제목·영역·우선·추정은 보드에 적힌 그대로 둡니다."_s);
        lines.append(u"파일이 없는 백로그 행 %1과 사람이 적은 메모·산문은 손대지 않습니다."_s.arg(
            m_plan.untouchedBacklog.size()));
        lines.append(u"지우는 것은 없습니다."_s);
    }
    if (!m_plan.unplaced.isEmpty()) {
        lines.append(u"마일스톤 섹션이 없어 못 넣은 이슈: "_s + m_plan.unplaced.join(u", "_s)
                     + u" — 섹션은 앱이 만들지 않습니다."_s);
    }
    return lines;
}

bool BoardSync::apply()
{
    const auto done = IssueBoardUpdate::apply(m_view->desk());
    if (!done) {
        m_error = done.error();
        Q_EMIT changed();
        return false;
    }
    m_view->report(u"보드를 파일에 맞췄습니다"_s);
    return true;
}

} // namespace Vesk
