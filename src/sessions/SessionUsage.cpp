#include "sessions/SessionUsage.h"

namespace Vesk
{

std::optional<SessionTokenUsage> SessionTokenUsage::make(const QHash<QString, StreamModelUsage> &models)
{
    if (models.isEmpty())
        return std::nullopt;
    SessionTokenUsage sum;
    for (const StreamModelUsage &usage : models) {
        sum.input += usage.inputTokens.value_or(0);
        sum.output += usage.outputTokens.value_or(0);
        sum.cacheRead += usage.cacheReadInputTokens.value_or(0);
        sum.cacheCreation += usage.cacheCreationInputTokens.value_or(0);
    }
    return sum;
}

std::optional<ContextLive> noteContextUsage(const std::optional<ContextLive> &live,
                                            const std::optional<StreamMessageUsage> &usage,
                                            const std::optional<QString> &model)
{
    if (!usage)
        return live;
    const qint64 tokens = usage->inputTokens.value_or(0) + usage->cacheReadInputTokens.value_or(0)
        + usage->cacheCreationInputTokens.value_or(0) + usage->outputTokens.value_or(0);
    if (tokens < 1)
        return live;
    const ContextLive before = live.value_or(ContextLive {});
    ContextLive now;
    now.tokens = tokens;
    now.model = model ? model : before.model;
    if (now.model == before.model)
        now.window = before.window;
    return now;
}

std::optional<ContextLive> noteContextWindows(const std::optional<ContextLive> &live,
                                              const QHash<QString, StreamModelUsage> &models)
{
    if (!live || !live->model)
        return live;
    const auto usage = models.constFind(*live->model);
    if (usage == models.constEnd() || usage->contextWindow.value_or(0) < 1)
        return live;
    ContextLive now = *live;
    now.window = usage->contextWindow;
    return now;
}

} // namespace Vesk
