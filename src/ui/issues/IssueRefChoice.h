// The issues that one can choose from as a reference.
#pragma once

#include "ui/issues/IssueRows.h"
#include "ui/issues/IssuesView.h"

#include <QStringList>

namespace Vesk
{

class IssueRefChoice : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY changed REQUIRED)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY changed)
    /** Ids that are not offered. */
    Q_PROPERTY(QStringList without READ without WRITE setWithout NOTIFY changed)
    Q_PROPERTY(Vesk::IssueRefRows *rows READ rows CONSTANT)

public:
    static constexpr int most = 50; ///< rows that are shown

    using QObject::QObject;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] const QString &query() const { return m_query; }
    void setQuery(const QString &query);
    [[nodiscard]] const QStringList &without() const { return m_without; }
    void setWithout(const QStringList &ids);
    [[nodiscard]] IssueRefRows *rows() { return &m_rows; }
    [[nodiscard]] Q_INVOKABLE QString idAt(int row) const;

Q_SIGNALS:
    void changed();

private:
    void refresh();

    IssuesView *m_view = nullptr;
    QString m_query;
    QStringList m_without;
    QStringList m_ids;
    IssueRefRows m_rows;
};

} // namespace Vesk
