#include "ui/issues/IssuesView.h"

#include "app/Runtime.h"
#include "issues/IssueFolderPreference.h"
#include "markdown/EditorFlushers.h"

namespace Vesk
{

namespace
{

QString projectFolder(const Runtime &runtime, const QString &alias)
{
    for (const auto &entry : runtime.catalogEntries()) {
        if (entry.alias == alias) {
            return entry.path;
        }
    }
    return {};
}

} // namespace

IssuesView::IssuesView(Runtime &runtime, QString alias, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_store(projectFolder(runtime, alias), runtime.preferences())
    , m_desk {m_store,
              IssueWrite::live([&runtime](const QString &path) { runtime.editorFlushers().flush(path); }),
              std::move(alias), [&runtime](const AuditEvent &event) { runtime.auditLogger().log(event); }}
{
    connect(&m_store, &IssueStore::folderStateChanged, this, &IssuesView::folderStateChanged);
    connect(&m_store, &IssueStore::contentChanged, this, &IssuesView::contentChanged);
    connect(&m_store, &IssueStore::reloaded, this, [this] {
        if (!m_selectedPath.isEmpty() && !m_store.itemAtPath(m_selectedPath)) {
            select({});
        }
        Q_EMIT reloaded();
    });
}

IssuesView::~IssuesView() = default;

IssuesView::FolderState IssuesView::folderState() const
{
    return static_cast<FolderState>(m_store.folderState().kind);
}

void IssuesView::setSection(Section section)
{
    if (m_section != section) {
        m_section = section;
        Q_EMIT sectionChanged();
    }
}

QString IssuesView::selectedId() const
{
    const auto *item = m_store.itemAtPath(m_selectedPath);
    return item ? item->doc.id : QString();
}

void IssuesView::setQuery(const QString &query)
{
    if (m_query != query) {
        m_query = query;
        Q_EMIT queryChanged();
    }
}

EditorFlushers &IssuesView::flushers()
{
    return m_runtime.editorFlushers();
}

void IssuesView::reload()
{
    m_store.reload();
}

void IssuesView::select(const QString &path)
{
    if (m_selectedPath != path) {
        m_selectedPath = path;
        Q_EMIT selectionChanged();
    }
}

bool IssuesView::selectId(const QString &id)
{
    const auto *item = m_store.itemWithID(id);
    if (item) {
        select(item->path);
    }
    return item != nullptr;
}

void IssuesView::chooseFolder(const QString &path)
{
    IssueFolderPreference::setFolder(path, m_store.cwd(), m_runtime.preferences());
    m_store.reload();
}

void IssuesView::setStatus(const QString &path, const QString &word)
{
    const auto outcome = IssueStatusEdit::setStatus(m_desk, path, IssueStatus::parse(word));
    if (!outcome.problem.isEmpty()) {
        Q_EMIT problem(outcome.problem);
    }
    if (outcome.change) {
        m_lastChange = outcome.change;
        const auto *item = m_store.itemAtPath(path);
        Q_EMIT statusChanged(item ? item->doc.id : QString(), word);
    }
}

void IssuesView::undoStatus()
{
    if (!m_lastChange) {
        return;
    }
    const auto change = *std::exchange(m_lastChange, std::nullopt);
    const auto outcome = IssueStatusEdit::undo(m_desk, change);
    if (!outcome.problem.isEmpty()) {
        Q_EMIT problem(outcome.problem);
    } else {
        const auto *item = m_store.itemAtPath(change.path);
        Q_EMIT statusUndone(item ? item->doc.id : QString());
    }
}

} // namespace Vesk
