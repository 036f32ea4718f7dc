// What one version window shows: the repository as it was last read, and what of it is chosen.
#pragma once

#include "base/Result.h"
#include "git/GitSummary.h"
#include "sessions/ChatMessage.h"
#include "ui/version/CommitDetail.h"
#include "ui/version/CommitsModel.h"
#include "ui/version/VersionExits.h"
#include "ui/version/VersionFetch.h"
#include "ui/version/VersionMeasures.h"
#include "ui/version/VersionRequests.h"

#include <QColor>
#include <QDateTime>
#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

class ProjectChat;
class Runtime;

/** One reading of the repository, on a git thread, with all that is worked out of it. */
struct VersionLook {
    bool isFolderThere = false;
    bool isNew = true; ///< another one than the look before
    Result<GitStatusReader::RepoStatus> status = failure(ErrorKind::Unavailable, {});
    CommitRows branch {}; ///< of HEAD alone
    CommitRows all {};    ///< of every branch and tag
    QString leftLock {};  ///< path of a lock that somebody has left behind
};

/** What is equal to the look `before` is that one, not a copy. */
[[nodiscard]] VersionLook readVersion(const GitSetting &setting, const QString &folder, int window,
                                      const VersionLook &before = {});

/**
 * One for each window. The repository is read again when the window becomes active, after a fetch, and after
 * a turn of the project's sessions that used tools. What is chosen is known by hash and path, so it stays
 * chosen whatever a reading brings.
 */
class VersionView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(QString alias READ alias CONSTANT)
    Q_PROPERTY(QStringList projects READ projects NOTIFY projectChanged)
    /** Of the project's colour; -1 for one of the user's own, which is `color`. */
    Q_PROPERTY(int lane READ lane NOTIFY projectChanged)
    Q_PROPERTY(QColor color READ color NOTIFY projectChanged)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    /** In place of the table when there is none. */
    Q_PROPERTY(QString stateText READ stateText NOTIFY stateChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)
    Q_PROPERTY(QString readAt READ readAt NOTIFY statusChanged)
    Q_PROPERTY(QString branch READ branch NOTIFY statusChanged)
    Q_PROPERTY(QString aheadText READ aheadText NOTIFY statusChanged)
    Q_PROPERTY(QString behindText READ behindText NOTIFY statusChanged)
    Q_PROPERTY(QString trackingNote READ trackingNote NOTIFY statusChanged)
    Q_PROPERTY(QString changesNote READ changesNote NOTIFY statusChanged)
    /** In place of the changes when there are none. */
    Q_PROPERTY(QString changesSentence READ changesSentence NOTIFY statusChanged)
    /** What of the repository could not be read; empty when all could. */
    Q_PROPERTY(QString faultBanner READ faultBanner NOTIFY statusChanged)
    /** Git's words for it, and the last line of them, which says most. */
    Q_PROPERTY(QString faultText READ faultText NOTIFY statusChanged)
    Q_PROPERTY(QString faultDetail READ faultDetail NOTIFY statusChanged)
    Q_PROPERTY(QString addedText READ addedText NOTIFY statusChanged)
    Q_PROPERTY(QString removedText READ removedText NOTIFY statusChanged)
    Q_PROPERTY(QString headBanner READ headBanner NOTIFY statusChanged)
    /** The path of a lock that keeps every git from writing here; empty when there is none. */
    Q_PROPERTY(QString leftLock READ leftLock NOTIFY statusChanged)
    Q_PROPERTY(bool truncated READ truncated NOTIFY statusChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY statusChanged)
    Q_PROPERTY(bool allBranches READ allBranches WRITE setAllBranches NOTIFY scopeChanged)
    Q_PROPERTY(QString selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(Vesk::CommitsModel *commits READ commits CONSTANT)
    Q_PROPERTY(Vesk::ChangesModel *changes READ changes CONSTANT)
    Q_PROPERTY(Vesk::CommitDetail *detail READ detail CONSTANT)
    Q_PROPERTY(Vesk::VersionFetch *fetch READ fetch CONSTANT)
    Q_PROPERTY(Vesk::VersionRequests *requests READ requests CONSTANT)
    Q_PROPERTY(Vesk::VersionMeasures *measures READ measures CONSTANT)

public:
    enum class State { Loading, Ready, NoGit, NoRepository, FolderGone, Unreadable };
    Q_ENUM(State)

    VersionView(Runtime &runtime, QString alias, QObject *parent = nullptr);
    ~VersionView() override;

    [[nodiscard]] const QString &alias() const { return m_alias; }
    /** The aliases of all projects. */
    [[nodiscard]] QStringList projects() const;
    [[nodiscard]] int lane() const;
    [[nodiscard]] QColor color() const;
    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] QString stateText() const;
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString readAt() const;
    [[nodiscard]] QString branch() const;
    [[nodiscard]] QString aheadText() const;
    [[nodiscard]] QString behindText() const;
    /** Why there is no telling what is ahead and behind; empty when there is. */
    [[nodiscard]] QString trackingNote() const;
    [[nodiscard]] QString changesNote() const;
    [[nodiscard]] QString changesSentence() const;
    [[nodiscard]] QString faultBanner() const;
    [[nodiscard]] QString faultText() const;
    [[nodiscard]] QString faultDetail() const;
    [[nodiscard]] QString addedText() const;
    [[nodiscard]] QString removedText() const;
    [[nodiscard]] QString headBanner() const;
    [[nodiscard]] QString leftLock() const { return m_look.leftLock; }
    /** There are more commits than are shown. */
    [[nodiscard]] bool truncated() const;
    [[nodiscard]] QString countText() const;
    [[nodiscard]] bool allBranches() const { return m_allBranches; }
    void setAllBranches(bool all);
    /** The hash of the chosen commit; empty for the work tree. */
    [[nodiscard]] const QString &selected() const { return m_selected; }
    [[nodiscard]] CommitsModel *commits() { return &m_commits; }
    [[nodiscard]] ChangesModel *changes() { return &m_changes; }
    [[nodiscard]] CommitDetail *detail() { return &m_detail; }
    [[nodiscard]] VersionFetch *fetch() { return &m_fetch; }
    [[nodiscard]] VersionRequests *requests() { return &m_requests; }
    [[nodiscard]] VersionMeasures *measures() { return &m_measures; }

    Q_INVOKABLE void reload();
    Q_INVOKABLE void cancelLoading();
    Q_INVOKABLE void loadMore();
    Q_INVOKABLE void select(const QString &hash);
    /** A file of the work tree. */
    Q_INVOKABLE void selectChange(const QString &path);
    Q_INVOKABLE void startFetch();
    /** Of a request to a session. */
    [[nodiscard]] Q_INVOKABLE QString draft(Vesk::VersionRequests::Kind kind) const;
    [[nodiscard]] Q_INVOKABLE QString requestReason(Vesk::VersionRequests::Kind kind) const;
    Q_INVOKABLE void copy(const QString &text) const;
    /** In steps of ten per cent; 0 sets it back. */
    Q_INVOKABLE void stepTextSize(int step);

    /** Set by the window's maker. */
    VersionExits exits;
    Q_INVOKABLE void goToSession(const QString &key) const;
    Q_INVOKABLE void openProject(const QString &alias) const;

