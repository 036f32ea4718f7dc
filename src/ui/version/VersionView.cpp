#include "ui/version/VersionView.h"

#include "app/Runtime.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

#include <algorithm>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;
using GitStatusReader::RepoStatus;

constexpr int windowStep = 500;
constexpr int textSizeStep = 10;

CommitRows rowsOf(const QList<GitStatusReader::GraphRow> &rows, const RepoStatus &status)
{
    const QString head = status.rows.isEmpty() ? QString() : status.rows.first().commit.hash;
    return {.rows = rows,
            .pictures = graphPictures(rows, head),
            .lanes = laneCount(rows),
            .branch = status.branch,
            .branches = status.branches,
            .remotes = status.remotes,
            .changeCount = status.changes.size()};
}

QString folderOf(const Runtime &runtime, const QString &alias)
{
    const auto &entries = runtime.catalogEntries();
    const auto entry = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
    return entry == entries.end() ? QString() : entry->path;
}

} // namespace

VersionLook readVersion(const GitSetting &setting, const QString &folder, int window)
{
    VersionLook look {.isFolderThere = QDir(folder).exists(), .status = failure(ErrorKind::NotFound, folder)};
    if (!look.isFolderThere)
        return look;
    look.status = GitStatusReader::read(setting, folder, window);
    if (!look.status)
        return look;
    look.branch = rowsOf(look.status->rows, *look.status);
    look.all = rowsOf(look.status->graphRows, *look.status);
    if (!look.status->changes.isEmpty())
        look.sums = GitSummary::readWorkTree(setting, look.status->root).sums;
    return look;
}

bool lastTurnUsedTools(const QList<ChatMessage> &rows)
{
    for (auto row = rows.rbegin(); row != rows.rend() && row->role != ChatMessage::Role::User; ++row) {
        if (!row->tools.isEmpty())
            return true;
    }
    return false;
}

