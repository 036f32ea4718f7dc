// What a session's runs cost in tokens, and how full its context is.
#pragma once

#include "claude/StreamLine.h"

#include <QHash>
#include <QString>

#include <optional>

namespace Vesk
{

/** Tokens of a run, summed over its models. */
struct SessionTokenUsage {
    qint64 input = 0, output = 0, cacheRead = 0, cacheCreation = 0;

    /** The sum; absent without any model. */
    [[nodiscard]] static std::optional<SessionTokenUsage>
    make(const QHash<QString, StreamModelUsage> &models);

    bool operator==(const SessionTokenUsage &) const = default;
};

/** How full the context window of the conversation is. */
struct ContextLive {
    qint64 tokens = 0;
    std::optional<QString> model;
    std::optional<qint64> window;
    bool isRestored = false;

    bool operator==(const ContextLive &) const = default;
};

/** The record after an answer of the main agent; unchanged when the answer tells no usage. */
[[nodiscard]] std::optional<ContextLive> noteContextUsage(const std::optional<ContextLive> &live,
                                                          const std::optional<StreamMessageUsage> &usage,
                                                          const std::optional<QString> &model);

/** The record with its model's window size, where the map has one of at least 1. */
[[nodiscard]] std::optional<ContextLive> noteContextWindows(const std::optional<ContextLive> &live,
                                                            const QHash<QString, StreamModelUsage> &models);

} // namespace Vesk
