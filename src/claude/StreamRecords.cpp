#include "claude/JsonRead_p.h"
#include "claude/StreamRecords_p.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Vesk::StreamRecords
{

using namespace JsonRead;
using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

namespace
{

std::optional<object> asObject(const element &value)
{
    object found;
    return value.get(found) == simdjson::SUCCESS ? std::optional(found) : std::nullopt;
}

// Output of megabytes is common, and its reader shows the first few kilobytes: the rest is not worth
// converting.
void setContent(std::string_view utf8, StreamContent &block)
{
    if (utf8.size() > StreamContent::maxContent) {
        constexpr std::string_view blanks = " \t\r\n";
        const std::size_t begin = std::min(utf8.find_first_not_of(blanks), utf8.size());
        utf8 = utf8.substr(begin, utf8.find_last_not_of(blanks) + 1 - begin);
    }
    const std::string_view kept = prefix(utf8, StreamContent::maxContent);
    block.content = text(kept);
    block.contentDroppedBytes = static_cast<qsizetype>(utf8.size() - kept.size());
}

void readContent(const object &from, StreamContent &block)
{
    if (const auto whole = viewAt(from, "content")) {
        setContent(*whole, block);
        return;
    }
    const auto items = arrayAt(from, "content");
    if (!items)
        return;
    std::vector<std::string_view> texts;
    for (const element item : *items) {
        const auto fields = asObject(item);
        if (const auto found = fields ? viewAt(*fields, "text") : std::nullopt)
            texts.push_back(*found);
    }
    if (texts.size() == 1) {
        setContent(texts.front(), block);
        return;
    }
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i)
        (joined += i == 0 ? "" : "\n") += texts[i];
    setContent(joined, block);
}

StreamContent content(const object &from)
{
    StreamContent block;
    block.type = wordAt(from, "type").value_or(QString());
    block.id = textAt(from, "id");
    block.name = textAt(from, "name");
    block.input = valueAt(from, "input", StreamContent::maxInputText);
    block.toolUseId = textAt(from, "tool_use_id");
    readContent(from, block);
    block.isError = boolAt(from, "is_error").value_or(false);
    return block;
}

StreamWorkflowEntry workflowEntry(const object &from)
{
    StreamWorkflowEntry entry;
    entry.type = textAt(from, "type").value_or(QString());
    entry.index = integerAt(from, "index");
    entry.phaseIndex = integerAt(from, "phaseIndex");
    entry.tokens = integerAt(from, "tokens");
    entry.toolCalls = integerAt(from, "toolCalls");
    entry.durationMs = integerAt(from, "durationMs");
    entry.attempt = integerAt(from, "attempt");
    entry.title = textAt(from, "title");
    entry.label = textAt(from, "label");
    entry.phaseTitle = textAt(from, "phaseTitle");
    entry.model = textAt(from, "model");
    entry.state = textAt(from, "state");
    return entry;
}

} // namespace

void readInner(const object &event, std::optional<StreamInner> &into)
{
    const auto type = viewAt(event, "type");
    if (!type)
        return;
    StreamInner &record = into.emplace();
    record.type = word(*type);
    const auto delta = objectAt(event, "delta");
    if (!delta)
        return;
    StreamDelta &read = record.delta.emplace();
    for (const auto [key, value] : *delta) {
        std::string_view found;
        if (value.get(found) != simdjson::SUCCESS)
            continue;
        if (key == "type")
            read.type = word(found);
        else if (key == "text")
            read.text = text(found);
    }
}

StreamMessage message(const object &from)
{
    StreamMessage record;
    if (const auto blocks = arrayAt(from, "content")) {
        for (const element block : *blocks) {
            if (const auto fields = asObject(block))
                record.content.append(content(*fields));
        }
    }
    if (const auto usage = objectAt(from, "usage")) {
        record.usage = StreamMessageUsage {
            integerAt(*usage, "input_tokens"), integerAt(*usage, "cache_read_input_tokens"),
            integerAt(*usage, "cache_creation_input_tokens"), integerAt(*usage, "output_tokens")};
    }
    record.model = textAt(from, "model");
    return record;
}

StreamTask task(const object &line)
{
    StreamTask record;
    record.taskId = textAt(line, "task_id");
    record.toolUseId = textAt(line, "tool_use_id");
    record.subagentType = textAt(line, "subagent_type");
    record.taskDescription = textAt(line, "task_description");
    record.description = textAt(line, "description");
    record.lastToolName = textAt(line, "last_tool_name");
    record.summary = textAt(line, "summary");
    record.outputFile = textAt(line, "output_file");
    record.status = textAt(line, "status");
    record.workflowName = textAt(line, "workflow_name");
    record.taskType = textAt(line, "task_type");
    if (const auto patch = objectAt(line, "patch"))
        record.patchStatus = textAt(*patch, "status");
    if (const auto usage = objectAt(line, "usage")) {
        record.usage = StreamUsage {integerAt(*usage, "total_tokens"), integerAt(*usage, "tool_uses"),
                                    integerAt(*usage, "duration_ms")};
    }
    if (const auto progress = arrayAt(line, "workflow_progress"))
        record.workflowProgress = workflowEntries(*progress);
    return record;
}

QList<StreamWorkflowEntry> workflowEntries(const array &from)
{
    QList<StreamWorkflowEntry> entries;
    for (const element entry : from) {
        if (const auto fields = asObject(entry))
            entries.append(workflowEntry(*fields));
    }
    return entries;
}

QHash<QString, StreamModelUsage> modelUsage(const object &from)
{
    QHash<QString, StreamModelUsage> models;
    for (const auto [name, usage] : from) {
        if (const auto fields = asObject(usage)) {
            models.insert(text(name),
                          {integerAt(*fields, "inputTokens"), integerAt(*fields, "outputTokens"),
                           integerAt(*fields, "cacheReadInputTokens"),
                           integerAt(*fields, "cacheCreationInputTokens"),
                           integerAt(*fields, "contextWindow")});
        }
    }
    return models;
}

QStringList denials(const array &from)
{
    QStringList tools;
    for (const element denial : from) {
        const auto fields = asObject(denial);
        tools << (fields ? textAt(*fields, "tool_name").value_or(QString()) : QString());
    }
    return tools;
}

StreamRateLimitInfo rateLimitInfo(const object &from)
{
    StreamRateLimitInfo info;
    info.status = textAt(from, "status");
    info.overageStatus = textAt(from, "overageStatus");
    info.overageDisabledReason = textAt(from, "overageDisabledReason");
    info.isUsingOverage = boolAt(from, "isUsingOverage");
    if (const auto windows = objectAt(from, "unifiedWindows")) {
        info.unifiedWindows.emplace();
        for (const auto [name, window] : *windows) {
            if (const auto fields = asObject(window))
                info.unifiedWindows->insert(
                    text(name), {doubleAt(*fields, "utilization"), doubleAt(*fields, "resetsAt")});
        }
    }
    return info;
}

} // namespace Vesk::StreamRecords
