// An issue folder on disk and the view of it, for the tests of the panes and their models.
#pragma once

#include "ui/issues/IssuesView.h"
#include "ui/ShellStage.h"

#include <QDir>
#include <QFile>

namespace Vesk::Test
{

/** Issues are files of one table; `rows` are lines of it, as in "상태 | todo". */
class IssueFolderStage
{
public:
    IssueFolderStage()
    {
        m_shell.runtime().start();
        m_shell.addProject(QStringLiteral("billing"), 0);
        view = std::make_unique<IssuesView>(m_shell.runtime(), QStringLiteral("billing"));
        QDir().mkpath(folder());
    }

    [[nodiscard]] ShellStage &shell() { return m_shell; }
    [[nodiscard]] QString folder() const { return m_shell.path(QStringLiteral("issues")); }
    [[nodiscard]] QString pathOf(const QString &id) const
    {
        return folder() + u'/' + id + QStringLiteral(".md");
    }

    void put(const QString &id, const QString &title, const QStringList &rows, const QString &rest = {}) const
    {
        write(pathOf(id),
              QStringLiteral("# %1 · %2\n\n| 항목 | 값 |\n|---|---|\n| %3 |\n\n%4")
                  .arg(id, title, rows.join(QStringLiteral(" |\n| ")), rest));
    }
    void putBoard(const QString &text) const { write(folder() + QStringLiteral("/BOARD.md"), text); }
    /** Reads the folder, as a window that comes to the front does. */
    void look() { view->chooseFolder(folder()); }

    [[nodiscard]] QString textOf(const QString &id) const
    {
        QFile file(pathOf(id));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private:
    static void write(const QString &path, const QString &text)
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text.toUtf8());
        }
    }

    ShellStage m_shell;

public:
    std::unique_ptr<IssuesView> view;
};

} // namespace Vesk::Test
