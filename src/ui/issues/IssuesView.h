// What one issue window works with: the folder, what is chosen in it, and the road on which it is changed.
#pragma once

#include "issues/IssueDesk.h"
#include "issues/IssueGraphMemo.h"
#include "issues/IssueStatusEdit.h"
#include "issues/IssueStore.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

class QQmlEngine;
class QQuickWindow;

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
    Q_PROPERTY(bool holdsEdits READ holdsEdits NOTIFY holdsEditsChanged)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged)
    Q_PROPERTY(int problemCount READ problemCount NOTIFY contentChanged)
    Q_PROPERTY(int issueCount READ issueCount NOTIFY contentChanged)
    Q_PROPERTY(QString shownFolder READ shownFolder NOTIFY folderStateChanged)
    Q_PROPERTY(int lane READ lane CONSTANT)
    Q_PROPERTY(QColor color READ color CONSTANT)
    Q_PROPERTY(QStringList projects READ projects NOTIFY projectsChanged)
    Q_PROPERTY(bool offersTriage READ offersTriage NOTIFY reloaded)
    Q_PROPERTY(double graphHeight READ graphHeight WRITE setGraphHeight NOTIFY graphHeightChanged)
    Q_PROPERTY(QStringList statusWords READ statusWords NOTIFY contentChanged)
    Q_PROPERTY(QStringList problems READ problems NOTIFY contentChanged)
    Q_PROPERTY(QStringList toldProblems READ toldProblems NOTIFY toldProblemsChanged)

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

    [[nodiscard]] QString shownFolder() const; ///< home as "~"
    [[nodiscard]] int lane() const;            ///< of the project's colour; -1 for one of the user's own
    [[nodiscard]] QColor color() const;
    [[nodiscard]] QStringList projects() const; ///< every project
    /** The words that a status can be set to; the project's own ones last. */
    [[nodiscard]] QStringList statusWords() const;
    [[nodiscard]] Q_INVOKABLE int statusKind(const QString &word) const; ///< number in IssueStatus::Kind
    [[nodiscard]] QStringList problems() const; ///< sentences that name the cell to mend

    /** Shows the issue that this problem is mended in. */
    Q_INVOKABLE void openProblem(int index);
    /** The issue that this problem is mended in. */
    [[nodiscard]] Q_INVOKABLE QString problemId(int index) const;
    /** Opens another project's issues. */
    Q_INVOKABLE void openProject(const QString &alias) const;
    /** Gives an issue to a new session. */
    Q_INVOKABLE void workOn(const QString &path);
    /** The window has come to the front: who looks at it wants to see what is there now. */
    Q_INVOKABLE void noteActivated();
    /** The detail holds text that is not saved: its issue stays chosen though its file be gone. */
    void setSelectionHeld(bool held);
    [[nodiscard]] bool holdsEdits() const { return m_selectionHeld; }
    /** Larger, smaller, or for 0 the plain size; for every window. */
    Q_INVOKABLE void changeTextSize(int step);
    /** Height of the graph below the detail, kept for the next time. */
    [[nodiscard]] double graphHeight() const;
    void setGraphHeight(double height);
    /** The folder that will be chosen next was made just now, for numbers with this prefix. */
    void noteFolderMade(const QString &key) { m_madeKey = key; }
    /** Nothing is in the folder yet: a session can be asked to fill it. */
    [[nodiscard]] bool offersTriage() const;
    Q_INVOKABLE void startTriage();
    /** An issue was made: it is chosen, to be written on. */
    void noteCreated(const QString &path);
    /** Tells the person what was done. */
    void report(const QString &text) { Q_EMIT told(text); }
    /** Tells the person what could not be done. */
    void tell(const QString &text);
    /** What was told of so and not put away yet, each once, the newest last. */
    [[nodiscard]] QStringList toldProblems() const { return m_toldProblems; }
    Q_INVOKABLE void putAway(const QString &problem);

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
    /** A change that was made through an open document: undoStatus() takes this one back next. */
    void noteStatusChange(const IssueStatusEdit::Change &change, const QString &word);

Q_SIGNALS:
    void folderStateChanged();
    void sectionChanged();
    void selectionChanged();
    void queryChanged();
    void projectsChanged();
    void contentChanged(); ///< what the folder holds
    void reloaded();       ///< after every reload, changed or not
    void graphHeightChanged();
    void created();
    void holdsEditsChanged();
    void told(const QString &text);
    void problem(const QString &text);
    void toldProblemsChanged();
    /** For the notice with its undo. */
    void statusChanged(const QString &id, const QString &word);
    void statusUndone(const QString &id);

private:
    void takeRequest();

    Runtime &m_runtime;
    IssueStore m_store;
    IssueDesk m_desk;
    IssueGraphMemo m_memo;
    Section m_section = Section::List;
    QString m_selectedPath;
    QString m_query;
    QString m_madeKey;
    QStringList m_toldProblems;
    bool m_selectionHeld = false;
    std::optional<IssueStatusEdit::Change> m_lastChange;
};

/** A project's hidden issue window; null, with the reasons in the log, when it cannot be made. */
[[nodiscard]] std::unique_ptr<QQuickWindow> createIssuesWindow(QQmlEngine &engine, Runtime &runtime,
                                                               const QString &alias);

} // namespace Vesk
