#include "ui/shell/AddProject.h"

#include "core/NewProject.h"
#include "ui/shell/Projects.h"

#include <QDir>

namespace Vesk
{

AddProject::AddProject(Projects &projects, QObject *parent)
    : QObject(parent)
    , m_projects(projects)
{
}

void AddProject::begin(const QString &folder)
{
    m_folder.clear();
    m_alias.clear();
    m_saveReason.clear();
    m_aliasTyped = false;
    m_lane = m_projects.nextLane();
    setFolder(folder);
}

bool AddProject::submit()
{
    if (!canAdd()) {
        return false;
    }
    m_saveReason = m_projects.add(m_alias, path(), m_lane);
    Q_EMIT changed();
    return m_saveReason.isEmpty();
}

void AddProject::setFolder(const QString &folder)
{
    m_folder = folder;
    if (!m_aliasTyped) {
        m_alias = m_folder.isEmpty() ? QString() : NewProject::proposeAlias(path(), m_projects.aliases());
    }
    judge();
}

void AddProject::setAlias(const QString &alias)
{
    if (alias != m_alias) {
        m_alias = alias;
        m_aliasTyped = !alias.isEmpty();
        judge();
    }
}

void AddProject::setLane(int lane)
{
    m_lane = lane;
    Q_EMIT changed();
}

bool AddProject::canAdd() const
{
    return !m_folder.isEmpty() && !m_alias.isEmpty() && m_folderReason.isEmpty() && m_aliasReason.isEmpty();
}

QString AddProject::path() const
{
    const bool home = m_folder == QLatin1Char('~') || m_folder.startsWith(QLatin1StringView("~/"));
    return QDir::cleanPath(home ? QDir::homePath() + m_folder.mid(1) : m_folder);
}

void AddProject::judge()
{
    m_folderReason = m_folder.isEmpty() ? QString() : NewProject::validateFolder(path()).value_or(QString());
    const bool nothingYet = m_alias.isEmpty() && m_folder.isEmpty();
    m_aliasReason =
        nothingYet ? QString() : NewProject::validateAlias(m_alias, m_projects.aliases()).value_or(QString());
    m_saveReason.clear();
    Q_EMIT changed();
}

} // namespace Vesk
