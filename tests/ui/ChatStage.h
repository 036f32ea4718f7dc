// A session whose agent only listens: the test says the agent's lines itself.
#pragma once

#include "claude/ClaudeCLI.h"
#include "sessions/ProjectChat.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>

class QQmlEngine;
class QQuickItem;
class QQuickWindow;

namespace Vesk::Test
{

/** The surface of `chat`, made to fill `window`, which owns it. Null, with the reason in the log, when its
 * QML cannot be loaded. */
[[nodiscard]] QQuickItem *makeChatPane(QQmlEngine &engine, QQuickWindow &window, ProjectChat &chat);

/** One session on a scratch folder. */
class ChatStage
{
public:
    ChatStage();
    ~ChatStage();

    [[nodiscard]] ProjectChat &chat() { return *m_chat; }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

    /** Starts a turn with a message; false when the child did not come up. */
    [[nodiscard]] bool run(const QString &text);
    void say(const QJsonObject &line);
    void stream(const QString &text);
    void useTool(const QString &id, const QString &name, const QJsonObject &input);
    void toolResult(const QString &id, const QString &output, bool isError = false);
    void usage(int tokens);
    void finish(const QString &text);
    void askPermission(const QString &id, const QString &tool, const QJsonObject &input,
                       const QJsonArray &suggestions = {});
    void askQuestions(const QString &id, const QJsonArray &questions);

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ExecutableLocator> m_locator;
    std::unique_ptr<ProjectChat> m_chat;
};

/** A message as a row. */
[[nodiscard]] ChatMessage row(ChatMessage::Role role, const QString &text);
[[nodiscard]] QJsonObject option(const QString &label, const QString &description = {});

} // namespace Vesk::Test
