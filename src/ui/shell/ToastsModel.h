// The toasts of the window as a list.
#pragma once

#include "ui/controls/KeyedRowsModel.h"
#include "ui/shell/AttentionPlan.h"

#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** A row for each signal: a later prompt of the same session is another row. */
class ToastsModel : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Attention")

public:
    enum Role {
        KeyRole = Qt::UserRole + 1, ///< of the session
        TitleRole,
        DetailRole,
        StateRole, ///< SessionMarks.Kind as a number
        WaitsRole,
        FailedRole,
    };

    using KeyedRowsModel::KeyedRowsModel;

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setSessions(const QList<AttentionSession> &sessions);

private:
    QHash<QString, AttentionSession> m_sessions; // by row key
};

} // namespace Vesk
