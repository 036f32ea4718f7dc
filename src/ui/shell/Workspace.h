// The open sessions of the window: which ones are shown, what happens to the others, what waits.
#pragma once

#include "ui/shell/PaneMemory.h"
#include "ui/shell/Panes.h"
#include "ui/shell/SeenWatch.h"
#include "ui/shell/SessionRoster.h"
#include "ui/shell/ShellModels.h"
#include "ui/shell/TabDrag.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <QUuid>

namespace Vesk
{

class ProjectChat;
class Runtime;

/**
 * What the main window asks and is told. Every open session has a tab in one of the panes. Each pane shows
 * one session; the current session is the one that the focused pane shows.
 *
 * Closing a session that works is asked about first: requestClose() then emits closeConfirmationNeeded() and
 * waits for close().
 */
class Workspace : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("sessions/ProjectChat.h")
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(Vesk::SessionTabsModel *tabs READ tabs CONSTANT)
    Q_PROPERTY(Vesk::Panes *panes READ panes CONSTANT)
    Q_PROPERTY(Vesk::TabDrag *tabDrag READ tabDrag CONSTANT)
    Q_PROPERTY(Vesk::SidebarModel *sidebar READ sidebar CONSTANT)
    Q_PROPERTY(Vesk::MyTurnModel *myTurn READ myTurn CONSTANT)
    Q_PROPERTY(Vesk::ProjectChat *currentChat READ currentChat NOTIFY currentChanged)
    Q_PROPERTY(QString currentKey READ currentKey NOTIFY currentChanged)
    /** Among the tabs of its pane. */
    Q_PROPERTY(int currentIndex READ currentIndex NOTIFY currentChanged)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    Q_PROPERTY(bool hasProjects READ hasProjects NOTIFY projectsChanged)
    Q_PROPERTY(bool windowActive READ windowActive WRITE setWindowActive NOTIFY windowActiveChanged)
    Q_PROPERTY(
        bool backgroundShown READ backgroundShown WRITE setBackgroundShown NOTIFY backgroundShownChanged)
    Q_PROPERTY(bool agentMissing READ agentMissing NOTIFY agentMissingChanged)
    Q_PROPERTY(QString installText READ installText CONSTANT)
    Q_PROPERTY(QString installCommand READ installCommand CONSTANT)

public:
    /** How long a session must be in view in an active window before it counts as seen. */
    static constexpr int seenAfterMs = 1000;

    explicit Workspace(Runtime &runtime, SessionRoster::Clock clock = {}, QObject *parent = nullptr);
    ~Workspace() override;

    [[nodiscard]] SessionTabsModel *tabs() { return &m_tabs; }
    [[nodiscard]] Panes *panes() { return &m_panes; }
    [[nodiscard]] TabDrag *tabDrag() { return &m_tabDrag; }
    [[nodiscard]] SidebarModel *sidebar() { return &m_sidebar; }
    [[nodiscard]] MyTurnModel *myTurn() { return &m_myTurn; }
    [[nodiscard]] SessionRoster &roster() { return m_roster; }
    /** The conversations of the earlier run come back into their panes. After the first frame. */
    void restoreConversations() { m_memory.restore(); }
    [[nodiscard]] ProjectChat *currentChat() const;
    [[nodiscard]] QString currentKey() const;
    [[nodiscard]] int currentIndex() const;
    [[nodiscard]] QString windowTitle() const;
    [[nodiscard]] bool hasProjects() const;
    [[nodiscard]] bool windowActive() const { return m_windowActive; }
    void setWindowActive(bool active);
    /** The panel of the current session's background work is beside the sessions. */
    [[nodiscard]] bool backgroundShown() const { return m_backgroundShown; }
    void setBackgroundShown(bool shown);
    /** The search for the agent program has ended without one. */
    [[nodiscard]] bool agentMissing() const;
    /** What to do then, without the command's own line. */
    [[nodiscard]] QString installText() const;
    [[nodiscard]] QString installCommand() const;

    /** A session in this project, in the current one without a name; shown at once. Without any project
        addProjectRequested() is emitted instead. */
    Q_INVOKABLE void newSession(const QString &alias = {});
    Q_INVOKABLE void select(const QString &key);
    /** Among the tabs of the focused pane, as are next and previous. From 0; beyond the last nothing happens.
     */
    Q_INVOKABLE void selectIndex(int index);
    Q_INVOKABLE void selectNext();
    Q_INVOKABLE void selectPrevious();
    /** Goes through the sessions that wait, the longest waiting first. */
    Q_INVOKABLE void selectNextMyTurn();
    /** A new pane on this side, with the current session; with a new session of its project where the current
        one is alone in its pane. Nothing where there is no room. */
    Q_INVOKABLE void splitCurrent(Vesk::Panes::Side side);
    /** Closes the current session, or the pane if it has none. */
    Q_INVOKABLE void requestCloseCurrent();
    Q_INVOKABLE void requestClose(const QString &key);
    Q_INVOKABLE void close(const QString &key);
    Q_INVOKABLE void rename(const QString &key, const QString &title);

    /** Sessions that closing the program would cut off, one line each; empty when the window may just close.
     */
    Q_INVOKABLE QStringList liveWork() const;

Q_SIGNALS:
    void currentChanged();
    void windowTitleChanged();
    void projectsChanged();
    void windowActiveChanged();
    void backgroundShownChanged();
    void agentMissingChanged();
    void addProjectRequested();
    /** `what` names what would be cut off. */
    void closeConfirmationNeeded(const QString &key, const QString &title, const QString &what);

private:
    void show(const QUuid &id);
    void addSession(const QUuid &id);
    void onTreeChanged();
    void watchShown();
    [[nodiscard]] QString defaultAlias() const;
    [[nodiscard]] QString liveWorkOf(const RosterSession &session) const;
    [[nodiscard]] QUuid idAt(int index) const;

    Runtime &m_runtime;
    SessionRoster m_roster;
    SessionTabsModel m_tabs;
    SidebarModel m_sidebar;
    MyTurnModel m_myTurn;
    Panes m_panes;
    PaneMemory m_memory;
    TabDrag m_tabDrag;
    SeenWatch m_seen;
    QUuid m_current; // with its index, as last told
    int m_currentIndex = -1;
    QString m_lastAlias;
    bool m_windowActive = false;
    bool m_backgroundShown = false;
};

} // namespace Vesk
