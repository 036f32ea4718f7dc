// The scripted agent in a test: scenarios written as C++, and what the agent was given, read back.
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Vesk::Test
{

/** The steps of one run of the agent. tools/scripted_agent/README.md says what each step does. */
class Scenario
{
public:
    // A turn as it usually goes
    Scenario &user();                    ///< waits for a message; its text is `${prompt}` from then on
    Scenario &user(const QString &text); ///< waits for this message
    Scenario &init(const QJsonObject &over = {});
    Scenario &say(const QString &text, int chunk = 8, int delayMs = 0);
    Scenario &tool(const QString &name, const QJsonObject &input, const QString &result = {},
                   bool isError = false);
    /** Asks for permission and plays one of the roads. `request` is put over the request's own keys. */
    Scenario &ask(const QString &requestId, const QString &tool, const QJsonObject &input,
                  const QJsonObject &request = {}, const Scenario &allowed = {}, const Scenario &denied = {});
    Scenario &question(const QString &requestId, const QJsonArray &questions);
    Scenario &result(const QString &text, const QJsonObject &over = {});
    Scenario &resultError(const QString &subtype, const QString &text = {});
    /** A whole turn: message, init, text, result. */
    Scenario &turn(const QString &answer);

    // Lines, bytes, waiting
    Scenario &write(const QJsonObject &line);
    Scenario &writeText(const QString &line);
    Scenario &raw(const QByteArray &bytes, const QList<int> &cuts = {}, int pauseMs = 5);
    Scenario &pause(int ms);
    Scenario &waitForFile(const QString &path); ///< works on until this file exists
    /** Waits for a line with these keys; `names` keeps values of it by their dotted paths. */
    Scenario &expect(const QJsonObject &pattern, const QJsonObject &names = {});
    Scenario &onInterrupt(const Scenario &steps);
    Scenario &ignoreInterrupts();
    Scenario &waitEof();
    Scenario &repeat(int times, const Scenario &steps);

    // Misbehaviour
    Scenario &standardError(const QString &line);
    Scenario &exit(int code);
    Scenario &dieBySignal(const QString &name);
    Scenario &ignoreSigterm();
    Scenario &grandchild(int seconds, bool holdsPipe);
    Scenario &flood(qint64 bytes);
    Scenario &floodStandardError(int lines);
    Scenario &deaf(); ///< never reads its input again
    Scenario &closeInput();
    Scenario &closeOutput();

    /** Any other step. */
    Scenario &step(const QJsonObject &step);
    [[nodiscard]] const QJsonArray &steps() const { return m_steps; }

private:
    QJsonArray m_steps;
};

/** The agent, installed in a scratch folder that goes away with this object. */
class ScriptedAgent
{
public:
    ScriptedAgent();
    ~ScriptedAgent(); ///< ends the grandchildren that scenarios left behind

    /** What each start of the agent plays, in order; the last is repeated. */
    void setRuns(const QList<Scenario> &runs);
    void setRun(const Scenario &run) { setRuns({run}); }

    /** The scratch home folder; the agent is its `.local/bin/claude`. */
    [[nodiscard]] QString home() const;
    [[nodiscard]] QString program() const;
    /** A folder that sessions can work in. */
    [[nodiscard]] QString projectFolder() const;
    /** The test's own environment with that home and what the agent needs to find its scenario. */
    [[nodiscard]] QProcessEnvironment environment() const;
    /** The arguments that the agent asks for, for tests that do not make their own. */
    [[nodiscard]] static QStringList arguments();

    [[nodiscard]] int runCount() const;
    // Runs are counted from 1.
    [[nodiscard]] QJsonObject run(int number) const; ///< empty until it has begun
    [[nodiscard]] QStringList argumentsOf(int number) const;
    [[nodiscard]] QByteArray inputOf(int number) const;              ///< every byte so far
    [[nodiscard]] QList<QJsonObject> inputLinesOf(int number) const; ///< whole lines
    [[nodiscard]] qint64 grandchildOf(int number) const;             ///< 0 when there is none

private:
    [[nodiscard]] QString recordPath(int number, const QString &suffix) const;

    QTemporaryDir m_folder;
};

/** A message as a session writes it. */
[[nodiscard]] QByteArray userMessage(const QString &text);

} // namespace Vesk::Test
