// The lists of the main window: tabs, sidebar, "내 차례".
#pragma once

#include "ui/controls/KeyedRowsModel.h"
#include "ui/shell/SessionRoster.h"

#include <QRectF>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Runtime;

// The bases are written in full: the tool that describes these types to qmllint does not look names up.

/** What the three lists can say of a session. The keys of session rows are RosterSession::key(). */
class SessionRowsModel : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        KeyRole = Qt::UserRole + 1,
        KindRole, ///< "session" or "project"
        ChatRole, ///< the ProjectChat; null for a project
        AliasRole,
        PathRole, ///< a project's folder, home as "~"
        LaneRole, ///< the project's lane, -1 for a colour of the user's own
        ColorHexRole,
        TitleRole,
        StateRole, ///< SessionMarks.Kind as a number
        StateTextRole,
        TimeTextRole,
        UnseenRole,
        ReasonRole, ///< why it is the person's turn
        PlaceRole,  ///< where its pane lies; of SessionTabsModel alone, like the next
        ShownRole,  ///< it is the one that its pane shows
    };

    SessionRowsModel(Runtime &runtime, SessionRoster &roster, QObject *parent);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /** The row of a key, -1 when there is none. */
    Q_INVOKABLE int rowOf(const QString &key) const;
    Q_INVOKABLE QString keyAt(int row) const;
    /** The next row behind `after`, around the end, whose title begins with these letters; -1 for none. */
    Q_INVOKABLE int rowStartingWith(const QString &letters, int after) const;

protected:
    [[nodiscard]] const SessionRoster &roster() const { return m_roster; }
    [[nodiscard]] const Runtime &runtime() const { return m_runtime; }
    [[nodiscard]] QVariant sessionData(const RosterSession &session, int role) const;
    [[nodiscard]] QVariant projectData(qsizetype position, int role) const;

private:
    [[nodiscard]] QVariant projectColour(const QString &alias, int role) const;

    Runtime &m_runtime;
    SessionRoster &m_roster;
};

/** Where a session is in the window. */
struct SessionPlace {
    QRectF rect;
    bool shown = false;

    bool operator==(const SessionPlace &) const = default;
};

/** Every open session, in opening order. */
class SessionTabsModel : public Vesk::SessionRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Workspace")

public:
    SessionTabsModel(Runtime &runtime, SessionRoster &roster, QObject *parent);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /** By key. */
    void setPlaces(const QHash<QString, SessionPlace> &places);

private:
    void update();

    QHash<QString, SessionPlace> m_places;
};

/** The projects, each with its sessions under it. */
class SidebarModel : public Vesk::SessionRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Workspace")

public:
    SidebarModel(Runtime &runtime, SessionRoster &roster, QObject *parent);

private:
    void update();
};

/** The sessions that wait for the person, the longest waiting first. */
class MyTurnModel : public Vesk::SessionRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Workspace")

public:
    MyTurnModel(Runtime &runtime, SessionRoster &roster, QObject *parent);

private:
    void update();
};

} // namespace Vesk
