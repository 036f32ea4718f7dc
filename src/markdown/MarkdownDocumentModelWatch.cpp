// Hearing of what others do to the file.
#include "markdown/DocumentFlight_p.h"
#include "markdown/DocumentFolders.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace Vesk
{
namespace
{

QString errnoText(int number)
{
    const QString message = qt_error_string(number);
    return QStringLiteral("errno %1 %2")
        .arg(number)
        .arg(message.isEmpty() ? QStringLiteral("알 수 없는 오류") : message);
}

} // namespace

void MarkdownDocumentModel::startWatching()
{
    stopWatching();
    m_watchRequested = true;
    armWatch();
    // For what happened before there was a watch.
    m_look.start(m_delays.settle);
}

void MarkdownDocumentModel::stopWatching()
{
    m_watchRequested = false;
    m_lookWaiting = false;
    m_look.stop();
    dropWatches();
}

void MarkdownDocumentModel::dropWatches()
{
    m_watcher.reset();
    m_dirWatch.reset();
}

void MarkdownDocumentModel::armWatch()
{
    dropWatches();
    auto opened = FileWatch::open(m_path, FileWatch::Kind::File, [this] { handleExternalChange(); });
    if (opened)
        m_watcher = *std::move(opened);
    else if (QFile::exists(m_path))
        logError(QStringLiteral("md watch failed: ") + m_path + QStringLiteral(" — ")
                 + errnoText(opened.error()) + QStringLiteral(". 이 문서의 외부 변경 감지가 꺼진다."));
    else
        watchParentDirectory();
}

// Arms anew first, as another editor may have put a new file in the place of the watched one, and looks then,
// so that nothing happens unseen between the two.
void MarkdownDocumentModel::handleExternalChange()
{
    armWatch();
    if (!m_look.isActive())
        m_look.start(m_delays.settle);
}

void MarkdownDocumentModel::lookAtChange()
{
    if (m_flight)
        m_lookWaiting = true;
    else
        fly({DiskJob::Kind::Look, m_path, {}, {}});
}

void MarkdownDocumentModel::applyLook(const DiskSight &seen)
{
    noteSight(seen, QStringLiteral("external change"));
    if (!seen.exists) {
        setConflict(m_dirty ? MaybeConflict(DocumentConflict::Missing) : std::nullopt);
    } else if (!seen.text) {
        cancelAutosave();
        setConflict(DocumentConflict::Unreadable);
    } else if (!m_dirty || *seen.text == m_text) {
        cancelAutosave();
        m_firstDirtyAt.reset();
        publish(*seen.text, *seen.text, std::nullopt);
    } else if (m_conflict || *seen.text != m_savedText) {
        cancelAutosave();
        setConflict(DocumentConflict::ExternalChange);
    } // else the event told of our own write, behind which more was typed
}

void MarkdownDocumentModel::watchParentDirectory()
{
    const QString parent = folderOf(m_path);
    const auto anchor = nearestExistingAncestor(m_path);
    const auto failed = [&](const QString &why) {
        logError(QStringLiteral("md watch fallback failed: ") + m_path + QStringLiteral(" — ") + why
                 + QStringLiteral(". 이 문서의 외부 변경 감지가 꺼진다."));
    };
    if (!anchor) {
        if (!parent.isEmpty())
            failed(QStringLiteral("존재하는 조상 폴더가 없다"));
        return;
    }
    QString folder = *anchor;
    for (;;) {
        auto opened = FileWatch::open(folder, FileWatch::Kind::Folder, [this] { noteParentEvent(); });
        if (opened) {
            m_dirWatch = DirWatch {*std::move(opened), folder, inodeOf(folder), anchor};
            break;
        }
        const QString above = folderOf(folder);
        if (above.isEmpty() || above == folder) {
            failed(errnoText(opened.error()));
            return;
        }
        folder = above;
    }
    ++m_parentWatchArmCount;
    if (folder != parent)
        logInfo(QStringLiteral("md watch fallback: ") + QFileInfo(m_path).fileName()
                + QStringLiteral(" — 부모 폴더(") + parent + QStringLiteral(")가 없어 ")
                + QString::number(levelsBetween(folder, parent)) + QStringLiteral("단계 위(") + folder
                + QStringLiteral(")를 감시한다. 폴더 워처는 직속 항목만 보므로 이 구간에는 파일 복귀를 "
                                 "즉시 못 잡고, 중간 폴더가 생길 때 한 단계씩 내려와 회복한다."));
    // What came back before the folder was watched gave no event.
    QTimer::singleShot(0, this, [this, armed = m_parentWatchArmCount] {
        if (m_dirWatch && armed == m_parentWatchArmCount)
            noteParentEvent();
    });
}

void MarkdownDocumentModel::noteParentEvent()
{
    if (QFile::exists(m_path))
        handleExternalChange();
    else
        rearmParentWatcherIfStale();
}

void MarkdownDocumentModel::rearmParentWatcherIfStale()
{
    if (!m_dirWatch)
        return;
    const bool sound = m_dirWatch->watcher->isAlive() && QFileInfo(m_dirWatch->path).isDir()
        && inodeOf(m_dirWatch->path) == m_dirWatch->inode;
    if (sound && nearestExistingAncestor(m_path) == m_dirWatch->anchor)
        return;
    dropWatches();
    watchParentDirectory();
}

} // namespace Vesk
