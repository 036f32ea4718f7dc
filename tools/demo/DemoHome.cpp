#include "DemoHome.h"

#include <QDir>
#include <QFile>

namespace Vesk::Demo
{

DemoHome::DemoHome(const QString &agent)
{
    const QDir home(m_folder.path());
    m_ready = m_folder.isValid() && home.mkpath(QStringLiteral(".local/bin"))
        && home.mkpath(QStringLiteral("src/billing")) && home.mkpath(QStringLiteral("src/handbook"))
        && home.mkpath(QStringLiteral("record"))
        && QFile::link(agent, home.filePath(QStringLiteral(".local/bin/claude")));
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_CACHE_HOME", home.filePath(QStringLiteral("cache")).toUtf8());
    qputenv("SCRIPTED_AGENT_SCENARIO", VESK_DEMO_SCENARIO);
    qputenv("SCRIPTED_AGENT_RECORD", home.filePath(QStringLiteral("record")).toUtf8());
}

QString DemoHome::project(const QString &name) const
{
    return m_folder.filePath(QStringLiteral("src/") + name);
}

} // namespace Vesk::Demo
