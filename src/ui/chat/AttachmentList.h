// The files that go along with the next message.
#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <QUrl>

namespace Vesk
{

class ProjectChat;

/** The attachments of a session's composer, and the word on those that were refused. */
class AttachmentList : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a composer")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString refusal READ refusal NOTIFY refusalChanged)

public:
    enum Roles {
        NameRole = Qt::UserRole + 1,
        SizeRole,
        PathRole,
        PreviewRole, ///< the address of a picture to show small; empty for other files
    };

    explicit AttachmentList(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] QString refusal() const { return m_refusal; }
    /** Takes local files in; each that cannot be attached is named in `refusal`. */
    Q_INVOKABLE void add(const QList<QUrl> &files);
    Q_INVOKABLE void remove(int index);
    void clearRefusal();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void refusalChanged();

private:
    void update();

    QPointer<ProjectChat> m_chat;
    QStringList m_paths;
    QString m_refusal;
};

} // namespace Vesk
