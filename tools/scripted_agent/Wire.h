// The lines that the agent program writes in a turn.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace ScriptedAgent
{

/** What every line of a run needs to know of it. */
struct RunFacts {
    QString sessionId;
    QString cwd;
    QString model;
    QString permissionMode;
    qint64 contextTokens = 12'000; ///< grows with what is said
    double costUsd = 0;
};

[[nodiscard]] QString freshId();

[[nodiscard]] QJsonObject initLine(const RunFacts &facts);
[[nodiscard]] QJsonObject statusLine(const RunFacts &facts);
[[nodiscard]] QJsonObject streamEvent(const RunFacts &facts, const QJsonObject &event);
[[nodiscard]] QJsonObject textDelta(const QString &text);
[[nodiscard]] QJsonObject thinkingDelta(const QString &text);
/** One content block of the assistant, whole. */
[[nodiscard]] QJsonObject assistantLine(const RunFacts &facts, const QJsonObject &block);
[[nodiscard]] QJsonObject toolUse(const QString &id, const QString &name, const QJsonObject &input);
[[nodiscard]] QJsonObject toolResultLine(const RunFacts &facts, const QString &toolUseId,
                                         const QJsonValue &content, bool isError);
[[nodiscard]] QJsonObject resultLine(const RunFacts &facts, const QString &text);
[[nodiscard]] QJsonObject interruptReceipt(const QString &requestId);
[[nodiscard]] QJsonObject interruptedResult(const RunFacts &facts);

/** `base` with the keys of `over` put over it. */
[[nodiscard]] QJsonObject merged(QJsonObject base, const QJsonObject &over);

} // namespace ScriptedAgent
