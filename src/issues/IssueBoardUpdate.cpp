#include "issues/IssueBoardUpdate.h"

#include "core/UsageRecorder.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

std::optional<QString> writePlan(const IssueDesk &desk, const IssueBoardSync::Plan &plan, const QString &mark)
{
    if (auto problem = desk.io.write(desk.store.boardPath(), plan.markdown)) {
        return problem;
    }
    desk.logInfo(u"board synced%1 (%2): status=%3 added=%4 summary=%5"_s.arg(
        mark, desk.alias, QString::number(plan.statusChanges.size()), QString::number(plan.added.size()),
        QString::number(plan.summaryChanges.size())));
    return std::nullopt;
}

} // namespace

void IssueBoardUpdate::automatic(const IssueDesk &desk)
{
    if (desk.store.boardPath().isEmpty()) {
        return;
    }
    desk.flush(desk.store.boardPath());
    const auto board = desk.store.boardText();
    if (!board) {
        return;
    }
    const auto plan =
        IssueBoardSync::plan(*board, desk.store.boardEntries(), IssueBoardSync::Scope::StatusesOnly);
    if (!plan.deferredRows.isEmpty()) {
        desk.logInfo(u"board auto-sync deferred rows ("_s + desk.alias + u"): "_s
                     + plan.deferredRows.join(u", "_s));
    }
    if (!plan.changesAnything()) {
        return;
    }
    if (const auto problem = writePlan(desk, plan, u" (auto)"_s)) {
        desk.logError(u"board auto-sync failed ("_s + desk.alias + u"): "_s + *problem);
    } else {
        desk.store.reload();
    }
}

tl::expected<IssueBoardSync::Plan, QString> IssueBoardUpdate::propose(const IssueDesk &desk)
{
    desk.store.reload();
    desk.flush(desk.store.boardPath());
    const auto board = desk.store.boardText();
    if (!board) {
        return tl::unexpected(u"BOARD.md를 읽지 못했습니다"_s);
    }
    return IssueBoardSync::plan(*board, desk.store.boardEntries(), IssueBoardSync::Scope::Full);
}

tl::expected<IssueBoardSync::Plan, QString> IssueBoardUpdate::apply(const IssueDesk &desk)
{
    auto plan = propose(desk);
    if (!plan || !plan->changesAnything()) {
        return plan;
    }
    if (const auto problem = writePlan(desk, *plan, QString())) {
        return tl::unexpected(*problem);
    }
    UsageRecorder::record(FeatureSignal::IssueBoardSynced);
    desk.store.reload();
    return plan;
}

} // namespace Vesk
