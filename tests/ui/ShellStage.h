// A runtime on scratch files with projects and sessions, for the tests of the main window.
#pragma once

#include "app/Runtime.h"

#include <QTemporaryDir>

#include <memory>

namespace Vesk::Test
{

/** Sessions here run a program that only listens, and what it would say is told by the test. */
class ShellStage
{
public:
    enum class Agent { Installed, Missing };

    explicit ShellStage(Agent agent = Agent::Installed);
    /** Sessions that run this program instead; empty for none. */
    explicit ShellStage(QString program);
    ~ShellStage();

    /** Ends the runtime and builds it anew on the same files, as the next start of Vesk does. */
    void restart();

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] Runtime &runtime() { return *m_runtime; }
    [[nodiscard]] Preferences &preferences() { return *m_preferences; }
    [[nodiscard]] AuditLogger &auditLogger() { return *m_auditLogger; }

    /** All that Vesk wrote to the program, in every session. */
    [[nodiscard]] QByteArray heardByAgent() const;

    /** Makes the folder ~/src/<alias> in the scratch home and adds it. */
    void addProject(const QString &alias, int lane);
    ProjectChat &addSession(const QString &alias, const QString &title);

    /** Starts a turn, and waits for the child. */
    static void run(ProjectChat &chat, const QString &text);
    static void finish(ProjectChat &chat, const QString &text);
    static void failRun(ProjectChat &chat, const QString &error);
    static void askPermission(ProjectChat &chat, const QString &tool, const QString &command);
    static void askQuestions(ProjectChat &chat, int count);
    static void say(ProjectChat &chat, const QJsonObject &line);

private:
    void build();

    QTemporaryDir m_folder;
    QString m_program;
    std::unique_ptr<AuditLogger> m_auditLogger;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<ExecutableLocator> m_locator;
    std::unique_ptr<Runtime> m_runtime;
};

} // namespace Vesk::Test
