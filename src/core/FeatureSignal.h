// The features whose use is counted.
#pragma once

#include <QLatin1StringView>

#include <array>

namespace Vesk
{

/** Each case names the question that its count answers. */
enum class FeatureSignal {
    AppLaunched,          ///< 얼마나 자주 앱을 켜나(다른 모든 숫자의 분모)?
    SessionStarted,       ///< 앱을 켠 사람이 채팅 세션까지 오나?
    SessionResumed,       ///< 이전 세션 이어가기 동선이 실제로 쓰이나?
    MessageSent,          ///< 세션을 열고 실제로 대화하나, 열고 마나?
    TurnInterrupted,      ///< 돌던 턴을 중간에 끊고 싶어지는 일이 얼마나 잦나?
    PermissionApproved,   ///< 도구 권한 카드를 사람이 실제로 만나나?
    PermissionDenied,     ///< 권한 거부가 실제로 일어나나(카드가 형식이 아닌가)?
    ToolActivityExpanded, ///< 접힌 도구 줄을 실제로 펼쳐 보나?
    IssueWindowOpened,    ///< 이슈 트래커를 여는 사람이 있나?
    IssueTrackingStarted, ///< 이슈가 없던 프로젝트가 온보딩을 통과하나?
    IssueCreated,         ///< 이슈를 앱에서 만드나, 파일로만 만드나?
    IssueStatusChanged,   ///< 신호 A가 창업자 밖에서도 도나?
    IssueHandedToSession, ///< 웨지의 핵심 동작(일감을 통째로 세션에 넘김)이 일어나나?
    IssueBoardSynced,     ///< 보드 맞추기가 쓰이나?
    IssueGraphOpened,     ///< 의존관계 그림이 쓰이나?
    IssueKanbanOpened,    ///< 관계 없는 이슈 칸반이 쓰이나?
    IssueDetailOpened,    ///< 목록만 훑나, 이슈 안까지 들어가나?
    IssueOpenedFromChat, ///< 세션에서 이슈로 되돌아오는 동선(채팅의 이슈 링크)이 도나?
    ScheduleWindowOpened,     ///< 반복 작업 화면을 찾아오나?
    ScheduleSaved,            ///< 반복 작업을 세팅까지 하는 사람이 있나?
    ScheduleRemoved,          ///< 만들었다가 접나(세팅이 기대와 달랐나)?
    ScheduleRunManual,        ///< 예약을 기다리지 않고 손으로 돌려 보나?
    ScheduleRunStarted,       ///< 세팅한 반복이 정말 도나, 만들고 마나?
    VersionWindowOpened,      ///< 형상관리 창이 쓰이나?
    VersionActionUsed,        ///< 패널에서 보기만 하나, 거기서 일도 하나?
    ResumePanelOpened,        ///< 세션 히스토리를 뒤지나?
    BackgroundPanelOpened,    ///< 병렬 작업 진행을 들여다보나?
    ComposerAutocompleteUsed, ///< 컴포저 자동완성이 실제로 쓰이나?
    ComposerAttachmentAdded,  ///< 스크린샷 보고 흐름이 도나?
    ProjectAdded,             ///< 몇 개 프로젝트를 물리고 쓰나?
    ProjectRemoved,           ///< 프로젝트를 붙였다 떼는 일이 잦나?
    AccountSwitched,          ///< 다계정 스위치가 실제로 쓰이나(한도 소진 대응)?
};

/** The stored name of each signal, in the order of the cases. */
inline constexpr std::array<QLatin1StringView, 32> featureSignalRawValues {
    QLatin1StringView("app_launched"),
    QLatin1StringView("session_started"),
    QLatin1StringView("session_resumed"),
    QLatin1StringView("message_sent"),
    QLatin1StringView("turn_interrupted"),
    QLatin1StringView("permission_approved"),
    QLatin1StringView("permission_denied"),
    QLatin1StringView("tool_activity_expanded"),
    QLatin1StringView("issue_window_opened"),
    QLatin1StringView("issue_tracking_started"),
    QLatin1StringView("issue_created"),
    QLatin1StringView("issue_status_changed"),
    QLatin1StringView("issue_handed_to_session"),
    QLatin1StringView("issue_board_synced"),
    QLatin1StringView("issue_graph_opened"),
    QLatin1StringView("issue_kanban_opened"),
    QLatin1StringView("issue_detail_opened"),
    QLatin1StringView("issue_opened_from_chat"),
    QLatin1StringView("schedule_window_opened"),
    QLatin1StringView("schedule_saved"),
    QLatin1StringView("schedule_removed"),
    QLatin1StringView("schedule_run_manual"),
    QLatin1StringView("schedule_run_started"),
    QLatin1StringView("version_window_opened"),
    QLatin1StringView("version_action_used"),
    QLatin1StringView("resume_panel_opened"),
    QLatin1StringView("background_panel_opened"),
    QLatin1StringView("composer_autocomplete_used"),
    QLatin1StringView("composer_attachment_added"),
    QLatin1StringView("project_added"),
    QLatin1StringView("project_removed"),
    QLatin1StringView("account_switched"),
};
static_assert(static_cast<std::size_t>(FeatureSignal::AccountSwitched) + 1 == featureSignalRawValues.size());

/** The name under which a signal is stored. */
[[nodiscard]] constexpr QLatin1StringView rawValue(FeatureSignal signal)
{
    return featureSignalRawValues[static_cast<std::size_t>(signal)];
}

} // namespace Vesk
