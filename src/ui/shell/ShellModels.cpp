#include "ui/shell/ShellModels.h"

#include "app/Runtime.h"
#include "sessions/ProjectChat.h"
#include "ui/controls/ProjectPalette.h"

#include <QDir>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView projectPrefix("project:");

QUuid sessionId(const QString &key)
{
    return QUuid::fromString(key);
}

} // namespace

SessionRowsModel::SessionRowsModel(Runtime &runtime, SessionRoster &roster, QObject *parent)
    : KeyedRowsModel(parent)
    , m_runtime(runtime)
    , m_roster(roster)
{
    connect(&roster, &SessionRoster::changed, this,
            [this](const QUuid &id) { noteChanged(id.toString(QUuid::WithoutBraces)); });
    // Names and colours of projects stand beside their sessions everywhere.
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &SessionRowsModel::noteAllChanged);
}

QHash<int, QByteArray> SessionRowsModel::roleNames() const
{
    return {{KeyRole, "key"},
            {KindRole, "kind"},
            {ChatRole, "chat"},
            {AliasRole, "alias"},
            {PathRole, "path"},
            {LaneRole, "lane"},
            {ColorHexRole, "colorHex"},
            {TitleRole, "title"},
            {StateRole, "sessionState"},
            {StateTextRole, "stateText"},
            {TimeTextRole, "timeText"},
            {UnseenRole, "unseen"},
            {ReasonRole, "reason"},
            {PlaceRole, "place"},
            {ShownRole, "shown"}};
}

QVariant SessionRowsModel::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const QString &key = keys().at(index.row());
    if (role == KeyRole) {
        return key;
    }
    if (key.startsWith(projectPrefix)) {
        const QString alias = key.mid(projectPrefix.size());
        const auto &entries = m_runtime.catalogEntries();
        const auto it = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
        return it == entries.end() ? QVariant() : projectData(it - entries.begin(), role);
    }
    const RosterSession *session = m_roster.find(sessionId(key));
    return session ? sessionData(*session, role) : QVariant();
}

QVariant SessionRowsModel::sessionData(const RosterSession &session, int role) const
{
    switch (role) {
    case KindRole:
        return u"session"_s;
    case ChatRole:
        return QVariant::fromValue(session.chat);
    case AliasRole:
        return session.alias();
    case PathRole:
        return ProjectPalette::shortenedPath(session.chat->cwd(), QDir::homePath());
    case TitleRole:
    case Qt::DisplayRole:
        return session.title();
    case StateRole:
        return static_cast<int>(sessionState(session.facts()));
    case StateTextRole:
        return sessionStateText(session.facts());
    case TimeTextRole:
        return session.shownTime;
    case UnseenRole:
        return session.unseen;
    case ReasonRole:
        return myTurnReason(session.facts(), m_roster.now());
    default:
        return projectColour(session.alias(), role);
    }
}

QVariant SessionRowsModel::projectData(qsizetype position, int role) const
{
    const ProjectCatalogEntry &entry = m_runtime.catalogEntries().at(position);
    switch (role) {
    case KindRole:
        return u"project"_s;
    case ChatRole:
        return QVariant::fromValue<ProjectChat *>(nullptr);
    case AliasRole:
    case TitleRole:
    case Qt::DisplayRole:
        return entry.alias;
    case PathRole:
        return ProjectPalette::shortenedPath(entry.path, QDir::homePath());
    case StateRole:
        return static_cast<int>(SessionState::Idle);
    case StateTextRole:
    case TimeTextRole:
    case ReasonRole:
        return QString();
    case UnseenRole:
        return false;
    default:
        return projectColour(entry.alias, role);
    }
}

QVariant SessionRowsModel::projectColour(const QString &alias, int role) const
{
    const auto &entries = m_runtime.catalogEntries();
    const auto it = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
    if (role == LaneRole) {
        return it == entries.end() ? 0 : ProjectPalette::laneOf(*it, it - entries.begin());
    }
    if (role == ColorHexRole) {
        return it == entries.end() ? QString() : it->colorHex.value_or(QString());
    }
    return {};
}

int SessionRowsModel::rowOf(const QString &key) const
{
    return static_cast<int>(keys().indexOf(key));
}

QString SessionRowsModel::keyAt(int row) const
{
    return keys().value(row);
}

int SessionRowsModel::rowStartingWith(const QString &letters, int after) const
{
    for (int step = 1; step <= count(); ++step) {
        const int row = (after + step) % count();
        if (index(row).data(TitleRole).toString().startsWith(letters, Qt::CaseInsensitive)) {
            return row;
        }
    }
    return -1;
}

SessionTabsModel::SessionTabsModel(Runtime &runtime, SessionRoster &roster, QObject *parent)
    : SessionRowsModel(runtime, roster, parent)
{
    connect(&roster, &SessionRoster::sessionAdded, this, &SessionTabsModel::update);
    connect(&roster, &SessionRoster::sessionRemoved, this, &SessionTabsModel::update);
    update();
}

QVariant SessionTabsModel::data(const QModelIndex &index, int role) const
{
    if ((role == PlaceRole || role == ShownRole) && holds(index)) {
        const SessionPlace place = m_places.value(keys().at(index.row()));
        return role == PlaceRole ? QVariant(place.rect) : QVariant(place.shown);
    }
    return SessionRowsModel::data(index, role);
}

void SessionTabsModel::setPlaces(const QHash<QString, SessionPlace> &places)
{
    const auto before = std::exchange(m_places, places);
    for (auto it = places.cbegin(); it != places.cend(); ++it) {
        if (before.value(it.key()) != it.value()) {
            noteChanged(it.key());
        }
    }
}

void SessionTabsModel::update()
{
    QStringList rows;
    for (const auto &session : roster().sessions()) {
        rows.append(session->key());
    }
    setKeys(rows);
}

SidebarModel::SidebarModel(Runtime &runtime, SessionRoster &roster, QObject *parent)
    : SessionRowsModel(runtime, roster, parent)
{
    connect(&roster, &SessionRoster::sessionAdded, this, &SidebarModel::update);
    connect(&roster, &SessionRoster::sessionRemoved, this, &SidebarModel::update);
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &SidebarModel::update);
    update();
}

void SidebarModel::update()
{
    QStringList rows;
    for (const ProjectCatalogEntry &entry : runtime().catalogEntries()) {
        const QString heading = projectPrefix + entry.alias;
        if (rows.contains(heading)) {
            continue; // a file may name one alias twice; the first one counts
        }
        rows.append(heading);
        for (const auto &session : roster().sessions()) {
            if (session->alias() == entry.alias) {
                rows.append(session->key());
            }
        }
    }
    setKeys(rows);
}

MyTurnModel::MyTurnModel(Runtime &runtime, SessionRoster &roster, QObject *parent)
    : SessionRowsModel(runtime, roster, parent)
{
    connect(&roster, &SessionRoster::myTurnChanged, this, &MyTurnModel::update);
    update();
}

void MyTurnModel::update()
{
    QStringList rows;
    for (const RosterSession *session : roster().myTurn()) {
        rows.append(session->key());
    }
    setKeys(rows);
}

} // namespace Vesk
