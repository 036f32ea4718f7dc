// What one issue window works with: the folder, what is chosen in it, and the road on which it is changed.
#pragma once

#include "issues/IssueDesk.h"
#include "issues/IssueGraphMemo.h"
#include "issues/IssueStatusEdit.h"
#include "issues/IssueStore.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

class EditorFlushers;
class Runtime;

/**
 * One for each window, made before its parts: list, detail, graph, kanban and sheets are objects of their own
 * that are given this one.
 */
class IssuesView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the issue window")
    Q_PROPERTY(QString alias READ alias CONSTANT)
    Q_PROPERTY(QString projectPath READ projectPath CONSTANT)
    Q_PROPERTY(FolderState folderState READ folderState NOTIFY folderStateChanged)
    Q_PROPERTY(QString folderPath READ folderPath NOTIFY folderStateChanged)
    Q_PROPERTY(Section section READ section WRITE setSection NOTIFY sectionChanged)
    Q_PROPERTY(QString selectedPath READ selectedPath NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedId READ selectedId NOTIFY selectionChanged)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(int problemCount READ problemCount NOTIFY contentChanged)
    Q_PROPERTY(int issueCount READ issueCount NOTIFY contentChanged)

public:
    enum class FolderState { Unset, Missing, Ready };
    Q_ENUM(FolderState)
    enum class Section { List, Graph, Kanban };
    Q_ENUM(Section)

    IssuesView(Runtime &runtime, QString alias, QObject *parent = nullptr);
    ~IssuesView() override;

    [[nodiscard]] const QString &alias() const { return m_desk.alias; }
    [[nodiscard]] const QString &projectPath() const { return m_store.cwd(); }
    [[nodiscard]] FolderState folderState() const;
    [[nodiscard]] const QString &folderPath() const { return m_store.folderState().path; }
    [[nodiscard]] Section section() const { return m_section; }
    void setSection(Section section);
    /** The issue that is shown in the detail; empty for none. A reload that no longer has it clears it. */
    [[nodiscard]] const QString &selectedPath() const { return m_selectedPath; }
    [[nodiscard]] QString selectedId() const;
    [[nodiscard]] const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] int problemCount() const { return static_cast<int>(m_store.graph().problems.size()); }
    [[nodiscard]] int issueCount() const { return static_cast<int>(m_store.items().size()); }

    [[nodiscard]] Runtime &runtime() { return m_runtime; }
    [[nodiscard]] IssueStore &store() { return m_store; }
    [[nodiscard]] const IssueDesk &desk() const { return m_desk; }
    [[nodiscard]] EditorFlushers &flushers();
    [[nodiscard]] IssueGraphMemo &memo() { return m_memo; }

    Q_INVOKABLE void reload();
    Q_INVOKABLE void select(const QString &path);
    /** In any case; false when no file has this id. */
    Q_INVOKABLE bool selectId(const QString &id);
    /** Makes this the project's issue folder; an empty path takes the choice back. */
    Q_INVOKABLE void chooseFolder(const QString &path);

    /** Sets the status through the file, by the written word. Problems are told by `problem`; a change by
        `statusChanged`, and undoStatus() takes the last one back. */
    Q_INVOKABLE void setStatus(const QString &path, const QString &word);
    Q_INVOKABLE void undoStatus();

Q_SIGNALS:
    void folderStateChanged();
    void sectionChanged();
    void selectionChanged();
    void queryChanged();
    void contentChanged(); ///< what the folder holds
    void reloaded();       ///< after every reload, changed or not
    void problem(const QString &text);
    /** For the notice with its undo. */
    void statusChanged(const QString &id, const QString &word);
    void statusUndone(const QString &id);

private:
    Runtime &m_runtime;
    IssueStore m_store;
    IssueDesk m_desk;
    IssueGraphMemo m_memo;
    Section m_section = Section::List;
    QString m_selectedPath;
    QString m_query;
    std::optional<IssueStatusEdit::Change> m_lastChange;
};

} // namespace Vesk
