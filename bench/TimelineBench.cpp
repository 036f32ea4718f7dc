// How fluidly conversations are drawn: scrolling through a long one, several that grow at once, and answers
// that are made to be slow. Everything is drawn in software, as on a machine without a graphics card.
#include "bench/Conversation.h"
#include "bench/Rounds.h"
#include "claude/ClaudeCLI.h"
#include "sessions/ProjectChat.h"
#include "ui/chat/TimelineView.h"
#include "ui/controls/InstallUi.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace
{

using namespace Vesk;

constexpr int rowCount = 20'000;
constexpr qreal scrollPixels = 200; // a frame, which is three turns of a wheel
constexpr double frameLimitMs = 16; // for 99 of 100 frames
constexpr int streamCount = 3;
constexpr int deltasPerSecond = 200;
constexpr int streamSeconds = 10;
constexpr double streamLimitPercent = 25; // of one core, for all of them
constexpr double stallLimitMs = 100;

// What the main thread has worked: what else runs on the machine has no part in it.
double threadSeconds()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/** Runs the loop until `milliseconds` have passed. */
void runFor(int milliseconds)
{
    // Not quit(), which closes the windows.
    QTimer::singleShot(milliseconds, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

/** Sessions side by side in one window, with agents that only listen. */
class Panes
{
public:
    explicit Panes(int count)
    {
        const QString program = m_folder.filePath(QStringLiteral("claude"));
        QFile file(program);
        if (file.open(QIODevice::WriteOnly)) {
            file.write("#!/bin/sh\nwhile read -r line; do :; done\n");
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            file.close();
        }
        m_locator = std::make_unique<ExecutableLocator>(program);
        installUi(m_engine);
        m_window.resize(1280, 800);
        QQmlComponent component(&m_engine);
        component.setData("import Vesk.Chat\nChatPane {}", {});
        for (int i = 0; i < count; ++i) {
            m_chats.push_back(std::make_unique<ProjectChat>(
                QUuid::createUuid(), QStringLiteral("bench"), m_folder.path(), QStringLiteral("세션"),
                QHash<QString, QString>(), SessionServices {m_locator.get(), nullptr, {}}));
            auto *pane = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
                {{QStringLiteral("chat"), QVariant::fromValue(m_chats.back().get())}}));
            if (!pane)
                qFatal("%s", qPrintable(component.errorString()));
            const qreal width = 1280.0 / count;
            pane->setParent(&m_window);
            pane->setParentItem(m_window.contentItem());
            pane->setPosition({i * width, 0});
            pane->setSize({width, 800});
        }
        m_window.show();
        runFor(300);
    }

    [[nodiscard]] ProjectChat &chat(int i) { return *m_chats[static_cast<size_t>(i)]; }
    [[nodiscard]] TimelineView &view() { return *m_window.findChild<TimelineView *>(); }
    [[nodiscard]] QQuickWindow &window() { return m_window; }

    /** Draws at once what has changed. */
    void draw()
    {
        QEvent request(QEvent::UpdateRequest);
        QCoreApplication::sendEvent(&m_window, &request);
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ExecutableLocator> m_locator;
    std::vector<std::unique_ptr<ProjectChat>> m_chats;
    QQmlEngine m_engine;
    QQuickWindow m_window;
};

/** Processor milliseconds of every turn of the loop while `step` wants another one. */
std::vector<double> turnsOf(Panes &panes, const std::function<bool()> &step)
{
    std::vector<double> turns;
    QTimer timer;
    double last = 0;
    QObject::connect(&timer, &QTimer::timeout, qApp, [&] {
        const double now = threadSeconds();
        if (last > 0)
            turns.push_back((now - last) * 1000);
        last = now;
        if (!step()) {
            timer.stop();
            QCoreApplication::exit();
            return;
        }
        panes.draw();
    });
    timer.start(0);
    QCoreApplication::exec();
    return turns;
}

bool measureScrolling()
{
    Panes panes(1);
    panes.chat(0).messages().reset(Bench::conversation(rowCount));
    runFor(300);
    TimelineView &view = panes.view();
    auto turns = turnsOf(panes, [&view] {
        view.scrollBy(-scrollPixels);
        return view.visibleStart() > 0;
    });
    std::sort(turns.begin(), turns.end());
    const auto share = [&turns](double part) {
        return turns[static_cast<size_t>(part * (turns.size() - 1.0))];
    };
    std::printf("%d rows scrolled in %zu frames: half below %.1f ms, slowest %.1f ms\n", rowCount,
                turns.size(), share(0.5), turns.back());
    return Bench::report("99 of 100 frames while scrolling", share(0.99), "ms", frameLimitMs);
}

QByteArray delta(const QString &text)
{
    const QJsonObject part {{QStringLiteral("type"), QStringLiteral("text_delta")},
                            {QStringLiteral("text"), text}};
    const QJsonObject event {{QStringLiteral("type"), QStringLiteral("content_block_delta")},
                             {QStringLiteral("delta"), part}};
    return QJsonDocument(QJsonObject {{QStringLiteral("type"), QStringLiteral("stream_event")},
                                      {QStringLiteral("event"), event}})
        .toJson(QJsonDocument::Compact);
}

bool measureStreaming()
{
    Panes panes(streamCount);
    for (int i = 0; i < streamCount; ++i) {
        panes.chat(i).messages().reset(Bench::conversation(200));
        panes.chat(i).send(QStringLiteral("환불 흐름을 설명해줘"));
    }
    runFor(3000);
    // An answer in pieces of a few letters, as the agent sends it.
    QString answer;
    for (int part = 0; answer.size() < streamSeconds * deltasPerSecond * 8; ++part)
        answer +=
            QStringLiteral(
                "## %1. 환불이 두 번 기록되는 까닭\n\n취소 웹훅은 **최대 5번**까지 다시 옵니다. "
                "`handleCancel`이 그 번호를 나중에 적습니다.\n\n- 먼저 넣습니다.\n- 있으면 돌려줍니다.\n\n"
                "```cpp\nif (!store.insertOnce(id)) // 이미 있다\n    return Reply::ok(200);\n```\n\n")
                .arg(part);
    int sent = 0;
    double start = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, qApp, [&] {
        // What a frame held up comes right after it, as from a pipe.
        const auto due = static_cast<int>((Bench::now() - start) * deltasPerSecond);
        for (; sent < std::min(due, streamSeconds * deltasPerSecond); ++sent)
            for (int i = 0; i < streamCount; ++i)
                panes.chat(i).handleLine(delta(answer.mid(sent * 8, 8)).toStdString());
    });
    int frames = 0;
    QObject::connect(&panes.window(), &QQuickWindow::frameSwapped, qApp, [&frames] { ++frames; });
    start = Bench::now();
    const double busy = Bench::processorSeconds();
    timer.start(1000 / deltasPerSecond);
    runFor(streamSeconds * 1000);
    timer.stop();
    const double share = (Bench::processorSeconds() - busy) * 100 / (Bench::now() - start);
    std::printf("%d sessions, %d deltas each in %d s, %d frames\n", streamCount, sent, streamSeconds, frames);
    if (sent < streamSeconds * deltasPerSecond * 9 / 10)
        std::printf("the machine is too slow to send %d deltas a second\n", deltasPerSecond);
    return Bench::report("processor while three sessions stream", share, "%", streamLimitPercent);
}

bool measureStall(const char *name, const QString &text)
{
    Panes panes(1);
    int turn = 0;
    const auto turns = turnsOf(panes, [&] {
        if (++turn == 5) {
            ChatMessage message;
            message.id = QUuid::createUuid();
            message.role = ChatMessage::Role::Assistant;
            message.at = QDateTime::currentDateTime();
            message.text = text;
            panes.chat(0).messages().append(message);
        }
        return turn < 300;
    });
    return Bench::report(name, *std::max_element(turns.begin(), turns.end()), "ms", stallLimitMs);
}

bool measureBadInput()
{
    QString table;
    for (int row = 0; row < 50; ++row) {
        for (int column = 0; column < 200; ++column)
            table += row == 1 ? QStringLiteral("|---") : QStringLiteral("|%1.%2 **칸**").arg(row).arg(column);
        table += QStringLiteral("|\n");
    }
    QString code = QStringLiteral("```cpp\n");
    for (int line = 0; line < 20'000; ++line)
        code += QStringLiteral("if (a%1 > 0) return \"b\"; // 글\n").arg(line);
    bool met = measureStall("longest turn: a paragraph of 1 MB",
                            QStringLiteral("긴 글 word ").repeated(1024 * 1024 / 10));
    met = measureStall("longest turn: a table of 200 columns", table) && met;
    met = measureStall("longest turn: 5,000 list items",
                       QStringLiteral("- 항목 `code` **굵게**\n").repeated(5000))
        && met;
    met = measureStall("longest turn: 20,000 lines of code", code) && met;
    return measureStall("longest turn: brackets without an end", QStringLiteral("[a](").repeated(200'000))
        && met;
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QByteArray only(argc > 1 ? argv[1] : "");
    bool met = true;
    if (only.isEmpty() || only == "stream")
        met = measureStreaming() && met;
    if (only.isEmpty() || only == "scroll")
        met = measureScrolling() && met;
    if (only.isEmpty() || only == "bad")
        met = measureBadInput() && met;
    return met ? 0 : 1;
}
