// The files that go along with the next message.
#pragma once

#include "sessions/AttachmentCache.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QSet>
#include <QtQml/qqmlregistration.h>
#include <QUrl>
#include <QUuid>

class QMimeData;

namespace Vesk
{

class ProjectChat;

/** The attachments of a session's composer, the pictures that are on their way to be some, and the word on
    those that were refused. */
class AttachmentList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a composer")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY isSavingChanged)
    Q_PROPERTY(QString refusal READ refusal NOTIFY refusalChanged)

public:
    enum Roles {
        NameRole = Qt::UserRole + 1,
        SizeRole,
        PathRole,
        PreviewRole, ///< the address of a picture to show small; empty for other files
        SavingRole,  ///< a pasted picture that is no file yet
    };

    explicit AttachmentList(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] bool isSaving() const { return m_paths.size() < m_rows.size(); }
    [[nodiscard]] QString refusal() const { return m_refusal; }
    /** Takes local files in; each that cannot be attached is named in `refusal`. */
    Q_INVOKABLE void add(const QList<QUrl> &files);
    Q_INVOKABLE void remove(int index);
    void clearRefusal();
    /** Looks whether every file is still there; those that are not leave the list and are named in `refusal`.
     */
    [[nodiscard]] bool areAllThere();

    /** Whether there is a file or a picture in it. */
    [[nodiscard]] static bool canTake(const QMimeData &data);
    /** Takes what a clipboard holds, unless that is a text to a picture: then it is the editor's. */
    bool paste(const QMimeData &data);
    /** Takes files, or a picture, which is saved in the background; false when there is neither. */
    bool take(const QMimeData &data, const QString &prefix = QStringLiteral("attach"));

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void isSavingChanged();
    void refusalChanged();
    void savingEnded(bool whole); ///< of one picture of the session that is shown

private:
    /** A file, or below all of those a picture that is being saved. */
    struct Row {
        QString path;
        QUuid saving;
    };

    void update();
    void save(AttachmentCache::PastedImage image, const QString &prefix);
    void onSaved(ProjectChat *chat, const QUuid &id, const Result<QString> &path);
    bool removeSaving(const QUuid &id);
    void refuse(const QStringList &names);
    void removeRow(qsizetype index);

    QPointer<ProjectChat> m_chat;
    QStringList m_paths; // those of m_rows
    QList<Row> m_rows;
    QSet<QUuid> m_unwanted; // pictures that were taken out while they were being saved
    QString m_refusal;
};

} // namespace Vesk
