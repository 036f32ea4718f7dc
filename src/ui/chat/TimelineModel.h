// The rows of a session as a list model.
#pragma once

#include "sessions/Transcript.h"
#include "ui/chat/TimelineRow.h"

#include <QAbstractListModel>
#include <QHash>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace Vesk
{

/** Follows a Transcript. Rows that are on the screen are objects of their own, borrowed and given back. */
class TimelineModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a session's surface")

public:
    enum Roles {
        KindRole = Qt::UserRole + 1, ///< TimelineRow::Kind
        TextRole,
        TimeRole,
        StreamingRole,
        IsErrorRole,
        AttachmentsRole,
        AccessibleTextRole,
    };

    explicit TimelineModel(QObject *parent = nullptr);
    ~TimelineModel() override;

    /** Follows these rows from now on; null for none. */
    void setTranscript(Transcript *transcript);

    /** The row at this position as an object that follows it. The model owns it until release(). */
    [[nodiscard]] TimelineRow *borrow(int position);
    /** Gives a borrowed row back; it dies later. */
    void release(TimelineRow *row);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void arrived(); ///< a row or text came that was not there before

private:
    void onChanged(qsizetype position, bool grew);
    void updateBorrowed(qsizetype position);
    void updateTurnAbove(qsizetype position);
    [[nodiscard]] bool textFollows(qsizetype position) const;

    QPointer<Transcript> m_transcript;
    QHash<QUuid, TimelineRow *> m_borrowed;
    QHash<QUuid, std::shared_ptr<ToolFolding>> m_foldings; // one for each group that was ever on the screen
};

} // namespace Vesk
