// A repository with branches, and the version window on it.
#pragma once

#include "git/Repository.h"
#include "ui/FindItem.h"
#include "ui/ShellStage.h"
#include "ui/version/VersionView.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace Vesk::Test
{

/** Commits with dates of their own, the later the newer. */
class BranchyRepository : public Repository
{
public:
    BranchyRepository();

    /** Adds everything and commits, `minutes` after the one before. */
    QString commitLater(const QString &subject, int minutes = 90);
    /** On main, out of nothing, a second apart. */
    void commitMany(int count);
    void mergeLater(const QString &branch, const QString &subject);
    /** Two more branches, a merge, a tag, a remote that is ahead, a conflict and other changes. */
    void fill();

private:
    void runAt(const QStringList &arguments, bool mayFail = false);

    int m_minutes = 0;
};

/** The window of a project whose folder is given. */
class VersionStage
{
public:
    explicit VersionStage(const QString &folder);
    ~VersionStage();

    [[nodiscard]] VersionView &view() const { return *m_window->property("view").value<VersionView *>(); }
    [[nodiscard]] QQuickWindow *window() const { return m_window.get(); }
    [[nodiscard]] ShellStage &shell() { return m_shell; }
    [[nodiscard]] const QStringList &warnings() const { return m_warnings; }
    /** The session that the window asked to be shown. */
    [[nodiscard]] const QString &shownSession() const { return m_shownSession; }
    /** The project that was chosen in the window's head. */
    [[nodiscard]] const QString &shownProject() const { return m_shownProject; }

    /** Until what is chosen has been read. */
    void settle() const;
    [[nodiscard]] QQuickItem *withText(const QString &text) const;
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    void click(const QString &text) const;
    void picture(const QString &name) const;

private:
    ShellStage m_shell;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QStringList m_warnings;
    QString m_shownSession;
    QString m_shownProject;
};

} // namespace Vesk::Test
