#include "ui/ChatStage.h"

#include <QFile>
#include <QJsonDocument>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

QQuickItem *makeChatPane(QQmlEngine &engine, QQuickWindow &window, ProjectChat &chat)
{
    QQmlComponent component(&engine);
    component.setData("import Vesk.Chat\nChatPane {}", {});
    auto *pane = component.isReady() ? qobject_cast<QQuickItem *>(component.createWithInitialProperties(
                     {{u"chat"_s, QVariant::fromValue(&chat)}, {u"active"_s, true}}))
                                     : nullptr;
    if (pane) {
        pane->setParent(&window);
        pane->setParentItem(window.contentItem());
        pane->setSize(QSizeF(window.size()));
    } else {
        qWarning().noquote() << component.errorString();
    }
    return pane;
}

ChatStage::ChatStage()
{
    QFile program(path(u"claude"_s));
    if (program.open(QIODevice::WriteOnly)) {
        // A shell alone: what a session hands on need not have a search path.
        program.write("#!/bin/sh\nwhile read -r line; do :; done\n");
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        program.close();
    }
    m_locator = std::make_unique<ExecutableLocator>(path(u"claude"_s));
    m_chat = std::make_unique<ProjectChat>(QUuid::createUuid(), u"billing"_s, m_folder.path(), u"세션"_s,
                                           QHash<QString, QString>(),
                                           SessionServices {m_locator.get(), nullptr, {}, path(u"caches"_s)});
}

ChatStage::~ChatStage() = default;

bool ChatStage::run(const QString &text)
{
    m_chat->send(text);
    if (!QTest::qWaitFor([this] { return m_chat->childIsRunning(); }, 60000)) {
        return false;
    }
    say({{u"type"_s, u"system"_s},
         {u"subtype"_s, u"init"_s},
         {u"session_id"_s, u"c1"_s},
         {u"capabilities"_s, QJsonArray {u"interrupt_receipt_v1"_s}}});
    return true;
}

void ChatStage::say(const QJsonObject &line)
{
    m_chat->handleLine(QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString());
}

void ChatStage::stream(const QString &text)
{
    const QJsonObject delta {{u"type"_s, u"text_delta"_s}, {u"text"_s, text}};
    say({{u"type"_s, u"stream_event"_s},
         {u"event"_s, QJsonObject {{u"type"_s, u"content_block_delta"_s}, {u"delta"_s, delta}}}});
}

void ChatStage::useTool(const QString &id, const QString &name, const QJsonObject &input)
{
    const QJsonObject block {
        {u"type"_s, u"tool_use"_s}, {u"id"_s, id}, {u"name"_s, name}, {u"input"_s, input}};
    say({{u"type"_s, u"assistant"_s}, {u"message"_s, QJsonObject {{u"content"_s, QJsonArray {block}}}}});
}

void ChatStage::toolResult(const QString &id, const QString &output, bool isError)
{
    const QJsonObject block {{u"type"_s, u"tool_result"_s},
                             {u"tool_use_id"_s, id},
                             {u"content"_s, output},
                             {u"is_error"_s, isError}};
    say({{u"type"_s, u"user"_s}, {u"message"_s, QJsonObject {{u"content"_s, QJsonArray {block}}}}});
}

void ChatStage::usage(int tokens)
{
    const QJsonObject message {{u"content"_s, QJsonArray()},
                               {u"model"_s, u"m"_s},
                               {u"usage"_s, QJsonObject {{u"input_tokens"_s, tokens}}}};
    say({{u"type"_s, u"assistant"_s}, {u"message"_s, message}});
}

void ChatStage::finish(const QString &text)
{
    const QJsonObject usage {{u"m"_s, QJsonObject {{u"contextWindow"_s, 200000}}}};
    say({{u"type"_s, u"result"_s},
         {u"subtype"_s, u"success"_s},
         {u"is_error"_s, false},
         {u"result"_s, text},
         {u"modelUsage"_s, usage}});
}

void ChatStage::askPermission(const QString &id, const QString &tool, const QJsonObject &input,
                              const QJsonArray &suggestions)
{
    QJsonObject request {{u"subtype"_s, u"can_use_tool"_s},
                         {u"tool_name"_s, tool},
                         {u"display_name"_s, tool},
                         {u"tool_use_id"_s, id},
                         {u"input"_s, input}};
    if (!suggestions.isEmpty()) {
        request.insert(u"permission_suggestions"_s, suggestions);
    }
    say({{u"type"_s, u"control_request"_s}, {u"request_id"_s, id}, {u"request"_s, request}});
}

void ChatStage::askQuestions(const QString &id, const QJsonArray &questions)
{
    askPermission(id, u"AskUserQuestion"_s, {{u"questions"_s, questions}});
}

ChatMessage row(ChatMessage::Role role, const QString &text)
{
    ChatMessage message;
    message.id = QUuid::createUuid();
    message.role = role;
    message.text = text;
    message.at = QDateTime::currentDateTime();
    return message;
}

QJsonObject option(const QString &label, const QString &description)
{
    QJsonObject object {{u"label"_s, label}};
    if (!description.isEmpty()) {
        object.insert(u"description"_s, description);
    }
    return object;
}

} // namespace Vesk::Test
