#include "ui/chat/ChatLinks.h"

#include "markdown/MarkdownLinks.h"
#include "ui/controls/DesktopOpener.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPointer>
#include <QThreadPool>

#include <algorithm>

namespace Vesk
{

LinkedFiles lookAtLinkedFiles(const QStringList &paths)
{
    LinkedFiles files;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (!info.exists()) {
            continue;
        }
        const auto kind = info.isDir() ? LinkedFile::Kind::Folder
            : info.isFile()            ? LinkedFile::Kind::File
                                       : LinkedFile::Kind::Other;
        files.insert(path, {kind, info.canonicalFilePath(), info.isExecutable()});
    }
    return files;
}

void ChatLinks::setProjectFolder(const QString &folder)
{
    m_project = folder.isEmpty() ? folder : QDir::cleanPath(folder);
    ++m_followed;
}

void ChatLinks::follow(const QString &address, const QString &html)
{
    const LinkFolders folders {m_project, QDir::homePath()};
    auto shown = MarkdownLinks::shownFor(html, address);
    if (shown.isEmpty()) {
        shown << QString();
    }
    const int followed = ++m_followed;
    const auto decide = [address, shown, folders](const LinkedFiles &files) {
        // Which of several texts was chosen cannot be told: the most doubtful one counts.
        LinkDecision worst;
        for (qsizetype i = 0; i < shown.size(); ++i) {
            const auto decision = ChatLinkPolicy::decide({address, shown.at(i)}, folders, files);
            if (i == 0 || decision.action > worst.action) {
                worst = decision;
            }
        }
        return worst;
    };
    const auto paths = ChatLinkPolicy::pathsIn(address, folders);
    if (paths.isEmpty()) {
        carryOut(decide({}));
        return;
    }
    QThreadPool::globalInstance()->start(
        [paths, decide, followed, project = folders.project, self = QPointer<ChatLinks>(this)] {
            const auto files = lookAtLinkedFiles(paths + QStringList {project});
            const auto decision = decide(files);
            const auto path =
                std::ranges::find_if(paths, [&](const auto &meant) { return files.contains(meant); });
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [decision, followed, self, paths, path = path == paths.end() ? QString() : *path] {
                    if (!self || self->m_followed != followed) {
                        return;
                    }
                    if (decision.isMissing) {
                        self->stopAtMissing(decision, paths);
                    } else {
                        self->carryOut(decision, path);
                    }
                },
                Qt::QueuedConnection);
        });
}

void ChatLinks::openAnyway()
{
    if (canOpen()) {
        open(m_stopped);
    }
}

void ChatLinks::copyAddress() const
{
    QGuiApplication::clipboard()->setText(m_stopped.address);
}

void ChatLinks::carryOut(const LinkDecision &decision, const QString &path)
{
    if (decision.action != LinkDecision::Action::Refuse && decision.url.isLocalFile() && showsItself
        && showsItself(path, decision.url.toLocalFile())) {
        return;
    }
    switch (decision.action) {
    case LinkDecision::Action::OpenInBrowser:
    case LinkDecision::Action::OpenFile:
        open(decision);
        return;
    case LinkDecision::Action::Ask:
    case LinkDecision::Action::Refuse:
        stop(decision);
    }
}

void ChatLinks::stopAtMissing(const LinkDecision &decision, const QStringList &meant)
{
    LinkDecision stopped = decision;
    const auto issue = std::ranges::find_if(
        meant, [this](const auto &path) { return showsItself && showsItself(path, {}); });
    if (issue != meant.end()) {
        stopped.reason = QStringLiteral("링크의 이슈 파일을 찾지 못했습니다 — ") + *issue;
    }
    stop(stopped);
}

void ChatLinks::open(const LinkDecision &decision)
{
    if (!DesktopOpener::open(decision.url)) {
        stop({LinkDecision::Action::Refuse,
              {},
              decision.address,
              QStringLiteral("이 링크를 열 프로그램을 찾지 못했습니다.")});
    }
}

void ChatLinks::stop(const LinkDecision &decision)
{
    m_stopped = decision;
    Q_EMIT stopped();
}

} // namespace Vesk
