#include "ui/ShellStage.h"

#include "sessions/ProjectChat.h"
#include "ui/controls/ProjectPalette.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

namespace
{

void installListeningProgram(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write("#!/bin/sh\nwhile read -r line; do echo \"$line\" >>\"$0.heard\"; done\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
}

} // namespace

ShellStage::ShellStage(Agent agent)
    : m_program(agent == Agent::Installed ? path(u"claude"_s) : QString())
{
    if (agent == Agent::Installed)
        installListeningProgram(m_program);
    build();
}

ShellStage::ShellStage(QString program)
    : m_program(std::move(program))
{
    build();
}

ShellStage::~ShellStage() = default;

void ShellStage::build()
{
    m_auditLogger = std::make_unique<AuditLogger>(path(u"audit.log"_s));
    m_preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
    m_locator = std::make_unique<ExecutableLocator>(m_program);
    m_runtime = std::make_unique<Runtime>(*m_auditLogger, *m_preferences,
                                          RuntimePaths {.catalog = path(u"projects.json"_s),
                                                        .writableSecrets = path(u"secrets.env"_s),
                                                        .candidateSecrets = {},
                                                        .drafts = path(u"drafts.json"_s),
                                                        .caches = path(u"caches"_s)},
                                          *m_locator);
}

void ShellStage::restart()
{
    m_runtime->stop();
    m_runtime.reset();
    build();
    m_runtime->start();
}

QByteArray ShellStage::heardByAgent() const
{
    QFile file(path(u"claude.heard"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ShellStage::addProject(const QString &alias, int lane)
{
    const QString folder = QDir::homePath() + u"/src/"_s + alias;
    QDir().mkpath(folder);
    m_runtime->upsertCatalogEntry(
        {.alias = alias, .path = folder, .extraEnv = {}, .colorHex = ProjectPalette::hexForLane(lane)});
}

ProjectChat &ShellStage::addSession(const QString &alias, const QString &title)
{
    ProjectChat *chat = m_runtime->newSession(alias);
    chat->setTitle(title);
    return *chat;
}

void ShellStage::run(ProjectChat &chat, const QString &text)
{
    const QString title = chat.title();
    chat.send(text);
    chat.setTitle(title);
    QVERIFY(QTest::qWaitFor([&chat] { return chat.childIsRunning(); }, 60000));
    say(chat, {{u"type"_s, u"system"_s}, {u"subtype"_s, u"init"_s}, {u"session_id"_s, u"c1"_s}});
}

void ShellStage::finish(ProjectChat &chat, const QString &text)
{
    const QJsonObject block {{u"type"_s, u"text"_s}, {u"text"_s, text}};
    say(chat,
        {{u"type"_s, u"assistant"_s}, {u"message"_s, QJsonObject {{u"content"_s, QJsonArray {block}}}}});
    say(chat,
        {{u"type"_s, u"result"_s},
         {u"subtype"_s, u"success"_s},
         {u"is_error"_s, false},
         {u"result"_s, text}});
}

void ShellStage::failRun(ProjectChat &chat, const QString &error)
{
    say(chat,
        {{u"type"_s, u"result"_s},
         {u"subtype"_s, u"success"_s},
         {u"is_error"_s, true},
         {u"result"_s, error}});
}

void ShellStage::askPermission(ProjectChat &chat, const QString &tool, const QString &command)
{
    const QJsonObject rule {
        {u"type"_s, u"addRules"_s},
        {u"rules"_s, QJsonArray {QJsonObject {{u"toolName"_s, tool}, {u"ruleContent"_s, command}}}},
        {u"behavior"_s, u"allow"_s},
        {u"destination"_s, u"localSettings"_s}};
    say(chat,
        {{u"type"_s, u"control_request"_s},
         {u"request_id"_s, u"r1"_s},
         {u"request"_s,
          QJsonObject {{u"subtype"_s, u"can_use_tool"_s},
                       {u"tool_name"_s, tool},
                       {u"display_name"_s, tool},
                       {u"tool_use_id"_s, u"t1"_s},
                       {u"permission_suggestions"_s, QJsonArray {rule}},
                       {u"input"_s, QJsonObject {{u"command"_s, command}}}}}});
}

void ShellStage::askQuestions(ProjectChat &chat, int count)
{
    QJsonArray questions;
    for (int number = 1; number <= count; ++number) {
        const QJsonArray options {QJsonObject {{u"label"_s, u"예"_s}},
                                  QJsonObject {{u"label"_s, u"아니요"_s}}};
        questions.append(QJsonObject {{u"question"_s, u"질문 %1?"_s.arg(number)},
                                      {u"header"_s, u"머리"_s},
                                      {u"options"_s, options},
                                      {u"multiSelect"_s, false}});
    }
    say(chat,
        {{u"type"_s, u"control_request"_s},
         {u"request_id"_s, u"r2"_s},
         {u"request"_s,
          QJsonObject {{u"subtype"_s, u"can_use_tool"_s},
                       {u"tool_name"_s, u"AskUserQuestion"_s},
                       {u"display_name"_s, u"AskUserQuestion"_s},
                       {u"tool_use_id"_s, u"t2"_s},
                       {u"input"_s, QJsonObject {{u"questions"_s, questions}}}}}});
}

void ShellStage::say(ProjectChat &chat, const QJsonObject &line)
{
    chat.handleLine(QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString());
}

} // namespace Vesk::Test
