#include "ui/version/VersionView.h"

#include "app/Runtime.h"
#include "base/FreedMemory.h"
#include "git/RepositoryFault.h"
#include "ui/controls/ProjectPalette.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace Vesk
{

namespace
{

using namespace Qt::StringLiterals;
using GitStatusReader::RepoStatus;

constexpr int firstWindow = 500;
constexpr qsizetype longLook = 10'000; // commits and changes that are worth tidying up after
constexpr int textSizeStep = 10;

/** A long one takes its time. */
void letGo(VersionLook look)
{
    gitPool()->start([look = std::optional(std::move(look))]() mutable {
        const qsizetype size = look->all.rows.size() + (look->status ? look->status->changes.size() : 0);
        const bool isLong = size >= longLook;
        look.reset();
        if (isLong)
            returnFreedMemory();
    });
}

QString folderOf(const Runtime &runtime, const QString &alias)
{
    const auto &entries = runtime.catalogEntries();
    const auto entry = std::ranges::find(entries, alias, &ProjectCatalogEntry::alias);
    return entry == entries.end() ? QString() : entry->path;
}

} // namespace

VersionLook readVersion(const GitSetting &setting, const QString &folder, int window,
                        const VersionLook &before)
{
    VersionLook look {.isFolderThere = QDir(folder).exists(), .status = failure(ErrorKind::NotFound, folder)};
    if (!look.isFolderThere)
        return look;
    look.status = GitStatusReader::read(setting, folder, window);
    if (!look.status)
        return look;
    QString lock = leftBehindLock(look.status->root, QDateTime::currentSecsSinceEpoch());
    if (before.status && *before.status == *look.status) {
        look = before;
        look.isNew = false;
        look.leftLock = std::move(lock);
        return look;
    }
    look.leftLock = std::move(lock);
    look.branch = commitRows(look.status->rows, *look.status);
    look.all = commitRows(look.status->graphRows, *look.status);
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

VersionView::VersionView(Runtime &runtime, QString alias, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_alias(std::move(alias))
    , m_folder(folderOf(runtime, m_alias))
    , m_window(firstWindow)
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
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &VersionView::projectChanged);
    connect(&m_fetch, &VersionFetch::ended, this, &VersionView::reload);
}

VersionView::~VersionView() = default;

QStringList VersionView::projects() const
{
    return projectAliases(m_runtime.catalogEntries());
}

int VersionView::lane() const
{
    return ProjectPalette::colorOf(m_runtime.catalogEntries(), m_alias).lane;
}

QColor VersionView::color() const
{
    return ProjectPalette::colorOf(m_runtime.catalogEntries(), m_alias).color;
}

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
        [folder = m_folder, window = m_window, before = m_look](const GitSetting &setting) {
            return readVersion(setting, folder, window, before);
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
    m_window = std::max(status().window, firstWindow);
    if (m_state == State::Loading) {
        m_state = State::Unreadable;
        m_failure = u"읽기를 그만두었습니다"_s;
        Q_EMIT stateChanged();
    }
    Q_EMIT loadingChanged();
}

void VersionView::loadMore()
{
    // Twice as many: the whole of a long history is a few steps away.
    m_window = 2 * std::max(status().window, firstWindow);
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
    if (look.isNew) {
        VersionLook old = std::exchange(m_look, look);
        m_changes.setChanges(status().changes);
        showRows();
        letGo(std::move(old));
    } else {
        m_look.leftLock = look.leftLock;
        letGo(look);
    }
    if (!isReady()) {
        m_hasSelection = false;
        m_selected.clear();
        m_detail.clear();
        m_sumsTask.cancel();
        m_sums.reset();
    } else if (!m_hasSelection) {
        m_hasSelection = true;
        m_selected = status().changes.isEmpty() && !status().rows.isEmpty()
            ? status().rows.first().commit.hash
            : QString();
        Q_EMIT selectionChanged();
    }
    if (isReady()) {
        showSelected();
        readSums();
    }
    if (stateIsOther || !isReady())
        Q_EMIT stateChanged();
    Q_EMIT statusChanged();
}

void VersionView::readSums()
{
    const auto take = [this](const std::optional<GitSummary::Sums> &sums) {
        m_sums = sums;
        m_detail.setWorkTreeSums(sums);
        Q_EMIT statusChanged();
    };
    m_sumsTask.cancel();
    if (status().changes.isEmpty())
        take(std::nullopt);
    else // after the rest: of large files it takes long
        m_sumsTask =
            GitSummary::loadWorkTree(status().root, this, [take](const GitSummary::Summary &summary) {
                // Of new files alone there is nothing to count.
                take(summary.sums != GitSummary::Sums() ? summary.sums : std::nullopt);
            });
}

void VersionView::showRows()
{
    Q_EMIT rowsAboutToChange();
    m_commits.setContent(m_allBranches ? m_look.all : m_look.branch);
    Q_EMIT rowsChanged();
}

void VersionView::showSelected()
{
    if (m_selected.isEmpty()) {
        const QString &failure = status().changesFailure;
        m_detail.show(status().root, std::nullopt,
                      {.changes = status().changes,
                       .isClipped = status().changesTruncated,
                       .failure = failure.isEmpty() ? std::nullopt : std::optional(failure)});
    } else if (const auto *commit = findCommit(m_selected)) {
        m_detail.show(status().root, *commit);
    } // what has left the window of commits stays as it was read
}

const GitStatusReader::GitCommit *VersionView::findCommit(const QString &hash) const
{
    for (const CommitRows *content : {&m_look.all, &m_look.branch}) {
        if (const int row = content->rowByHash.value(hash); row > 0)
            return &content->rows[row - 1].commit;
    }
    return nullptr;
}

const RepoStatus &VersionView::status() const
{
    static const RepoStatus none;
    return m_look.status ? *m_look.status : none;
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
        m_fetch.start(status().root, status().hasAnyRemote);
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
    if (!status().branch.isEmpty())
        return status().branch;
    return status().rows.isEmpty() ? u"아직 커밋 없음"_s
                                   : status().rows.first().commit.hash.left(8) + u" (브랜치 아님)"_s;
}

QString VersionView::aheadText() const
{
    return status().hasRemote ? QString::number(status().ahead) : QString();
}

QString VersionView::behindText() const
{
    return status().hasRemote ? QString::number(status().behind) : QString();
}

QString VersionView::trackingNote() const
{
    return !isReady() || status().hasRemote ? QString()
        : status().hasAnyRemote             ? u"추적하는 원격 브랜치 없음"_s
                                            : u"원격 없음"_s;
}

QString VersionView::changesNote() const
{
    return status().changesTruncated ? u"변경이 더 있지만 여기까지만 읽었습니다"_s : QString();
}

QString VersionView::changesSentence() const
{
    if (!isReady() || !status().changes.isEmpty())
        return {};
    return status().changesFailure.isEmpty() ? u"커밋 안 한 변경이 없습니다"_s
                                             : u"커밋 안 한 변경을 읽지 못했습니다"_s;
}

QString VersionView::faultBanner() const
{
    if (!isReady() || faultText().isEmpty())
        return {};
    return status().historyFailure.isEmpty() ? u"변경을 읽지 못했습니다"_s
        : status().changesFailure.isEmpty()  ? u"커밋을 읽지 못했습니다"_s
                                             : u"커밋과 변경을 읽지 못했습니다"_s;
}

QString VersionView::faultText() const
{
    return status().historyFailure.isEmpty() ? status().changesFailure : status().historyFailure;
}

QString VersionView::faultDetail() const
{
    const QString text = faultText();
    return text.mid(text.lastIndexOf(u'\n') + 1);
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
    return m_allBranches && GitStatusReader::headOutsideGraph(status().rows, status().graphRows)
        ? u"지금 HEAD가 가리키는 커밋은 이 그래프에 보이지 않습니다"_s
        : QString();
}

bool VersionView::truncated() const
{
    return m_allBranches ? status().graphTruncated : status().truncated;
}

QString VersionView::countText() const
{
    const qsizetype count = (m_allBranches ? status().graphRows : status().rows).size();
    return u"최근 커밋 %1개까지 보입니다"_s.arg(count);
}

QString VersionView::draft(VersionRequests::Kind kind) const
{
    return RequestDrafts::draft(static_cast<RequestDrafts::Kind>(kind), status());
}

QString VersionView::requestReason(VersionRequests::Kind kind) const
{
    return isReady() ? RequestDrafts::reason(static_cast<RequestDrafts::Kind>(kind), status())
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

void VersionView::openProject(const QString &alias) const
{
    if (exits.showProject)
        exits.showProject(alias);
}

void VersionView::goToSession(const QString &key) const
{
    if (exits.showSession)
        exits.showSession(key);
}

} // namespace Vesk
