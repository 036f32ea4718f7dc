#include "git/PullToRefresh.h"

namespace Vesk::PullToRefresh
{

Notice notice(const GitFetch::Outcome &outcome)
{
    using Kind = GitFetch::Outcome::Kind;
    switch (outcome.kind) {
    case Kind::Fetched:
        return {QStringLiteral("fetch 완료 — ") + outcome.text, false};
    case Kind::Blocked:
        return {
            QStringLiteral(
                "fetch하지 않았습니다 — 이 저장소의 설정에 명령을 실행하는 항목이 있습니다(%1). 필요하면 세션이나 터미널에서 fetch하세요")
                .arg(outcome.keys.join(QStringLiteral(", "))),
            true};
    case Kind::Failed:
        return {QStringLiteral("fetch 실패 — ") + outcome.text, true};
    case Kind::NoRemote:
        break;
    }
    return {QStringLiteral("리모트가 없어 새로고침만 했습니다"), false};
}

} // namespace Vesk::PullToRefresh
