#include "ui/shell/Projects.h"

#include "app/Runtime.h"
#include "core/NewProject.h"
#include "sessions/ProjectChat.h"
#include "ui/controls/ProjectPalette.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Vesk
{

using namespace Qt::StringLiterals;

Projects::Projects(Runtime &runtime, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
{
    connect(&runtime, &Runtime::statusChanged, this, &Projects::loadErrorChanged);
}

QString Projects::loadError() const
{
    return m_keptAside ? QString() : m_runtime.catalogError();
}

QString Projects::catalogPath() const
{
    return m_runtime.catalogPath();
}

QStringList Projects::aliases() const
{
    return projectAliases(m_runtime.catalogEntries());
}

int Projects::nextLane() const
{
    return ProjectPalette::nextLane(m_runtime.catalogEntries());
}

QString Projects::add(const QString &alias, const QString &path, int lane)
{
    if (const auto reason = NewProject::validateFolder(path)) {
        return *reason;
    }
    if (const auto reason = NewProject::validateAlias(alias, aliases())) {
        return *reason;
    }
    if (QString reason = keepUnreadableFile(); !reason.isEmpty()) {
        return reason;
    }
    m_runtime.upsertCatalogEntry({.alias = alias,
                                  .path = QDir::cleanPath(path),
                                  .extraEnv = {},
                                  .colorHex = ProjectPalette::hexForLane(lane)});
    return {};
}

void Projects::setLane(const QString &alias, int lane)
{
    m_runtime.setProjectColor(alias, ProjectPalette::hexForLane(lane));
}

QStringList Projects::liveSessions(const QString &alias) const
{
    QStringList titles;
    for (const ProjectChat *chat : m_runtime.agentStore().sessions(alias)) {
        if (chat->isRunning() || chat->hasRunningBackgroundTask()) {
            titles.append(chat->title());
        }
    }
    return titles;
}

int Projects::sessionCount(const QString &alias) const
{
    return static_cast<int>(m_runtime.agentStore().sessions(alias).size());
}

void Projects::remove(const QString &alias)
{
    m_runtime.removeProject(alias);
}

QString Projects::firstAlias() const
{
    return aliases().value(0);
}

QString Projects::folder(const QString &alias) const
{
    const auto &entries = m_runtime.catalogEntries();
    const auto it = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
    return it == entries.end() ? QString() : it->path;
}

QString Projects::keepUnreadableFile()
{
    if (m_keptAside || m_runtime.catalogError().isEmpty()) {
        return {};
    }
    if (const auto copy = keepCopyAside(m_runtime.catalogPath()); !copy) {
        return u"읽지 못한 목록 파일의 사본을 남기지 못해 저장하지 않았습니다: %1"_s.arg(copy.error().text);
    }
    m_keptAside = true;
    Q_EMIT loadErrorChanged();
    return {};
}

Result<QString> keepCopyAside(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) {
        return QString();
    }
    QString target = path + u".bak"_s;
    for (int number = 2; QFileInfo::exists(target); ++number) {
        target = u"%1.bak-%2"_s.arg(path).arg(number);
    }
    QFile file(path);
    if (!file.copy(target)) {
        return failure(ErrorKind::Unwritable, u"%1: %2"_s.arg(target, file.errorString()));
    }
    return target;
}

} // namespace Vesk
