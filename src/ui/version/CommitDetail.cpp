#include "ui/version/CommitDetail.h"

#include "git/GitPath.h"
#include "ui/version/VersionWords.h"

#include <QDateTime>

#include <algorithm>

namespace Vesk
{

namespace
{

QString signedCount(const std::optional<GitSummary::Sums> &sums, int GitSummary::Sums::*side, QChar sign)
{
    return sums ? sign + QString::number((*sums).*side) : QString();
}

} // namespace

CommitDetail::CommitDetail(QObject *parent)
    : QObject(parent)
{
}

void CommitDetail::show(const QString &root, const std::optional<GitStatusReader::GitCommit> &commit,
                        const GitCommitChanges::Listing &ofWorkTree)
{
    const bool isSame = m_isShown && root == m_root
        && (commit ? std::optional(commit->hash) : std::nullopt)
            == (m_commit ? std::optional(m_commit->hash) : std::nullopt);
    m_root = root;
    m_commit = commit;
    m_isShown = true;
    if (!isSame) {
        m_filesTask.cancel();
        m_summaryTask.cancel();
        m_diffTask.cancel();
        m_body.clear();
        m_sums = m_commit ? std::nullopt : m_workTreeSums;
        m_files.setChanges({});
        m_filesNote.clear();
        m_filesFailed = false;
        m_path.clear();
        m_diffIsOfPath = false;
        m_diffLoading = false;
        m_fileDiff = {};
        m_diff.reset({});
        Q_EMIT fileChanged();
        Q_EMIT diffChanged();
    }
    Q_EMIT subjectChanged();
    Q_EMIT summaryChanged();
    if (!m_commit) {
        takeFiles(ofWorkTree);
    } else if (!isSame) { // a commit never changes
        loadSummary();
        loadFiles();
    }
}

void CommitDetail::clear()
{
    if (m_isShown)
        show({}, std::nullopt, {});
    m_isShown = false;
    m_summaryTask.cancel();
}

void CommitDetail::setWorkTreeSums(const std::optional<GitSummary::Sums> &sums)
{
    m_workTreeSums = sums;
    if (m_isShown && !m_commit) {
        m_sums = sums;
        Q_EMIT summaryChanged();
    }
}

GitCommitChanges::Target CommitDetail::target() const
{
    return {.hash = m_commit->hash,
            .parent = m_commit->parents.isEmpty() ? std::nullopt : std::optional(m_commit->parents.first())};
}

void CommitDetail::loadFiles()
{
    m_filesLoading = true;
    m_filesTask.cancel();
    m_filesTask =
        GitCommitChanges::load(target(), m_root, this, [this](const auto &listing) { takeFiles(listing); });
    Q_EMIT filesChanged();
}

void CommitDetail::takeFiles(const GitCommitChanges::Listing &listing)
{
    m_filesLoading = false;
    m_filesFailed = listing.failure.has_value();
    m_filesNote = m_filesFailed ? *listing.failure
        : listing.isClipped     ? QStringLiteral("파일이 더 있지만 여기까지만 읽었습니다")
        : !listing.changes.isEmpty() ? QString()
        : m_commit                   ? QStringLiteral("바뀐 파일이 없습니다")
                                     : QStringLiteral("커밋 안 한 변경이 없습니다");
    m_files.setChanges(listing.changes, m_commit ? ChangesModel::Of::Commit : ChangesModel::Of::WorkTree);
    Q_EMIT filesChanged();
    if (m_files.find(m_path)) {
        loadDiff();
    } else {
        selectFile(m_files.pathAt(0));
    }
}

void CommitDetail::loadSummary()
{
    m_summaryTask.cancel();
    const auto take = [this](const GitSummary::Summary &summary) {
        m_body = summary.body;
        m_sums = summary.sums;
        Q_EMIT summaryChanged();
    };
    m_summaryTask = GitSummary::load(target(), m_root, this, take);
}

void CommitDetail::selectFile(const QString &path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_diffIsOfPath = false;
    Q_EMIT fileChanged();
    loadDiff();
}

void CommitDetail::loadDiff()
{
    m_diffTask.cancel();
    const GitWorkingTree::Change *change = m_files.find(m_path);
    m_diffLoading = change != nullptr;
    if (!change) {
        m_fileDiff = {};
        m_diff.reset({});
    } else {
        const auto take = [this](const GitDiff::FileDiff &diff) { takeDiff(diff); };
        m_diffTask = m_commit ? GitDiff::load(*change, m_root, target(), this, take)
                              : GitDiff::load(*change, m_root, this, take);
    }
    Q_EMIT diffChanged();
}

void CommitDetail::takeDiff(const GitDiff::FileDiff &diff)
{
    m_diffLoading = false;
    m_fileDiff = diff;
    if (m_diffIsOfPath) {
        m_diff.update(diff);
    } else {
        m_diff.reset(diff);
    }
    m_diffIsOfPath = true;
    Q_EMIT diffChanged();
}

void CommitDetail::retryFiles()
{
    if (m_commit)
        loadFiles();
}

void CommitDetail::retryDiff()
{
    loadDiff();
}

QString CommitDetail::title() const
{
    return m_commit ? m_commit->subject : QStringLiteral("커밋 안 한 변경");
}

QString CommitDetail::meta() const
{
    return m_commit ? m_commit->author + QStringLiteral(" · ")
            + VersionWords::commitDate(m_commit->timestamp, QDateTime::currentDateTime())
                    : QString();
}

QString CommitDetail::added() const
{
    return signedCount(m_sums, &GitSummary::Sums::added, u'+');
}

QString CommitDetail::removed() const
{
    return signedCount(m_sums, &GitSummary::Sums::removed, u'−');
}

QString CommitDetail::shownPath() const
{
    const GitWorkingTree::Change *change = m_files.find(m_path);
    const QString path = GitPath::shown(m_path);
    return change && change->originalPath
        ? GitPath::shown(*change->originalPath) + QStringLiteral(" → ") + path
        : path;
}

QString CommitDetail::fileLabel() const
{
    const GitWorkingTree::Change *change = m_files.find(m_path);
    return change ? change->kindLabel() : QString();
}

QString CommitDetail::diffSentence() const
{
    return m_path.isEmpty() || !m_diffIsOfPath ? QString() : VersionWords::diffSentence(m_fileDiff.content);
}

bool CommitDetail::diffFailed() const
{
    return m_diffIsOfPath && m_fileDiff.content.kind == GitDiff::Content::Kind::Failed;
}

QString CommitDetail::patchReason() const
{
    if (!m_diffIsOfPath || m_fileDiff.content.kind != GitDiff::Content::Kind::Lines)
        return QStringLiteral("복사할 줄이 없습니다");
    const bool isCut = !VersionWords::omission(m_fileDiff).isEmpty()
        || std::ranges::any_of(m_fileDiff.content.lines,
                               [](const GitDiff::Line &line) { return line.clippedBytes > 0; });
    return isCut ? QStringLiteral("일부가 생략되어 패치로 쓸 수 없습니다") : QString();
}

QString CommitDetail::patch() const
{
    const GitWorkingTree::Change *change = m_files.find(m_path);
    if (!change || !patchReason().isEmpty())
        return {};
    using Kind = GitWorkingTree::Change::Kind;
    const QString before = GitPath::inPatch(u"a/", change->originalPath.value_or(change->path));
    const QString after = GitPath::inPatch(u"b/", change->path);
    const Kind kind = change->kind();
    QStringList lines {QStringLiteral("diff --git ") + before + u' ' + after};
    const auto &all = m_fileDiff.content.lines;
    const auto firstHunk = std::ranges::find(all, GitDiff::Line::Kind::Hunk, &GitDiff::Line::kind);
    const auto hunkRow = static_cast<int>(firstHunk - all.begin());
    if (hunkRow > 0)
        lines.append(m_diff.textOf(0, hunkRow - 1));
    if (firstHunk != all.end()) {
        const bool isNew = kind == Kind::Added || kind == Kind::Untracked;
        lines.append(isNew ? QStringLiteral("--- /dev/null") : QStringLiteral("--- ") + before);
        lines.append(kind == Kind::Deleted ? QStringLiteral("+++ /dev/null")
                                           : QStringLiteral("+++ ") + after);
        lines.append(m_diff.textOf(hunkRow, static_cast<int>(all.size()) - 1));
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace Vesk
