#include "ui/shell/Settings.h"

#include "app/Runtime.h"
#include "ui/controls/ProjectPalette.h"

#include <QCoreApplication>
#include <QDir>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

struct Section {
    QString id; ///< as the preferences keep it
    QString title;
    QString icon;
    QString file;
};

const QList<Section> &settingsTable()
{
    static const QList<Section> table {
        {u"general"_s, u"일반"_s, u"settings"_s, u"SettingsGeneral.qml"_s},
        {u"files"_s, u"파일 위치"_s, u"folder"_s, u"SettingsFiles.qml"_s},
        {u"about"_s, u"Vesk 정보"_s, u"info"_s, u"SettingsAbout.qml"_s},
    };
    return table;
}

QString atHome(const QString &path)
{
    return ProjectPalette::shortenedPath(path, QDir::homePath());
}

QList<SettingsPlaces::Place> placesOf(Runtime &runtime)
{
    return {
        {u"프로젝트 목록"_s, runtime.catalogPath()},
        {u"감사 기록"_s, runtime.auditLogger().fileURL()},
        {u"비밀값"_s, runtime.writableSecrets().url()},
        {u"환경설정"_s, runtime.preferences().path()},
    };
}

} // namespace

int SettingsSections::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(settingsTable().size());
}

QVariant SettingsSections::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const Section &section = settingsTable().at(index.row());
    switch (role) {
    case IdRole:
        return section.id;
    case TitleRole:
    case Qt::DisplayRole:
        return section.title;
    case IconRole:
        return section.icon;
    case FileRole:
        return section.file;
    default:
        return {};
    }
}

QHash<int, QByteArray> SettingsSections::roleNames() const
{
    return {{IdRole, "sectionId"}, {TitleRole, "title"}, {IconRole, "iconName"}, {FileRole, "file"}};
}

int SettingsSections::rowOf(const QString &id) const
{
    const auto &table = settingsTable();
    const auto it = std::ranges::find(table, id, &Section::id);
    return it == table.end() ? 0 : static_cast<int>(it - table.begin());
}

QString SettingsSections::idAt(int row) const
{
    return index(row).data(IdRole).toString();
}

QString SettingsSections::fileAt(int row) const
{
    return index(row).data(FileRole).toString();
}

SettingsPlaces::SettingsPlaces(QList<Place> places, QObject *parent)
    : QAbstractListModel(parent)
    , m_places(std::move(places))
{
}

int SettingsPlaces::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_places.size());
}

QVariant SettingsPlaces::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const Place &place = m_places.at(index.row());
    switch (role) {
    case NameRole:
    case Qt::DisplayRole:
        return place.name;
    case PathRole:
        return place.path;
    case ShownPathRole:
        return atHome(place.path);
    default:
        return {};
    }
}

QHash<int, QByteArray> SettingsPlaces::roleNames() const
{
    return {{NameRole, "name"}, {PathRole, "path"}, {ShownPathRole, "shownPath"}};
}

Settings::Settings(Runtime &runtime, ViewSettings &view, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_view(view)
    , m_places(placesOf(runtime))
{
    connect(&runtime.preferences(), &Preferences::changed, this, [this](const QString &key) {
        if (key == PreferenceKey::settingsPane) {
            Q_EMIT sectionChanged();
        }
    });
    connect(&runtime.locator(), &ExecutableLocator::resolved, this, &Settings::agentPathChanged);
}

int Settings::section() const
{
    return m_sections.rowOf(m_runtime.preferences().settingsPane());
}

void Settings::setSection(int row)
{
    if (const QString id = m_sections.idAt(row); !id.isEmpty()) {
        m_runtime.preferences().setSettingsPane(id);
    }
}

QString Settings::version() const
{
    return QCoreApplication::applicationVersion();
}

QString Settings::qtVersion() const
{
    return QString::fromLatin1(qVersion());
}

QString Settings::agentPath() const
{
    return atHome(m_runtime.locator().path());
}

} // namespace Vesk
