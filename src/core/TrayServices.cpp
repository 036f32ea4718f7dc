#include "core/TrayServices_p.h"

#include <QDBusMetaType>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int rootId = 0;
// Headings and separators; actions have the numbers below.
constexpr int firstPassiveId = 1'000'000;

} // namespace

// QtDBus finds these by their arguments.

QDBusArgument &operator<<(QDBusArgument &argument, const TrayPicture &picture)
{
    argument.beginStructure();
    argument << picture.width << picture.height << picture.argb;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayPicture &picture)
{
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.argb;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayToolTip &tip)
{
    argument.beginStructure();
    argument << tip.icon << tip.pictures << tip.title << tip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayToolTip &tip)
{
    argument.beginStructure();
    argument >> tip.icon >> tip.pictures >> tip.title >> tip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuNode &node)
{
    argument.beginStructure();
    argument << node.id << node.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const TrayMenuNode &child : node.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuNode &node)
{
    argument.beginStructure();
    argument >> node.id >> node.properties;
    argument.beginArray();
    node.children.clear();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        node.children.append(qdbus_cast<TrayMenuNode>(child.variant()));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuProperties &item)
{
    argument.beginStructure();
    argument << item.id << item.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuProperties &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const TrayMenuEvent &event)
{
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, TrayMenuEvent &event)
{
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerTrayTypes()
{
    qDBusRegisterMetaType<TrayPicture>();
    qDBusRegisterMetaType<TrayPictures>();
    qDBusRegisterMetaType<TrayToolTip>();
    qDBusRegisterMetaType<TrayMenuNode>();
    qDBusRegisterMetaType<TrayMenuProperties>();
    qDBusRegisterMetaType<TrayMenuPropertiesList>();
    qDBusRegisterMetaType<TrayMenuEvent>();
    qDBusRegisterMetaType<TrayMenuEvents>();
    qDBusRegisterMetaType<QList<int>>();
}

void TrayItemService::setFace(const TrayFace &face)
{
    const TrayFace before = std::exchange(m_face, face);
    if (before.pictures != face.pictures) {
        Q_EMIT NewIcon();
        Q_EMIT NewAttentionIcon();
    }
    if (before.toolTip != face.toolTip)
        Q_EMIT NewToolTip();
    if (before.needsAttention != face.needsAttention)
        Q_EMIT NewStatus(status());
}

QString TrayItemService::status() const
{
    return m_face.needsAttention ? u"NeedsAttention"_s : u"Active"_s;
}

TrayToolTip TrayItemService::toolTip() const
{
    return {.icon = {}, .pictures = {}, .title = title(), .text = m_face.toolTip};
}

QDBusObjectPath TrayItemService::menu() const
{
    return QDBusObjectPath(u"/StatusNotifierItem/Menu"_s);
}

void TrayItemService::Activate(int /*x*/, int /*y*/)
{
    if (onActivate)
        onActivate();
}

void TrayItemService::SecondaryActivate(int x, int y)
{
    Activate(x, y);
}

void TrayItemService::ContextMenu(int /*x*/, int /*y*/)
{
    // The desktop draws the menu.
}

void TrayItemService::Scroll(int /*delta*/, const QString & /*orientation*/) { }

void TrayItemService::ProvideXdgActivationToken(const QString &token)
{
    m_token = token;
}

TrayMenuService::TrayMenuService(std::function<QList<TrayMenuEntry>()> menu)
    : m_source(std::move(menu))
{
}

void TrayMenuService::noteChanged()
{
    if (refresh())
        Q_EMIT LayoutUpdated(m_revision, rootId);
}

bool TrayMenuService::refresh()
{
    QList<TrayMenuEntry> entries = m_source();
    if (entries == m_entries)
        return false;
    m_entries = std::move(entries);
    ++m_revision;
    return true;
}

int TrayMenuService::idOf(const TrayMenuEntry &entry, qsizetype row)
{
    if (entry.kind != TrayMenuEntry::Kind::Action)
        return firstPassiveId + static_cast<int>(row);
    const auto known = m_actionIds.constFind(entry.key);
    if (known != m_actionIds.cend())
        return *known;
    const int id = static_cast<int>(m_actionIds.size()) + 1;
    m_actionIds.insert(entry.key, id);
    return id;
}

TrayMenuNode TrayMenuService::nodeOf(qsizetype row)
{
    const TrayMenuEntry &entry = m_entries.at(row);
    TrayMenuNode node {.id = idOf(entry, row), .properties = {}, .children = {}};
    if (entry.kind == TrayMenuEntry::Kind::Separator) {
        node.properties.insert(u"type"_s, u"separator"_s);
        return node;
    }
    // A single underscore would mark a letter.
    node.properties.insert(u"label"_s, QString(entry.label).replace(u'_', "__"_L1));
    node.properties.insert(u"enabled"_s, entry.kind == TrayMenuEntry::Kind::Action);
    return node;
}

uint TrayMenuService::GetLayout(int parentId, int recursionDepth, const QStringList & /*propertyNames*/,
                                TrayMenuNode &layout)
{
    refresh();
    layout = {.id = parentId, .properties = {}, .children = {}};
    if (parentId == rootId)
        layout.properties.insert(u"children-display"_s, u"submenu"_s);
    for (qsizetype row = 0; row < m_entries.size(); ++row) {
        if (parentId == rootId && recursionDepth != 0)
            layout.children.append(nodeOf(row));
        else if (idOf(m_entries.at(row), row) == parentId)
            layout = nodeOf(row);
    }
    return m_revision;
}

TrayMenuPropertiesList TrayMenuService::GetGroupProperties(const QList<int> &ids,
                                                           const QStringList & /*propertyNames*/)
{
    TrayMenuPropertiesList found;
    for (qsizetype row = 0; row < m_entries.size(); ++row) {
        const TrayMenuNode node = nodeOf(row);
        if (ids.isEmpty() || ids.contains(node.id))
            found.append({.id = node.id, .properties = node.properties});
    }
    return found;
}

QDBusVariant TrayMenuService::GetProperty(int id, const QString &name)
{
    for (const TrayMenuProperties &item : GetGroupProperties({id}, {}))
        if (item.properties.contains(name))
            return QDBusVariant(item.properties.value(name));
    return QDBusVariant(QString());
}

void TrayMenuService::Event(int id, const QString &eventId, const QDBusVariant & /*data*/, uint /*timestamp*/)
{
    const QString key = m_actionIds.key(id);
    if (eventId != "clicked"_L1 || key.isEmpty())
        return;
    // After the answer to the call: what is chosen may end the program.
    QTimer::singleShot(0, this, [this, key] {
        if (onTriggered)
            onTriggered(key);
    });
}

QList<int> TrayMenuService::EventGroup(const TrayMenuEvents &events)
{
    for (const TrayMenuEvent &event : events)
        Event(event.id, event.name, event.data, event.timestamp);
    return {};
}

bool TrayMenuService::AboutToShow(int /*id*/)
{
    return refresh();
}

QList<int> TrayMenuService::AboutToShowGroup(const QList<int> &ids, QList<int> & /*idErrors*/)
{
    return refresh() && ids.contains(rootId) ? QList<int> {rootId} : QList<int> {};
}

} // namespace Vesk
