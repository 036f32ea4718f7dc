// The small lists of an issue's detail: its fields, and the issues that it names.
#pragma once

#include "ui/controls/KeyedRowsModel.h"

#include <QDateTime>
#include <QList>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** A row of the table at the top of an issue. */
class IssueFieldRows : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueDetail")

public:
    enum Role { NameRole = Qt::UserRole + 1, ValueRole };
    struct Row {
        QString name;
        QString value; ///< empty for a placeholder
        bool operator==(const Row &) const = default;
    };

    using Vesk::KeyedRowsModel::KeyedRowsModel;
    void show(const QList<Row> &rows);
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<Row> m_rows;
};

/** An issue that another one names in a cell. */
class IssueRefRows : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to IssueDetail")

public:
    enum Role {
        IdRole = Qt::UserRole + 1,
        TitleRole,
        StatusRole,
        StruckRole,
        MissingRole,
        NoteRole, ///< what is wrong with it
    };
    struct Row {
        QString id;
        QString title {};
        int status = 0; ///< IssueStatus::Kind
        bool struck = false;
        bool missing = false; ///< neither a file nor a row of the board
        QString note {};
        bool operator==(const Row &) const = default;
    };

    using Vesk::KeyedRowsModel::KeyedRowsModel;
    void show(const QList<Row> &rows);
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<Row> m_rows;
};

} // namespace Vesk
