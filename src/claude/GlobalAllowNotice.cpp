#include "claude/GlobalAllowNotice.h"

namespace Vesk
{

QString GlobalAllowNotice::text() const
{
    if (totalRules < 1)
        return {};
    const auto listed = [](const QStringList &tools) { return tools.join(QStringLiteral(" · ")); };
    QStringList parts {
        QStringLiteral("전역 ~/.claude/settings.json이 도구 %1건을 미리 허용합니다 — ").arg(totalRules)
        + (opensUnsupervisedTools.isEmpty()
               ? QStringLiteral("셸·네트워크 도구는 그중에 없습니다.")
               : listed(opensUnsupervisedTools) + QStringLiteral("가 열려 있습니다."))};
    if (!deniedThisRun.isEmpty()) {
        parts << QStringLiteral("사람이 없는 회차라 ") + listed(deniedThisRun)
                + QStringLiteral("는 앱이 끊습니다. 필요하면 아래 '허용 도구'에 적어 되열 수 있습니다.");
    } else if (!opensUnsupervisedTools.isEmpty()) {
        parts << QStringLiteral(
            "이 회차는 아래 '허용 도구'가 셋 다 되열어 두었습니다 — 전역 허용이 그대로 얹힙니다.");
    }
    return parts.join(u' ');
}

} // namespace Vesk
