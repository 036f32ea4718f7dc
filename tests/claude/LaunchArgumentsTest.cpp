#include "claude/LaunchArguments.h"

#include "claude/UnsupervisedToolDenylist.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Vesk;

namespace
{

const QStringList head {
    QStringLiteral("-p"),          QStringLiteral("--input-format"),
    QStringLiteral("stream-json"), QStringLiteral("--output-format"),
    QStringLiteral("stream-json"), QStringLiteral("--include-partial-messages"),
    QStringLiteral("--verbose"),   QStringLiteral("--model"),
    QStringLiteral("opus"),        QStringLiteral("--effort"),
    QStringLiteral("max"),         QStringLiteral("--setting-sources"),
};

} // namespace

class LaunchArgumentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsByKindOfRun_data()
    {
        QTest::addColumn<QString>("run"); // r remote, i interactive, u unattended schedule
        QTest::addColumn<AgentPermissionMode>("mode");
        QTest::addColumn<QString>("sessionId");
        QTest::addColumn<QString>("expected");

        using Mode = AgentPermissionMode;
        QTest::newRow("desk")
            << "i" << Mode::Readonly << ""
            << "user,project,local --permission-mode default --permission-prompt-tool stdio "
               "--allowedTools Read Grep Glob Bash(git_log:*) Read(//a)";
        QTest::newRow("desk, full access asks nothing")
            << "i" << Mode::Full << "s-1"
            << "user,project,local --resume s-1 --permission-mode bypassPermissions "
               "--allowedTools Bash(git_log:*) Read(//a)";
        QTest::newRow("print")
            << "" << Mode::Plan << ""
            << "user,project,local --permission-mode plan --allowedTools Bash(git_log:*) Read(//a)";
        QTest::newRow("remote is never handed auto")
            << "ri" << Mode::Auto << ""
            << "user,project --permission-mode acceptEdits --permission-prompt-tool stdio "
               "--disallowedTools Bash WebFetch WebSearch --allowedTools Read(//a)";
        QTest::newRow("remote schedule has no limits of its own")
            << "ru" << Mode::Full << ""
            << "user,project --permission-mode acceptEdits "
               "--disallowedTools Bash WebFetch WebSearch --allowedTools Read(//a)";
        QTest::newRow("unattended")
            << "u" << Mode::DontAsk << "s-2"
            << "user,project --resume s-2 --permission-mode dontAsk "
               "--fallback-model sonnet,haiku --max-budget-usd 1.5 "
               "--disallowedTools WebFetch WebSearch --allowedTools Bash(git_log:*) Read(//a)";
        QTest::newRow("schedule with a person at it")
            << "ui" << Mode::AcceptEdits << ""
            << "user,project --permission-mode acceptEdits --permission-prompt-tool stdio "
               "--allowedTools Bash(git_log:*) Read(//a)";
    }

    void argumentsByKindOfRun()
    {
        QFETCH(QString, run);
        QFETCH(AgentPermissionMode, mode);
        QFETCH(QString, sessionId);
        QFETCH(QString, expected);
        LaunchOptions options;
        options.cwd = QStringLiteral("/nowhere");
        options.permissionMode = mode;
        options.effort = AgentEffort::Ultracode;
        options.isUnattendedSchedule = run.contains(u'u');
        options.extraAllowedTools = {QStringLiteral("--danger"), QStringLiteral("Bash(git_log:*)")};
        options.unattendedMaxBudgetUSD = 1.5;
        options.unattendedFallbackModels = {QStringLiteral("sonnet"), QStringLiteral("-x"),
                                            QStringLiteral("a,b"),    QStringLiteral("c\n"),
                                            QStringLiteral("  "),     QStringLiteral("haiku")};
        options.sessionId = sessionId;
        QCOMPARE(buildArgs(options, run.contains(u'r'), {QStringLiteral("/a")}, AnswerLanguage::Auto,
                           run.contains(u'i')),
                 head + expected.split(u' '));
    }

    void limitsThatSayNothingAreLeftOut()
    {
        LaunchOptions options;
        options.isUnattendedSchedule = true;
        options.unattendedMaxBudgetUSD = 0;
        options.unattendedFallbackModels = {QStringLiteral("-x")};
        options.extraAllowedTools = {QStringLiteral("Bash (ls)"), QStringLiteral("WebFetch"),
                                     QStringLiteral("WebSearch(x)")};
        const QStringList args = buildArgs(options, false, {}, AnswerLanguage::Auto, false);
        for (const char *flag : {"--fallback-model", "--max-budget-usd", "--disallowedTools", "--resume"})
            QVERIFY2(!args.contains(QLatin1StringView(flag)), flag);
    }

    void serversAndLanguageComeBeforeTheConversation()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral(".mcp.json"));
        const auto write = [&](const char *text) {
            QFile file(path);
            return file.open(QIODevice::WriteOnly) && file.write(text) >= 0;
        };
        const QList<const char *> useless {"", "[]", "{}", R"({"mcpServers":[]})", R"({"mcpServers":{})"};
        for (const char *text : useless) {
            QVERIFY(write(text));
            QVERIFY2(mcpConfigArgs(folder.path()).isEmpty(), text);
        }
        QVERIFY(write(R"({"mcpServers":{}})"));
        LaunchOptions options;
        options.cwd = folder.path();
        options.sessionId = QStringLiteral("s");
        const QStringList args = buildArgs(options, false, {}, AnswerLanguage::English, true);
        const qsizetype servers = args.indexOf(QStringLiteral("--mcp-config"));
        QCOMPARE(args.value(servers + 1), path);
        QCOMPARE(args.value(servers + 2), QStringLiteral("--append-system-prompt"));
        QCOMPARE(args.value(servers + 4), QStringLiteral("--resume"));
    }

    void budgets_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("fraction") << 1.5 << "1.5";
        QTest::newRow("whole") << 2.0 << "2";
        QTest::newRow("zeros before the point stay") << 100.0 << "100";
        QTest::newRow("smallest") << 1e-6 << "0.000001";
        QTest::newRow("too small") << 9e-7 << "";
        QTest::newRow("zero") << 0.0 << "";
        QTest::newRow("negative") << -1.0 << "";
        QTest::newRow("nan") << std::nan("") << "";
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << "";
    }

    void budgets()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(budgetArgument(value).value_or(QString()), text);
    }

    void attachmentsAreEscapedForTheRuleSyntax()
    {
        QCOMPARE(attachmentReadRules({QStringLiteral(R"(/a b/[1]*?(x)\한)")}),
                 QStringList {QStringLiteral(R"(Read(//a b/\[1\]\*\?\(x\)\\한))")});
    }

    void overridesWinOverTheEnvironment()
    {
        QProcessEnvironment base;
        base.insert(QStringLiteral("PATH"), QStringLiteral("/bin"));
        base.insert(QStringLiteral("CLAUDE_CONFIG_DIR"), QStringLiteral("/old"));
        const auto built =
            buildEnvironment(base, {{QStringLiteral("CLAUDE_CONFIG_DIR"), QStringLiteral("/new")}});
        QCOMPARE(built.value(QStringLiteral("PATH")), QStringLiteral("/bin"));
        QCOMPARE(built.value(QStringLiteral("CLAUDE_CONFIG_DIR")), QStringLiteral("/new"));
        QCOMPARE(built.keys().size(), 2);
    }

    void toolsThatGlobalRulesOpen()
    {
        const QStringList rules {QStringLiteral(" WebSearch "), QStringLiteral("Bash(git log:*)"),
                                 QStringLiteral("(x)"), QStringLiteral("Read")};
        QCOMPARE(UnsupervisedToolDenylist::openedByGlobalAllow(rules),
                 QStringList({QStringLiteral("Bash"), QStringLiteral("WebSearch")}));
        QCOMPARE(UnsupervisedToolDenylist::denied(rules), QStringList {QStringLiteral("WebFetch")});
    }
};

VESK_TEST(LaunchArgumentsTest)
#include "LaunchArgumentsTest.moc"
