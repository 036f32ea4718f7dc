// What is read of the one commit, or of the work tree, that the window shows.
#pragma once

#include "git/GitDiff.h"
#include "git/GitStatusReader.h"
#include "git/GitSummary.h"
#include "ui/version/ChangesModel.h"
#include "ui/version/DiffModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace Vesk
{

/**
 * Shows what show() was last called with. Files, sums and the difference of one file are read on other
 * threads; what belongs to an earlier wish is dropped. Showing the same again reads it anew and leaves
 * everything in place until then.
 */
class CommitDetail : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(bool isWorkTree READ isWorkTree NOTIFY subjectChanged)
    Q_PROPERTY(QString title READ title NOTIFY subjectChanged)
    Q_PROPERTY(QString body READ body NOTIFY summaryChanged)
    Q_PROPERTY(QString hash READ hash NOTIFY subjectChanged)
    Q_PROPERTY(QString meta READ meta NOTIFY subjectChanged)
    Q_PROPERTY(QString added READ added NOTIFY summaryChanged)
    Q_PROPERTY(QString removed READ removed NOTIFY summaryChanged)
    Q_PROPERTY(Vesk::ChangesModel *files READ files CONSTANT)
    Q_PROPERTY(bool filesLoading READ filesLoading NOTIFY filesChanged)
    /** In place of the list, or below it when it is cut. */
    Q_PROPERTY(QString filesNote READ filesNote NOTIFY filesChanged)
    Q_PROPERTY(bool filesFailed READ filesFailed NOTIFY filesChanged)
    Q_PROPERTY(QString path READ path NOTIFY fileChanged)
    Q_PROPERTY(QString shownPath READ shownPath NOTIFY fileChanged)
    Q_PROPERTY(QString fileLabel READ fileLabel NOTIFY fileChanged)
    Q_PROPERTY(Vesk::DiffModel *diff READ diff CONSTANT)
    Q_PROPERTY(bool diffLoading READ diffLoading NOTIFY diffChanged)
    Q_PROPERTY(QString diffSentence READ diffSentence NOTIFY diffChanged)
    Q_PROPERTY(bool diffFailed READ diffFailed NOTIFY diffChanged)
    /** Why the difference cannot be copied whole; empty when it can. */
    Q_PROPERTY(QString patchReason READ patchReason NOTIFY diffChanged)

public:
    explicit CommitDetail(QObject *parent = nullptr);

    /** The commit; without one the work tree, with what was read of its changes. */
    void show(const QString &root, const std::optional<GitStatusReader::GitCommit> &commit,
              const GitCommitChanges::Listing &ofWorkTree = {});
    void clear();
    /** Stand in the head as long as the work tree is shown. */
    void setWorkTreeSums(const std::optional<GitSummary::Sums> &sums);

    [[nodiscard]] bool isWorkTree() const { return !m_commit; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] const QString &body() const { return m_body; }
    [[nodiscard]] QString hash() const { return m_commit ? m_commit->hash : QString(); }
    [[nodiscard]] QString meta() const;
    [[nodiscard]] QString added() const;
    [[nodiscard]] QString removed() const;
    [[nodiscard]] ChangesModel *files() { return &m_files; }
    [[nodiscard]] bool filesLoading() const { return m_filesLoading; }
    [[nodiscard]] const QString &filesNote() const { return m_filesNote; }
    [[nodiscard]] bool filesFailed() const { return m_filesFailed; }
    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] QString shownPath() const;
    [[nodiscard]] QString fileLabel() const;
    [[nodiscard]] DiffModel *diff() { return &m_diff; }
    [[nodiscard]] bool diffLoading() const { return m_diffLoading; }
    [[nodiscard]] QString diffSentence() const;
    [[nodiscard]] bool diffFailed() const;
    [[nodiscard]] QString patchReason() const;

    /** Shows the difference of one of the files. */
    Q_INVOKABLE void selectFile(const QString &path);
    /** Those of a commit; the work tree's come with the next show(). */
    Q_INVOKABLE void retryFiles();
    Q_INVOKABLE void retryDiff();
    /** The difference that is shown, with a header that tools for patches understand. */
    [[nodiscard]] Q_INVOKABLE QString patch() const;

Q_SIGNALS:
    void subjectChanged();
    void summaryChanged();
    void filesChanged();
    void fileChanged();
    void diffChanged();

private:
    void loadFiles();
    void loadSummary();
    void loadDiff();
    void takeFiles(const GitCommitChanges::Listing &listing);
    void takeDiff(const GitDiff::FileDiff &diff);
    [[nodiscard]] GitCommitChanges::Target target() const;

    QString m_root;
    std::optional<GitStatusReader::GitCommit> m_commit;
    bool m_isShown = false;
    ChangesModel m_files;
    QString m_filesNote;
    bool m_filesLoading = false;
    bool m_filesFailed = false;
    QString m_body;
    std::optional<GitSummary::Sums> m_sums, m_workTreeSums;
    QString m_path;
    DiffModel m_diff;
    GitDiff::FileDiff m_fileDiff;
    bool m_diffLoading = false;
    bool m_diffIsOfPath = false; // what is shown belongs to m_path
    GitTask m_filesTask, m_summaryTask, m_diffTask;
};

} // namespace Vesk
