// Messages that wait for the end of the turn.
#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>
#include <QUuid>

namespace Vesk
{

class ProjectChat;

/** The queue of a session: what each entry says, and the ways out of it. */
class PendingSends : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY countChanged)

public:
    enum Roles {
        TextRole = Qt::UserRole + 1, ///< on one line, with the number of attachments
    };

    explicit PendingSends(QObject *parent = nullptr);

    void setChat(ProjectChat *chat);

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] QString countText() const; ///< "1건"
    /** Takes an entry out of the queue and puts it behind what stands in the composer. */
    Q_INVOKABLE void takeBack(int index);
    Q_INVOKABLE void remove(int index);
    Q_INVOKABLE void cancelAll();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    struct Entry {
        QUuid id;
        QString line;
    };

    void update();

    QPointer<ProjectChat> m_chat;
    QList<Entry> m_entries;
};

} // namespace Vesk
