#include "app/IssuePromptTexts_p.h"

namespace Vesk::IssuePromptTexts
{

QString work(const QString &issue)
{
    return issue
        + QStringLiteral(
               " 이슈를 처리하자. 같은 폴더에 README.md 운영 규칙이 있으면 **먼저 읽고 그 규칙을 따라줘**(아래는 규칙이 없을 때의 기본값). 파일을 읽고 상단 표의 `상태`를 `doing`으로 바꾼 뒤, `## 할 일`을 하나씩 처리하며 **체크박스를 그 자리에서 갱신**하고 완료 항목엔 결론을 한 줄로 남겨줘. `## 수용 기준`을 전부 충족했으면 `상태`를 `review`로 바꾸고 `## 결정 기록`에 날짜와 무엇을 확인해 무엇을 정했는지 남겨줘. 막히면 `blocked`로 바꾸고 무엇을 기다리는지 적어줘. 상태를 바꿨으면 같은 폴더의 BOARD.md에도 그 줄을 같이 고쳐줘(있을 때만). 표의 `선행` 이슈가 아직 안 끝났으면 먼저 알려줘.");
}

QString triage(const QString &folder, const QString &key)
{
    return QStringLiteral(
               "%1/README.md의 이슈 관리 규칙을 먼저 읽어. 그런 다음 이 프로젝트를 훑어서(README·docs·설정 파일·TODO/FIXME 주석·미완성 코드·빠진 테스트·CI 부재 등) **실제로 해야 할 일감**을 이슈 파일로 만들어줘. 파일명은 `%2-<번호>-<영문-슬러그>.md`(001부터)이고, 각 파일은 규칙 문서의 템플릿(상단 `| 항목 | 값 |` 표 + `## 배경` / `## 할 일` / `## 수용 기준` / `## 결정 기록`)을 그대로 따라야 해. 잘게 쪼개지 말고 **하루 이상 걸릴 덩어리**로 묶어서 **12개 안쪽**으로 추려줘 — 많이 만드는 게 목적이 아니라 다음에 뭘 할지 보이게 하는 게 목적이야. 코드를 고치지는 말고 이슈 파일만 만들어. 다 만들면 %1/BOARD.md의 표와 요약을 실제 이슈에 맞게 채우고, 마일스톤을 나눴다면 README의 번호 대역도 갱신해줘. 근거가 불확실한 항목은 만들지 말고 나에게 먼저 물어봐.")
        .arg(folder, key);
}

} // namespace Vesk::IssuePromptTexts
