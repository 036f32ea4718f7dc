#include "DemoPlayer.h"

#include "ui/controls/Theme.h"

#include <QDir>
#include <QImage>
#include <QQuickWindow>

#include <chrono>

namespace Vesk::Demo
{

using namespace std::chrono_literals;

namespace
{

constexpr auto typingPause = 28ms;
constexpr auto sendPause = 500ms;
constexpr auto readingPause = 1200ms; // a person looks before answering
constexpr auto repaintPause = 250ms;

} // namespace

DemoPlayer::DemoPlayer(ProjectChat &chat, QQuickWindow &window, Theme &theme, Options options)
    : m_chat(chat)
    , m_window(window)
    , m_theme(theme)
    , m_options(std::move(options))
    , m_messages {QStringLiteral(
                      "결제 취소 웹훅이 두 번 오면 환불이 두 번 기록돼. 원인을 찾아 고치고 테스트도 붙여줘."),
                  QStringLiteral("고친 뒤에는 변경 이력 문서에도 한 줄 남겨줘")}
{
    m_typing.setInterval(typingPause);
    connect(&m_typing, &QTimer::timeout, this, &DemoPlayer::typeCharacter);
    connect(&m_chat, &ProjectChat::isRunningChanged, this, &DemoPlayer::onRunningChanged);
    connect(&m_chat, &ProjectChat::pendingPromptChanged, this, &DemoPlayer::onPrompt);
}

void DemoPlayer::play()
{
    QTimer::singleShot(sendPause, this, &DemoPlayer::typeNext);
}

void DemoPlayer::typeNext()
{
    if (m_messages.isEmpty()) {
        Q_EMIT finished();
        return;
    }
    m_typed.clear();
    m_typing.start();
}

void DemoPlayer::typeCharacter()
{
    const QString &message = m_messages.constFirst();
    m_typed = message.first(m_typed.size() + 1);
    m_chat.setComposerInput(m_typed);
    if (m_typed.size() < message.size())
        return;
    m_typing.stop();
    QTimer::singleShot(sendPause, this, [this] {
        m_chat.send(m_messages.takeFirst());
        if (m_options.unattended && !std::exchange(m_midTurnShot, true))
            QTimer::singleShot(3s, this, [this] { takeShots(QStringLiteral("running"), [] {}); });
    });
}

void DemoPlayer::onRunningChanged()
{
    if (m_chat.isRunning())
        return;
    const QString name = QStringLiteral("turn-%1").arg(m_messages.isEmpty() ? 2 : 1);
    QTimer::singleShot(readingPause, this, [this, name] { takeShots(name, [this] { typeNext(); }); });
}

void DemoPlayer::onPrompt()
{
    if (!m_options.unattended || (!m_chat.pendingPermission() && !m_chat.pendingQuestion()))
        return;
    const QString name =
        m_chat.pendingPermission() ? QStringLiteral("permission") : QStringLiteral("question");
    if (auto *workspace = m_window.property("workspace").value<QObject *>())
        workspace->setProperty("backgroundShown", m_chat.pendingQuestion().has_value());
    QTimer::singleShot(readingPause, this, [this, name] { takeShots(name, [this] { answer(); }); });
}

void DemoPlayer::answer()
{
    if (m_chat.pendingPermission()) {
        m_chat.respondToPermission(PermissionChoice::Once);
    } else if (const auto &request = m_chat.pendingQuestion()) {
        QList<QuestionAnswer> answers;
        for (const auto &question : request->questions) {
            QuestionAnswer chosen;
            if (!question.options.isEmpty())
                chosen.selected = {question.options.constFirst().label};
            answers.append(chosen);
        }
        m_chat.respondToQuestion(answers);
    }
}

void DemoPlayer::takeShots(const QString &name, std::function<void()> then)
{
    if (m_options.shots.isEmpty()) {
        then();
        return;
    }
    const auto grab = [this, name](const QString &theme) {
        const QString path = QDir(m_options.shots).filePath(name + u'-' + theme + QStringLiteral(".png"));
        if (m_window.grabWindow().save(path))
            m_saved.append(path);
    };
    m_theme.setMode(QStringLiteral("dark"));
    QTimer::singleShot(repaintPause, this, [this, grab, then = std::move(then)] {
        grab(QStringLiteral("dark"));
        m_theme.setMode(QStringLiteral("light"));
        QTimer::singleShot(repaintPause, this, [this, grab, then] {
            grab(QStringLiteral("light"));
            m_theme.setMode(QStringLiteral("dark"));
            then();
        });
    });
}

QString DemoPlayer::transcript() const
{
    QString out;
    for (const ChatMessage &row : m_chat.messages().rows()) {
        switch (row.role) {
        case ChatMessage::Role::User:
            out += QStringLiteral("\n나: %1\n").arg(row.text);
            break;
        case ChatMessage::Role::Assistant:
            out += u'\n' + row.text.trimmed() + u'\n';
            break;
        case ChatMessage::Role::Activity:
            out += QStringLiteral("  -- %1\n").arg(row.text);
            break;
        case ChatMessage::Role::Tools:
            for (const ToolActivity &tool : row.tools)
                out += QStringLiteral("  %1 %2\n")
                           .arg(QChar(tool.outcome == ToolActivity::Outcome::Failed ? u'✗' : u'✓'),
                                tool.summary);
        }
    }
    return out;
}

} // namespace Vesk::Demo
