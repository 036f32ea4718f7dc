// The two objects that a tray item puts on the bus; their slots, properties and signals are the protocols'.
#pragma once

#include "core/TrayItem.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QHash>
#include <QVariantMap>

namespace Vesk
{

using TrayPictures = QList<TrayPicture>;

/** (sa(iiay)ss): icon name, pictures, title, text. */
struct TrayToolTip {
    QString icon;
    TrayPictures pictures;
    QString title;
    QString text;
};

/** (ia{sv}av): one line of a menu with what is below it. */
struct TrayMenuNode {
    int id = 0;
    QVariantMap properties;
    QList<TrayMenuNode> children;
};

/** (ia{sv}) */
struct TrayMenuProperties {
    int id = 0;
    QVariantMap properties;
};
using TrayMenuPropertiesList = QList<TrayMenuProperties>;

/** (isvu): what happened to which line. */
struct TrayMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};
using TrayMenuEvents = QList<TrayMenuEvent>;

/** Once before anything of this is on a bus. */
void registerTrayTypes();

class TrayItemService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ noName)
    Q_PROPERTY(Vesk::TrayPictures IconPixmap READ pictures)
    Q_PROPERTY(QString OverlayIconName READ noName)
    Q_PROPERTY(Vesk::TrayPictures OverlayIconPixmap READ noPictures)
    Q_PROPERTY(QString AttentionIconName READ noName)
    Q_PROPERTY(Vesk::TrayPictures AttentionIconPixmap READ pictures)
    Q_PROPERTY(QString AttentionMovieName READ noName)
    Q_PROPERTY(Vesk::TrayToolTip ToolTip READ toolTip)
    Q_PROPERTY(QString IconThemePath READ noName)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)

public:
    void setFace(const TrayFace &face);

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const { return QStringLiteral("vesk"); }
    [[nodiscard]] QString title() const { return QStringLiteral("Vesk"); }
    [[nodiscard]] QString status() const;
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString noName() const { return {}; }
    [[nodiscard]] TrayPictures pictures() const { return m_face.pictures; }
    [[nodiscard]] TrayPictures noPictures() const { return {}; }
    [[nodiscard]] TrayToolTip toolTip() const;
    [[nodiscard]] QDBusObjectPath menu() const;
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QString takeToken() { return std::exchange(m_token, {}); }

    std::function<void()> onActivate;

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString &orientation);
    void ProvideXdgActivationToken(const QString &token);

Q_SIGNALS:
    void NewIcon();
    void NewAttentionIcon();
    void NewToolTip();
    void NewStatus(const QString &status);

private:
    TrayFace m_face;
    QString m_token;
};

class TrayMenuService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    explicit TrayMenuService(std::function<QList<TrayMenuEntry>()> menu);

    void noteChanged();

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QString textDirection() const { return QStringLiteral("ltr"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

    std::function<void(const QString &key)> onTriggered;

    // Types are written out: the bus finds those of slots by these words, not by another name for them.
public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   Vesk::TrayMenuNode &layout);
    QList<Vesk::TrayMenuProperties> GetGroupProperties(const QList<int> &ids,
                                                       const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &eventId, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const QList<Vesk::TrayMenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<Vesk::TrayMenuProperties> &updated,
                                const QList<Vesk::TrayMenuProperties> &removed);
    void LayoutUpdated(uint revision, int parent);

private:
    /** Takes the lines as they are now; whether they are others than before. */
    bool refresh();
    [[nodiscard]] int idOf(const TrayMenuEntry &entry, qsizetype row);
    [[nodiscard]] TrayMenuNode nodeOf(qsizetype row);

    std::function<QList<TrayMenuEntry>()> m_source;
    QList<TrayMenuEntry> m_entries;
    QHash<QString, int> m_actionIds; // kept for good: a click may be on a menu from before a change
    uint m_revision = 1;
};

} // namespace Vesk

Q_DECLARE_METATYPE(Vesk::TrayToolTip)
Q_DECLARE_METATYPE(Vesk::TrayMenuNode)
Q_DECLARE_METATYPE(Vesk::TrayMenuProperties)
Q_DECLARE_METATYPE(Vesk::TrayMenuEvent)
