#include "ui/issues/IssuesView.h"

#include "app/Runtime.h"
#include "core/UsageRecorder.h"
#include "issues/IssueFolderPreference.h"
#include "issues/IssueScaffold.h"
#include "markdown/EditorFlushers.h"
#include "ui/controls/ProjectPalette.h"
#include "ui/controls/Theme.h"

#include <QDir>
#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

Q_LOGGING_CATEGORY(lcIssues, "vesk.ui.issues")

constexpr double leastGraphHeight = 120;
constexpr double plainGraphHeight = 320;
const auto graphHeightKey = QStringLiteral("vesk.issues.graphHeight");

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
        if (!m_selectedPath.isEmpty() && !m_selectionHeld && !m_store.itemAtPath(m_selectedPath)) {
            select({});
        }
        Q_EMIT reloaded();
    });
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &IssuesView::projectsChanged);
    connect(&runtime.issues(), &IssueCrossings::selectionRequested, this, [this](const QString &project) {
        if (project == this->alias()) {
            takeRequest();
        }
    });
    takeRequest();
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
        if (section == Section::Kanban) {
            UsageRecorder::record(FeatureSignal::IssueKanbanOpened);
        } else if (section == Section::Graph) {
            UsageRecorder::record(FeatureSignal::IssueGraphOpened);
        }
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

QString IssuesView::shownFolder() const
{
    return ProjectPalette::shortenedPath(folderPath(), QDir::homePath());
}

int IssuesView::lane() const
{
    return ProjectPalette::colorOf(m_runtime.catalogEntries(), alias()).lane;
}

QColor IssuesView::color() const
{
    return ProjectPalette::colorOf(m_runtime.catalogEntries(), alias()).color;
}

QStringList IssuesView::projects() const
{
    return projectAliases(m_runtime.catalogEntries());
}

QStringList IssuesView::statusWords() const
{
    QStringList words;
    for (const auto &status : IssueStatus::vocabulary(m_store.statusesSeen())) {
        words.append(status.written());
    }
    return words;
}

int IssuesView::statusKind(const QString &word) const
{
    return static_cast<int>(IssueStatus::parse(word).kind);
}

QStringList IssuesView::problems() const
{
    QStringList sentences;
    for (const auto &problem : m_store.graph().problems) {
        sentences.append(problem.message());
    }
    return sentences;
}

void IssuesView::openProblem(int index)
{
    if (index < 0 || index >= problemCount()) {
        return;
    }
    const auto id = IssueGraph::primaryID(m_store.graph().problems[index]);
    if (!selectId(id)) {
        tell(id + u"의 파일이 없습니다"_s);
    }
}

QString IssuesView::problemId(int index) const
{
    return index >= 0 && index < problemCount() ? IssueGraph::primaryID(m_store.graph().problems[index])
                                                : QString();
}

void IssuesView::changeTextSize(int step)
{
    auto &theme = Theme::shared();
    if (step > 0) {
        theme.zoomIn();
    } else if (step < 0) {
        theme.zoomOut();
    } else {
        theme.zoomReset();
    }
    m_runtime.preferences().setTextSize(qRound(theme.scale() * 100));
}

double IssuesView::graphHeight() const
{
    return std::max(leastGraphHeight, m_runtime.preferences().doubleValue(graphHeightKey, plainGraphHeight));
}

void IssuesView::setGraphHeight(double height)
{
    m_runtime.preferences().setValue(graphHeightKey, height);
    Q_EMIT graphHeightChanged();
}

bool IssuesView::offersTriage() const
{
    return folderState() == FolderState::Ready && m_store.items().isEmpty() && m_store.board().rows.isEmpty();
}

void IssuesView::startTriage()
{
    const QString prefix = m_store.numbering().prefix;
    m_runtime.issues().startIssueTriage(alias(), folderPath(),
                                        !m_madeKey.isEmpty()   ? m_madeKey
                                            : prefix.isEmpty() ? IssueScaffold::suggestedKey(alias())
                                                               : prefix);
}

void IssuesView::tell(const QString &text)
{
    m_toldProblems.removeAll(text);
    m_toldProblems.append(text);
    Q_EMIT toldProblemsChanged();
    Q_EMIT problem(text);
}

void IssuesView::putAway(const QString &problem)
{
    if (m_toldProblems.removeAll(problem) > 0) {
        Q_EMIT toldProblemsChanged();
    }
}

void IssuesView::noteCreated(const QString &path)
{
    UsageRecorder::record(FeatureSignal::IssueCreated);
    m_store.reload();
    setSection(Section::List);
    setQuery({});
    select(path);
    Q_EMIT created();
}

void IssuesView::openProject(const QString &alias) const
{
    if (m_runtime.issues().openIssuesWindow) {
        m_runtime.issues().openIssuesWindow(alias);
    }
}

void IssuesView::workOn(const QString &path)
{
    m_runtime.editorFlushers().flush(path); // the session reads the file
    m_runtime.issues().workOnIssue(alias(), path);
}

void IssuesView::noteActivated()
{
    m_store.reload();
    takeRequest();
}

void IssuesView::takeRequest()
{
    if (const auto request = m_runtime.issues().takeSelectionRequest(alias())) {
        m_store.reload();
        if (const auto *item = m_store.itemAtPath(request->path)) {
            setSection(Section::List);
            select(item->path);
        }
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

void IssuesView::setSelectionHeld(bool held)
{
    if (m_selectionHeld != held) {
        m_selectionHeld = held;
        Q_EMIT holdsEditsChanged();
    }
}

void IssuesView::select(const QString &path)
{
    if (m_selectedPath != path) {
        m_selectedPath = path;
        setSelectionHeld(false);
        if (!path.isEmpty()) {
            UsageRecorder::record(FeatureSignal::IssueDetailOpened);
        }
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
        tell(outcome.problem);
    }
    if (outcome.change) {
        noteStatusChange(*outcome.change, word);
    }
}

void IssuesView::noteStatusChange(const IssueStatusEdit::Change &change, const QString &word)
{
    m_lastChange = change;
    const auto *item = m_store.itemAtPath(change.path);
    Q_EMIT statusChanged(item ? item->doc.id : QString(), word);
}

void IssuesView::undoStatus()
{
    if (!m_lastChange) {
        return;
    }
    const auto change = *std::exchange(m_lastChange, std::nullopt);
    const auto outcome = IssueStatusEdit::undo(m_desk, change);
    if (!outcome.problem.isEmpty()) {
        tell(outcome.problem);
    } else {
        const auto *item = m_store.itemAtPath(change.path);
        Q_EMIT statusUndone(item ? item->doc.id : QString());
    }
}

std::unique_ptr<QQuickWindow> createIssuesWindow(QQmlEngine &engine, Runtime &runtime, const QString &alias)
{
    QQmlComponent component(&engine, QUrl(u"qrc:/qt/qml/Vesk/Issues/IssuesWindow.qml"_s));
    // Qt 6.4 crashes when it is given properties for a component that could not be compiled.
    if (!component.isReady()) {
        for (const QQmlError &error : component.errors()) {
            qCCritical(lcIssues).noquote() << error.toString();
        }
        return nullptr;
    }
    auto view = std::make_unique<IssuesView>(runtime, alias);
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{u"view"_s, QVariant::fromValue(view.get())}}));
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(object.get()));
    if (!window) {
        qCCritical(lcIssues).noquote() << component.errorString();
        return nullptr;
    }
    static_cast<void>(object.release());
    view.release()->setParent(window.get()); // its last child: what the QML made goes first
    UsageRecorder::record(FeatureSignal::IssueWindowOpened);
    return window;
}

} // namespace Vesk
