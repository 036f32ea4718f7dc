// The issue that is open in a window: its document, and what is read from that.
#pragma once

#include "markdown/MarkdownDocumentModel.h"
#include "ui/chat/ChatLinks.h"
#include "ui/chat/MarkdownBlockModel.h"
#include "ui/issues/IssueReading.h"
#include "ui/issues/IssueRows.h"
#include "ui/issues/IssuesView.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace Vesk
{

/**
 * Follows the choice of the view. A document is loaded when its issue is chosen and saved, or put beside its
 * file, when another is. What is read from its text comes a moment after the last change, the preview only
 * while it is shown, and of a long text off the main thread.
 */
class IssueDetail : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(bool open READ isOpen NOTIFY documentChanged)
    Q_PROPERTY(Vesk::MarkdownDocumentModel *document READ document NOTIFY documentChanged)
    Q_PROPERTY(QString issueId READ issueId NOTIFY parsedChanged)
    Q_PROPERTY(QString title READ title NOTIFY parsedChanged)
    Q_PROPERTY(int statusKind READ statusKind NOTIFY parsedChanged)
    Q_PROPERTY(QString statusWord READ statusWord NOTIFY parsedChanged)
    Q_PROPERTY(QString statusNote READ statusNote NOTIFY parsedChanged)
    Q_PROPERTY(Vesk::IssueFieldRows *fields READ fields CONSTANT)
    Q_PROPERTY(Vesk::IssueRefRows *blockedBy READ blockedBy CONSTANT)
    Q_PROPERTY(Vesk::IssueRefRows *blocks READ blocks CONSTANT)
    Q_PROPERTY(Vesk::MarkdownBlockModel *preview READ preview CONSTANT)
    Q_PROPERTY(bool previewShown READ previewShown WRITE setPreviewShown NOTIFY previewShownChanged)
    Q_PROPERTY(Vesk::ChatLinks *links READ links CONSTANT)
    Q_PROPERTY(QString fileText READ fileText NOTIFY documentChanged)
    Q_PROPERTY(QString unsavedText READ unsavedText NOTIFY unsavedTextChanged)
    Q_PROPERTY(QString diskText READ diskText NOTIFY parsedChanged)
    Q_PROPERTY(QString tooLongText READ tooLongText NOTIFY parsedChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY parsedChanged)

public:
    explicit IssueDetail(QObject *parent = nullptr);
    ~IssueDetail() override;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] bool isOpen() const { return m_document != nullptr; }
    [[nodiscard]] MarkdownDocumentModel *document() const { return m_document.get(); }
    [[nodiscard]] const QString &issueId() const { return m_parsed.id; }
    [[nodiscard]] const QString &title() const { return m_parsed.title; }
    [[nodiscard]] int statusKind() const;
    [[nodiscard]] QString statusWord() const;
    [[nodiscard]] QString statusNote() const;
    [[nodiscard]] IssueFieldRows *fields() { return &m_fields; }
    [[nodiscard]] IssueRefRows *blockedBy() { return &m_blockedBy; }
    [[nodiscard]] IssueRefRows *blocks() { return &m_blocks; }
    [[nodiscard]] MarkdownBlockModel *preview() { return &m_preview; }
    [[nodiscard]] bool previewShown() const { return m_previewShown; }
    void setPreviewShown(bool shown);
    [[nodiscard]] ChatLinks *links() { return &m_links; }
    [[nodiscard]] QString fileText() const; ///< the file, as seen from the project
    /** "미저장 128자 · 14:35부터"; empty when all is saved. */
    [[nodiscard]] const QString &unsavedText() const { return m_unsavedText; }

    /** What holds of the file while nothing is unsaved. */
    [[nodiscard]] QString diskText() const;
    /** Why the text cannot be edited here, where so much would stand still at each key; empty when it can. */
    [[nodiscard]] QString tooLongText() const;
    /** Stands in place of a text that is not there; empty when there is one. */
    [[nodiscard]] QString emptyText() const;

    /** Rewrites the status in the open document and saves; refused while the document is in conflict. */
    Q_INVOKABLE void setStatus(const QString &word);
    /** Rewrites a row of the table in the document; an empty value becomes a placeholder. */
    Q_INVOKABLE void setField(const QString &name, const QString &value);
    /** Names another issue as one that this one waits for, or that waits for this one. */
    Q_INVOKABLE void addRef(bool waitsFor, const QString &id);
    /** Ticks or unticks the task of this block of the preview. */
    Q_INVOKABLE void toggleTask(int block);
    /** What other issues have in this field, for a choice; not too many. */
    [[nodiscard]] Q_INVOKABLE QStringList knownValues(const QString &name) const;
    Q_INVOKABLE void saveNow();
    /** Takes what the disk holds; edits are given up. */
    Q_INVOKABLE void readAgain();
    Q_INVOKABLE void work();
    /** In the program that the desktop has for such files. */
    Q_INVOKABLE void openFile();
    Q_INVOKABLE void openFolder();
    Q_INVOKABLE void copyPath();
    Q_INVOKABLE void copyId();
    /** A link of the preview: to an issue of the folder it chooses that, any other goes by the policy. */
    Q_INVOKABLE void followLink(const QString &address, const QString &html);

Q_SIGNALS:
    void viewChanged();
    void documentChanged();
    void parsedChanged();
    void previewShownChanged();
    void unsavedTextChanged();

private:
    void openSelected();
    /** Lets the document go; what has no place on the disk stays here, and the view is told. */
    void close();
    [[nodiscard]] std::unique_ptr<MarkdownDocumentModel> documentOf(const QString &path);
    [[nodiscard]] QString unreadable() const;
    void readText();
    void show(const IssueReading &reading);
    void readRefs();
    void noteSaved();
    void noteUnsaved();
    void openOutside(const QString &path);
    void copy(const QString &text, const QString &done);
    [[nodiscard]] bool canChange();
    void change(const std::optional<QString> &text);

    IssuesView *m_view = nullptr;
    std::unique_ptr<MarkdownDocumentModel> m_document;
    std::vector<std::unique_ptr<MarkdownDocumentModel>> m_stranded; ///< text that no disk takes
    int m_enrolled = 0;
    int m_readings = 0; // the last one that was begun
    IssueDocument m_parsed;
    bool m_blank = true;
    IssueFieldRows m_fields;
    IssueRefRows m_blockedBy;
    IssueRefRows m_blocks;
    MarkdownBlockModel m_preview;
    QString m_previewed; // the text that the preview shows
    bool m_previewShown = true;
    ChatLinks m_links;
    QDateTime m_unsavedSince;
    QString m_unsavedText;
    QTimer m_readLater;
    QTimer m_reloadLater;
};

} // namespace Vesk
