// Background work in words.
#pragma once

#include "sessions/BackgroundTasks.h"
#include "ui/chat/BackgroundRows.h"

#include <QString>

namespace Vesk::BackgroundWords
{

/** What a task is called: a workflow by its name, anything else by what it was told to do. */
[[nodiscard]] QString title(const BackgroundTask &task);

/** "워크플로", "하위 에이전트", "명령", and "작업" for what the agent calls otherwise. */
[[nodiscard]] QString kind(const BackgroundTask &task);
[[nodiscard]] bool isCommand(const BackgroundTask &task);

/** What is said below a task's title: how it failed, what else is known of it, its tokens and tool calls. */
[[nodiscard]] QString detail(const BackgroundTask &task);

/** The line below an activity log of `total` lines of which `kept` are known and `shown` are seen. */
[[nodiscard]] QString lines(qsizetype shown, qsizetype kept, qsizetype total);

/** The words for assistive tools; without the running time, which changes. */
[[nodiscard]] QString accessibleText(const BackgroundRow &row);

} // namespace Vesk::BackgroundWords