VersionView::VersionView(Runtime &runtime, QString alias, int lane, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_alias(std::move(alias))
    , m_folder(folderOf(runtime, m_alias))
    , m_lane(lane)
    , m_window(windowStep)
    , m_requests(runtime, m_alias)
    , m_measures(runtime.preferences())
{
    AgentSessionStore &store = runtime.agentStore();
    for (ProjectChat *chat : store.sessions(m_alias))
        follow(*chat);
    connect(&store, &AgentSessionStore::sessionAdded, this, [this](ProjectChat *chat) {
        if (chat->alias() == m_alias)
            follow(*chat);
    });
    connect(&m_fetch, &VersionFetch::ended, this, &VersionView::reload);
}

VersionView::~VersionView() = default;

void VersionView::follow(ProjectChat &chat)
{
    connect(&chat, &ProjectChat::isRunningChanged, this, [this, &chat] {
        if (!chat.isRunning() && lastTurnUsedTools(chat.messages().rows()))
            reload();
    });
}

void VersionView::reload()
{
    // The one that runs may have looked before the change that this call is about.
    m_reloadWanted = m_loading;
    if (m_loading)
        return;
    m_loading = true;
    Q_EMIT loadingChanged();
    m_task = startGitTask(
        this,
        [folder = m_folder, window = m_window](const GitSetting &setting) {
            return readVersion(setting, folder, window);
        },
        [this](const VersionLook &look) {
            m_loading = false;
            take(look);
            Q_EMIT loadingChanged();
            if (m_reloadWanted)
                reload();
        });
}

void VersionView::cancelLoading()
{
    m_task.cancel();
    m_loading = false;
    m_reloadWanted = false;
    m_window = std::max(m_status.window, windowStep);
    if (m_state == State::Loading) {
        m_state = State::Unreadable;
        m_failure = u"읽기를 그만두었습니다"_s;
        Q_EMIT stateChanged();
    }
    Q_EMIT loadingChanged();
}

void VersionView::loadMore()
{
    m_window = std::max(m_window, m_status.window) + windowStep;
    reload();
}

VersionView::State VersionView::stateOf(const VersionLook &look) const
{
    if (look.status)
        return State::Ready;
    if (!look.isFolderThere)
        return State::FolderGone;
    switch (look.status.error().kind) {
    case ErrorKind::Unavailable:
        return State::NoGit;
    case ErrorKind::NotFound:
        return State::NoRepository;
    default:
        return State::Unreadable;
    }
}

void VersionView::take(const VersionLook &look)
{
    const State state = stateOf(look);
    m_failure = look.status ? QString() : look.status.error().text;
    const bool stateIsOther = state != m_state;
    m_state = state;
    m_readAt = QDateTime::currentDateTime();
    const RepoStatus status = look.status.value_or(RepoStatus());
    const bool isOther = status != m_status || look.sums != m_sums;
    if (isOther) {
        m_status = status;
        m_sums = look.sums;
        m_branchRows = look.branch;
        m_allRows = look.all;
        m_changes.setChanges(m_status.changes);
        showRows();
    }
    if (!isReady()) {
        m_hasSelection = false;
        m_selected.clear();
        m_detail.clear();
    } else if (!m_hasSelection) {
        m_hasSelection = true;
        m_selected = m_status.changes.isEmpty() && !m_status.rows.isEmpty()
            ? m_status.rows.first().commit.hash
            : QString();
        Q_EMIT selectionChanged();
    }
    if (isReady())
        showSelected();
    if (stateIsOther || !isReady())
        Q_EMIT stateChanged();
    Q_EMIT statusChanged();
}

void VersionView::showRows()
{
    Q_EMIT rowsAboutToChange();
    m_commits.setContent(m_allBranches ? m_allRows : m_branchRows);
    Q_EMIT rowsChanged();
}

void VersionView::showSelected()
{
    if (m_selected.isEmpty()) {
        m_detail.show(m_status.root, std::nullopt, m_status.changes);
    } else if (const auto *commit = findCommit(m_selected)) {
        m_detail.show(m_status.root, *commit, {});
    } // what has left the window of commits stays as it was read
}

const GitStatusReader::GitCommit *VersionView::findCommit(const QString &hash) const
{
    for (const auto *rows : {&m_status.graphRows, &m_status.rows}) {
        const auto found = std::ranges::find(
            *rows, hash, [](const auto &row) -> const QString & { return row.commit.hash; });
        if (found != rows->end())
            return &found->commit;
    }
    return nullptr;
}

void VersionView::setAllBranches(bool all)
{
    if (m_allBranches == all)
        return;
    m_allBranches = all;
    showRows();
    Q_EMIT scopeChanged();
    Q_EMIT statusChanged();
}

void VersionView::select(const QString &hash)
{
    if (!isReady() || hash == m_selected)
        return;
    m_selected = hash;
    showSelected();
    Q_EMIT selectionChanged();
}

void VersionView::selectChange(const QString &path)
{
    select({});
    m_detail.selectFile(path);
}

void VersionView::startFetch()
{
    if (isReady())
        m_fetch.start(m_status.root, m_status.hasAnyRemote);
}

QString VersionView::stateText() const
{
    switch (m_state) {
    case State::NoGit:
        return m_failure;
    case State::NoRepository:
        return u"이 폴더는 git 저장소가 아닙니다"_s;
    case State::FolderGone:
        return u"프로젝트 폴더가 없습니다: "_s + m_folder;
    case State::Unreadable:
        return m_failure;
    default:
        return {};
    }
}

QString VersionView::readAt() const
{
    return m_readAt.isValid() ? u"읽음 "_s + m_readAt.toString(u"HH:mm"_s) : QString();
}

QString VersionView::branch() const
{
    if (!isReady())
        return {};
    if (!m_status.branch.isEmpty())
        return m_status.branch;
    return m_status.rows.isEmpty() ? u"아직 커밋 없음"_s
                                   : m_status.rows.first().commit.hash.left(8) + u" (브랜치 아님)"_s;
}

QString VersionView::aheadText() const
{
    return m_status.hasRemote ? QString::number(m_status.ahead) : QString();
}

QString VersionView::behindText() const
{
    return m_status.hasRemote ? QString::number(m_status.behind) : QString();
}

QString VersionView::trackingNote() const
{
    return !isReady() || m_status.hasRemote ? QString()
        : m_status.hasAnyRemote             ? u"추적하는 원격 브랜치 없음"_s
                                            : u"원격 없음"_s;
}

QString VersionView::changesNote() const
{
    return m_status.changesTruncated ? u"변경이 더 있지만 여기까지만 읽었습니다"_s : QString();
}

QString VersionView::addedText() const
{
    return m_sums ? u'+' + QString::number(m_sums->added) : QString();
}

QString VersionView::removedText() const
{
    return m_sums ? u'−' + QString::number(m_sums->removed) : QString();
}

QString VersionView::headBanner() const
{
    return m_allBranches && GitStatusReader::headOutsideGraph(m_status.rows, m_status.graphRows)
        ? u"지금 HEAD가 가리키는 커밋은 이 그래프에 보이지 않습니다"_s
        : QString();
}

bool VersionView::truncated() const
{
    return m_allBranches ? m_status.graphTruncated : m_status.truncated;
}

QString VersionView::countText() const
{
    const qsizetype count = (m_allBranches ? m_status.graphRows : m_status.rows).size();
    return u"최근 커밋 %1개까지 보입니다"_s.arg(count);
}

QString VersionView::draft(VersionRequests::Kind kind) const
{
    return RequestDrafts::draft(static_cast<RequestDrafts::Kind>(kind), m_status);
}

QString VersionView::requestReason(VersionRequests::Kind kind) const
{
    return isReady() ? RequestDrafts::reason(static_cast<RequestDrafts::Kind>(kind), m_status)
                     : u"저장소를 읽은 다음에 부탁할 수 있습니다"_s;
}

void VersionView::copy(const QString &text) const
{
    QGuiApplication::clipboard()->setText(text);
}

void VersionView::stepTextSize(int step)
{
    Preferences &preferences = m_runtime.preferences();
    const int wanted =
        step == 0 ? Preferences::defaultTextSize : preferences.textSize() + step * textSizeStep;
    preferences.setTextSize(std::clamp(wanted, Preferences::minimumTextSize, Preferences::maximumTextSize));
}

void VersionView::goToSession(const QString &key) const
{
    if (showSession)
        showSession(key);
}

} // namespace Vesk
