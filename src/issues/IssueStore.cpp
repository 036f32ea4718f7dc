#include "issues/IssueStore.h"

#include "core/Preferences.h"
#include "issues/IssueFile.h"
#include "issues/IssueFolder.h"
#include "issues/IssueFolderPreference.h"
#include "issues/IssueOrder_p.h"

#include <QDir>

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

IssueItem readItem(const QString &path)
{
    IssueItem item {.path = path, .doc = {}};
    const auto text = IssueFile::read(path);
    if (!text) {
        item.unreadable = IssueFile::problem(text.error());
    }
    item.doc = IssueDocument::parse(text ? *text : QString(), item.fileName());
    return item;
}

std::optional<QString> readIfThere(const QString &path)
{
    const auto text =
        path.isEmpty() ? Result<QString>(failure(ErrorKind::NotFound, path)) : IssueFile::read(path);
    return text ? std::optional(*text) : std::nullopt;
}

template <typename T, typename Id>
QHash<QString, qsizetype> firstByKey(const QList<T> &list, Id id)
{
    QHash<QString, qsizetype> places;
    places.reserve(list.size());
    for (qsizetype i = list.size() - 1; i >= 0; --i) {
        places.insert(id(list[i]).toLower(), i);
    }
    return places;
}

} // namespace

IssueStore::IssueStore(QString cwd, const Preferences &preferences, QObject *parent)
    : QObject(parent)
    , m_cwd(std::move(cwd))
    , m_preferences(preferences)
{
    reload();
}

void IssueStore::reload()
{
    const auto folder = IssueFolderPreference::folder(m_cwd, m_preferences);
    const auto listing = folder ? IssueFolder::list(*folder)
                                : Result<IssueFolder::Listing>(failure(ErrorKind::NotFound, m_cwd));
    using Kind = IssueFolderState::Kind;
    const IssueFolderState state {!folder       ? Kind::Unset
                                      : listing ? Kind::Ready
                                                : Kind::Missing,
                                  folder.value_or(QString())};
    if (m_folderState != state) {
        m_folderState = state;
        Q_EMIT folderStateChanged();
    }

    Content content;
    if (listing) {
        content.boardPath = listing->board;
        content.readmePath = listing->readme;
        content.items.reserve(listing->issues.size());
        for (const QString &path : listing->issues) {
            content.items.append(readItem(path));
        }
        sortByID(content.items, [](const IssueItem &item) { return item.doc.id; });
        content.board = IssueBoard::parse(readIfThere(content.boardPath).value_or(QString()));
    }
    if (m_content != content) {
        m_content = std::move(content);
        m_itemsByID = firstByKey(items(), [](const IssueItem &item) { return item.doc.id; });
        m_rowsByID = firstByKey(board().rows, [](const IssueBoard::Row &row) { return row.id; });
        m_graph = IssueGraph::build(graphInputs(), boardOnlyRows(), m_content.board.milestoneOrder);
        Q_EMIT contentChanged();
    }
    Q_EMIT reloaded();
}

const IssueItem *IssueStore::itemAtPath(const QString &path) const
{
    const QString wanted = QDir::cleanPath(path);
    const auto found = std::ranges::find_if(
        items(), [&](const IssueItem &item) { return QDir::cleanPath(item.path) == wanted; });
    return found == items().end() ? nullptr : &*found;
}

const IssueItem *IssueStore::itemWithID(const QString &id) const
{
    const auto found = m_itemsByID.constFind(id.toLower());
    return found == m_itemsByID.cend() ? nullptr : &items()[*found];
}

const IssueBoard::Row *IssueStore::boardRowWithID(const QString &id) const
{
    const auto found = m_rowsByID.constFind(id.toLower());
    return found == m_rowsByID.cend() ? nullptr : &board().rows[*found];
}

QSet<QString> IssueStore::fileNames() const
{
    QSet<QString> names {u"board.md"_s, u"readme.md"_s};
    for (const IssueItem &item : items()) {
        names.insert(item.fileName().toLower());
    }
    return names;
}

QList<IssueGraph::Input> IssueStore::graphInputs() const
{
    QList<IssueGraph::Input> inputs;
    for (const IssueItem &item : items()) {
        inputs.append(IssueGraph::input(item.doc));
    }
    return inputs;
}

QList<IssueBoardSync::Entry> IssueStore::boardEntries() const
{
    QList<IssueBoardSync::Entry> entries;
    for (const IssueItem &item : items()) {
        if (!item.unreadable.isEmpty()) {
            continue;
        }
        entries.append(IssueBoardSync::entry(item.doc, item.fileName()));
    }
    return entries;
}

QList<IssueGraph::BoardRow> IssueStore::boardOnlyRows() const
{
    QSet<QString> fileKeys;
    for (const IssueItem &item : items()) {
        fileKeys.insert(item.doc.id.toLower());
    }
    QList<IssueGraph::BoardRow> rows;
    for (const IssueBoard::Row &row : board().rows) {
        if (!fileKeys.contains(row.id.toLower())) {
            rows.append({row.id, row.title, row.status.value_or(QString()), row.milestone});
        }
    }
    return rows;
}

std::optional<QString> IssueStore::boardText() const
{
    return readIfThere(boardPath());
}

std::optional<QString> IssueStore::readmeText() const
{
    return readIfThere(readmePath());
}

QStringList IssueStore::referenceTexts() const
{
    QStringList texts;
    for (const auto &text : {readmeText(), boardText()}) {
        if (text) {
            texts.append(*text);
        }
    }
    return texts;
}

IssueNumbering::Survey IssueStore::numbering() const
{
    QStringList fileIDs;
    for (const IssueItem &item : items()) {
        fileIDs.append(item.doc.id);
    }
    QStringList boardIDs;
    for (const IssueBoard::Row &row : board().rows) {
        boardIDs.append(row.id);
    }
    return IssueNumbering::survey(fileIDs, boardIDs, referenceTexts());
}

QList<IssueStatus> IssueStore::statusesSeen() const
{
    QList<IssueStatus> seen;
    QSet<IssueStatus> known;
    for (const IssueItem &item : items()) {
        const auto word = item.doc.status();
        const IssueStatus status = IssueStatus::parse(word);
        if (word && !known.contains(status)) {
            known.insert(status);
            seen.append(status);
        }
    }
    std::ranges::stable_sort(seen, {}, &IssueStatus::kind);
    return seen;
}

} // namespace Vesk
