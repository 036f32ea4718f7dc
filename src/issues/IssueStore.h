// A project's issue folder in memory.
#pragma once

#include "issues/IssueBoard.h"
#include "issues/IssueBoardSync.h"
#include "issues/IssueGraph.h"
#include "issues/IssueItem.h"
#include "issues/IssueNumbering.h"
#include "issues/IssueStatus.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

class Preferences;

struct IssueFolderState {
    enum class Kind {
        Unset,   ///< no folder is chosen
        Missing, ///< the chosen one is not there now: it may be on a disk that is away
        Ready,
    };

    Kind kind = Kind::Unset;
    QString path {}; ///< empty for Unset
    bool operator==(const IssueFolderState &) const = default;
};

/**
 * Read whole by reload(), with nothing kept from the time before: agents edit the folder freely, and whoever
 * shows it reloads when the person looks. Main thread, file reads included; the folders are small.
 */
class IssueStore : public QObject
{
    Q_OBJECT

public:
    /** Reads the folder at once. `cwd` is the project's folder; the preferences tell where its issues lie. */
    IssueStore(QString cwd, const Preferences &preferences, QObject *parent = nullptr);

    void reload();

    [[nodiscard]] const QString &cwd() const { return m_cwd; }
    [[nodiscard]] const IssueFolderState &folderState() const { return m_folderState; }
    [[nodiscard]] const QString &boardPath() const { return m_content.boardPath; }   ///< empty when absent
    [[nodiscard]] const QString &readmePath() const { return m_content.readmePath; } ///< empty when absent
    [[nodiscard]] const QList<IssueItem> &items() const { return m_content.items; }  ///< by id
    [[nodiscard]] const IssueBoard::Board &board() const { return m_content.board; }
    [[nodiscard]] const IssueGraph::Graph &graph() const { return m_graph; }

    /** Null when there is none; the first of several. Valid until the next reload. */
    [[nodiscard]] const IssueItem *itemAtPath(const QString &path) const;
    [[nodiscard]] const IssueItem *itemWithID(const QString &id) const;           ///< in any case
    [[nodiscard]] const IssueBoard::Row *boardRowWithID(const QString &id) const; ///< likewise

    /** In lower case, those of board and rules always among them: a new file may have none of these. */
    [[nodiscard]] QSet<QString> fileNames() const;
    [[nodiscard]] QList<IssueGraph::Input> graphInputs() const;
    /** Without the files that could not be read: what the board says of those stays. */
    [[nodiscard]] QList<IssueBoardSync::Entry> boardEntries() const;
    /** The rows of the board without a file. */
    [[nodiscard]] QList<IssueGraph::BoardRow> boardOnlyRows() const;
    /** Read anew; absent when there is no such file or it cannot be read. */
    [[nodiscard]] std::optional<QString> boardText() const;
    [[nodiscard]] std::optional<QString> readmeText() const;
    /** Those two, as far as they can be read. */
    [[nodiscard]] QStringList referenceTexts() const;
    [[nodiscard]] IssueNumbering::Survey numbering() const;
    /** The statuses that occur, each once, in the order of their kinds. */
    [[nodiscard]] QList<IssueStatus> statusesSeen() const;

Q_SIGNALS:
    void folderStateChanged();
    void contentChanged(); ///< items, board, graph or a path: something differs from before the reload
    void reloaded();       ///< after every reload

private:
    struct Content {
        QString boardPath;
        QString readmePath;
        QList<IssueItem> items;
        IssueBoard::Board board;
        bool operator==(const Content &) const = default;
    };

    QString m_cwd;
    const Preferences &m_preferences;
    IssueFolderState m_folderState;
    Content m_content;
    // By id in lower case, the first of several.
    QHash<QString, qsizetype> m_itemsByID;
    QHash<QString, qsizetype> m_rowsByID;
    IssueGraph::Graph m_graph;
};

} // namespace Vesk