Q_SIGNALS:
    void projectChanged();
    void stateChanged();
    void loadingChanged();
    void statusChanged();
    void scopeChanged();
    void selectionChanged();
    void rowsAboutToChange();
    void rowsChanged();

private:
    void take(const VersionLook &look);
    void follow(ProjectChat &chat);
    void readSums();
    void showRows();
    void showSelected();
    [[nodiscard]] State stateOf(const VersionLook &look) const;
    [[nodiscard]] const GitStatusReader::RepoStatus &status() const;
    [[nodiscard]] bool isReady() const { return m_state == State::Ready; }
    [[nodiscard]] const GitStatusReader::GitCommit *findCommit(const QString &hash) const;

    Runtime &m_runtime;
    QString m_alias;
    QString m_folder;
    State m_state = State::Loading;
    QString m_failure;
    int m_window;
    bool m_loading = false;
    bool m_reloadWanted = false;
    bool m_allBranches = true;
    bool m_hasSelection = false;
    QString m_selected;
    QDateTime m_readAt;
    VersionLook m_look;
    std::optional<GitSummary::Sums> m_sums; // of the work tree
    GitTask m_task, m_sumsTask;
    CommitsModel m_commits;
    ChangesModel m_changes;
    CommitDetail m_detail;
    VersionFetch m_fetch;
    VersionRequests m_requests;
    VersionMeasures m_measures;
};

/** Whether the last turn of a session used tools, so that files may be others now. */
[[nodiscard]] bool lastTurnUsedTools(const QList<ChatMessage> &rows);

} // namespace Vesk
