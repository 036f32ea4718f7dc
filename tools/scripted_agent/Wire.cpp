#include "Wire.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

namespace
{

QJsonObject usage(const RunFacts &facts)
{
    return {{u"input_tokens"_s, 12},
            {u"cache_creation_input_tokens"_s, 640},
            {u"cache_read_input_tokens"_s, facts.contextTokens},
            {u"output_tokens"_s, 180}};
}

QJsonObject withSession(QJsonObject line, const RunFacts &facts)
{
    line.insert(u"session_id"_s, facts.sessionId);
    line.insert(u"uuid"_s, freshId());
    return line;
}

} // namespace

QString freshId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QJsonObject merged(QJsonObject base, const QJsonObject &over)
{
    for (auto it = over.begin(); it != over.end(); ++it)
        base.insert(it.key(), it.value());
    return base;
}

QJsonObject initLine(const RunFacts &facts)
{
    return withSession(
        {{u"type"_s, u"system"_s},
         {u"subtype"_s, u"init"_s},
         {u"cwd"_s, facts.cwd},
         {u"model"_s, facts.model},
         {u"permissionMode"_s, facts.permissionMode},
         {u"tools"_s, QJsonArray {u"Agent"_s, u"Bash"_s, u"Edit"_s, u"Grep"_s, u"Read"_s, u"Write"_s}},
         {u"mcp_servers"_s, QJsonArray()},
         {u"slash_commands"_s, QJsonArray {u"compact"_s, u"context"_s, u"cost"_s, u"init"_s, u"review"_s}},
         {u"capabilities"_s, QJsonArray {u"interrupt_receipt_v1"_s}}},
        facts);
}

QJsonObject statusLine(const RunFacts &facts)
{
    return withSession(
        {{u"type"_s, u"system"_s}, {u"subtype"_s, u"status"_s}, {u"status"_s, u"requesting"_s}}, facts);
}

QJsonObject streamEvent(const RunFacts &facts, const QJsonObject &event)
{
    return withSession(
        {{u"type"_s, u"stream_event"_s}, {u"event"_s, event}, {u"parent_tool_use_id"_s, QJsonValue()}},
        facts);
}

QJsonObject textDelta(const QString &text)
{
    return {{u"type"_s, u"content_block_delta"_s},
            {u"index"_s, 0},
            {u"delta"_s, QJsonObject {{u"type"_s, u"text_delta"_s}, {u"text"_s, text}}}};
}

QJsonObject thinkingDelta(const QString &text)
{
    return {{u"type"_s, u"content_block_delta"_s},
            {u"index"_s, 0},
            {u"delta"_s, QJsonObject {{u"type"_s, u"thinking_delta"_s}, {u"thinking"_s, text}}}};
}

QJsonObject assistantLine(const RunFacts &facts, const QJsonObject &block)
{
    const QJsonObject message = {{u"id"_s, u"msg_"_s + freshId()},   {u"type"_s, u"message"_s},
                                 {u"role"_s, u"assistant"_s},        {u"model"_s, facts.model},
                                 {u"content"_s, QJsonArray {block}}, {u"usage"_s, usage(facts)}};
    return withSession(
        {{u"type"_s, u"assistant"_s}, {u"message"_s, message}, {u"parent_tool_use_id"_s, QJsonValue()}},
        facts);
}

QJsonObject toolUse(const QString &id, const QString &name, const QJsonObject &input)
{
    return {{u"type"_s, u"tool_use"_s}, {u"id"_s, id}, {u"name"_s, name}, {u"input"_s, input}};
}

QJsonObject toolResultLine(const RunFacts &facts, const QString &toolUseId, const QJsonValue &content,
                           bool isError)
{
    QJsonObject block = {
        {u"type"_s, u"tool_result"_s}, {u"tool_use_id"_s, toolUseId}, {u"content"_s, content}};
    if (isError)
        block.insert(u"is_error"_s, true);
    const QJsonObject message = {{u"role"_s, u"user"_s}, {u"content"_s, QJsonArray {block}}};
    return withSession(
        {{u"type"_s, u"user"_s}, {u"message"_s, message}, {u"parent_tool_use_id"_s, QJsonValue()}}, facts);
}

QJsonObject resultLine(const RunFacts &facts, const QString &text)
{
    const QJsonObject perModel = {{u"inputTokens"_s, 4'210},
                                  {u"outputTokens"_s, 1'830},
                                  {u"cacheReadInputTokens"_s, facts.contextTokens},
                                  {u"cacheCreationInputTokens"_s, 6'400},
                                  {u"contextWindow"_s, 200'000},
                                  {u"costUSD"_s, facts.costUsd}};
    return withSession({{u"type"_s, u"result"_s},
                        {u"subtype"_s, u"success"_s},
                        {u"is_error"_s, false},
                        {u"result"_s, text},
                        {u"num_turns"_s, 1},
                        {u"duration_ms"_s, 8'400},
                        {u"total_cost_usd"_s, facts.costUsd},
                        {u"usage"_s, usage(facts)},
                        {u"modelUsage"_s, QJsonObject {{facts.model, perModel}}},
                        {u"permission_denials"_s, QJsonArray()}},
                       facts);
}

QJsonObject interruptReceipt(const QString &requestId)
{
    return {{u"type"_s, u"control_response"_s},
            {u"response"_s, QJsonObject {{u"subtype"_s, u"success"_s}, {u"request_id"_s, requestId}}}};
}

QJsonObject interruptedResult(const RunFacts &facts)
{
    QJsonObject line = resultLine(facts, {});
    line.remove(u"result"_s);
    return merged(line,
                  {{u"subtype"_s, u"error_during_execution"_s},
                   {u"is_error"_s, true},
                   {u"errors"_s, QJsonArray {u"Error: Request was aborted."_s}}});
}

} // namespace ScriptedAgent
