// The panel of past conversations: which project's, what of it is read, what is done with one.
#pragma once

#include "sessions/SessionScan.h"
#include "ui/shell/ResumeRowsModel.h"

#include <QObject>
#include <QSet>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Runtime;

/**
 * Between show() and hide() the panel lists one project, and again when another is chosen. What was listed
 * before stays on view while it is read anew.
 *
 * Throwing a conversation away is asked about first: requestDelete() emits deleteConfirmationNeeded() and
 * waits for moveToTrash(); after that trashedTitle() offers to take it back.
 */
class ResumeView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(Vesk::ResumeRowsModel *rows READ rows CONSTANT)
    Q_PROPERTY(QStringList aliases READ aliases NOTIFY aliasesChanged)
    Q_PROPERTY(QString alias READ alias WRITE setAlias NOTIFY aliasChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY stateChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY stateChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY stateChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY stateChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(QString trashedTitle READ trashedTitle NOTIFY trashedChanged)
    Q_PROPERTY(QString undoRefusal READ undoRefusal NOTIFY trashedChanged)

public:
    explicit ResumeView(Runtime &runtime, ResumeRowsModel::Clock clock = {}, QObject *parent = nullptr);

    [[nodiscard]] ResumeRowsModel *rows() { return &m_rows; }
    [[nodiscard]] QStringList aliases() const; ///< every project
    [[nodiscard]] const QString &alias() const { return m_alias; }
    void setAlias(const QString &alias);
    [[nodiscard]] const QString &filter() const { return m_filter; }
    void setFilter(const QString &text);
    [[nodiscard]] bool loading() const { return m_scan.isRunning(); }
    [[nodiscard]] QString countText() const;
    /** Why the list is empty; empty while something is in it, or may still come. */
    [[nodiscard]] QString emptyText() const;
    /** Which folders could not be read, and why. */
    [[nodiscard]] const QString &errorText() const { return m_errorText; }
    /** What could not be done last. */
    [[nodiscard]] const QString &notice() const { return m_notice; }
    /** What went to the Trash just now; empty once that has been dismissed or undone. */
    [[nodiscard]] const QString &trashedTitle() const { return m_trashedTitle; }
    /** Why it could not be brought back. */
    [[nodiscard]] const QString &undoRefusal() const { return m_undoRefusal; }

    /** The panel comes into view, on this project; without one it stays where it was. */
    Q_INVOKABLE void show(const QString &alias);
    Q_INVOKABLE void hide();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void dismissNotice();
    /** Opens the conversation, or goes to the session that is open on it. */
    Q_INVOKABLE void resume(const QString &key);
    Q_INVOKABLE void requestDelete(const QString &key);
    Q_INVOKABLE void moveToTrash(const QString &key);
    /** Brings back what went to the Trash last, also after the offer was dismissed. */
    Q_INVOKABLE void undoTrash();
    Q_INVOKABLE void dismissTrashed();

Q_SIGNALS:
    void aliasesChanged();
    void aliasChanged();
    void filterChanged();
    void stateChanged();
    void noticeChanged();
    void resumed(const QString &sessionKey);
    void deleteConfirmationNeeded(const QString &key, const QString &title);
    void trashedChanged();

private:
    void onCatalogChanged();
    void setNotice(const QString &text);
    void setTrashed(const QString &title, const QString &refusal);

    Runtime &m_runtime;
    ResumeRowsModel m_rows;
    SessionScan m_scan;
    QSet<QString> m_seen; // the paths that this scan has told so far
    QString m_alias, m_filter, m_errorText, m_notice, m_trashedTitle, m_undoRefusal;
    bool m_shown = false;
};

} // namespace Vesk
