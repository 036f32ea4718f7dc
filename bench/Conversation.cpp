#include "bench/Conversation.h"

#include <QDateTime>

namespace Vesk::Bench
{

QList<ChatMessage> conversation(int count)
{
    QList<ChatMessage> rows;
    for (int row = 0; row < count; ++row) {
        ChatMessage message;
        message.id = QUuid::createUuid();
        message.at = QDateTime::currentDateTime();
        switch (row % 4) {
        case 0:
            message.role = ChatMessage::Role::User;
            message.text =
                QStringLiteral("결제 취소 웹훅이 두 번 오면 환불이 두 번 기록돼. %1번째 줄").arg(row);
            break;
        case 1:
        case 3:
            message.role = ChatMessage::Role::Assistant;
            message.text =
                QStringLiteral("원인을 찾았습니다. `handleCancel`이 환불을 기록한 **뒤에** 이벤트 번호를 "
                               "저장합니다.\n\n- 먼저 넣습니다.\n- 이미 있으면 돌려줍니다.\n\n"
                               "```cpp\nif (!store.insertOnce(id))\n    return Ok;\n```\n%1")
                    .arg(row);
            break;
        default:
            message.role = ChatMessage::Role::Tools;
            message.tools = {ToolActivity {.id = QString::number(row),
                                           .name = QStringLiteral("Bash"),
                                           .summary = QStringLiteral("Bash · cmake --build build"),
                                           .output = QString(600, u'x'),
                                           .outcome = ToolActivity::Outcome::Ok,
                                           .startedAt = message.at,
                                           .finishedAt = message.at}};
        }
        rows.append(message);
    }
    return rows;
}

} // namespace Vesk::Bench
