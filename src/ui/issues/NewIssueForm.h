// A new issue: what was entered, what that makes, and why it cannot be made yet.
#pragma once

#include "issues/IssueCreateContext.h"
#include "ui/issues/IssueRows.h"
#include "ui/issues/IssuesView.h"

#include <QHash>

namespace Vesk
{

class NewIssueForm : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY viewChanged REQUIRED)
    Q_PROPERTY(QString prefix READ prefix NOTIFY viewChanged)
    Q_PROPERTY(QString number READ number WRITE setNumber NOTIFY changed)
    Q_PROPERTY(QString numberOrigin READ numberOrigin NOTIFY viewChanged)
    Q_PROPERTY(QString numberProblem READ numberProblem NOTIFY changed)
    Q_PROPERTY(QString numberHint READ numberHint NOTIFY changed)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QString fileName READ fileName NOTIFY changed)
    Q_PROPERTY(QString fileProblem READ fileProblem NOTIFY changed)
    Q_PROPERTY(QStringList fieldNames READ fieldNames NOTIFY viewChanged)
    Q_PROPERTY(QString templateOrigin READ templateOrigin NOTIFY viewChanged)
    Q_PROPERTY(Vesk::IssueRefRows *blockedBy READ blockedBy CONSTANT)
    Q_PROPERTY(Vesk::IssueRefRows *blocks READ blocks CONSTANT)
    Q_PROPERTY(QStringList chosenIds READ chosenIds NOTIFY changed)
    Q_PROPERTY(bool canCreate READ canCreate NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    /** Reads the folder anew and proposes a number. */
    void setView(IssuesView *view);
    [[nodiscard]] const QString &prefix() const { return m_prefix; }
    /** As typed: digits. */
    [[nodiscard]] const QString &number() const { return m_number; }
    void setNumber(const QString &number);
    [[nodiscard]] QString numberOrigin() const; ///< which number it follows
    [[nodiscard]] QString numberProblem() const;
    [[nodiscard]] QString numberHint() const; ///< a doubt that does not stand in the way
    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] QString fileName() const; ///< empty while number or title say too little
    [[nodiscard]] QString fileProblem() const;
    /** The rows of the skeleton's table that can be chosen for. */
    [[nodiscard]] QStringList fieldNames() const;
    [[nodiscard]] QString templateOrigin() const;
    [[nodiscard]] IssueRefRows *blockedBy() { return &m_blockedByRows; }
    [[nodiscard]] IssueRefRows *blocks() { return &m_blocksRows; }
    [[nodiscard]] QStringList chosenIds() const { return m_blockedBy + m_blocks; }
    [[nodiscard]] bool canCreate() const;
    [[nodiscard]] const QString &error() const { return m_error; }

    [[nodiscard]] Q_INVOKABLE QStringList choices(const QString &field) const;
    [[nodiscard]] Q_INVOKABLE QString value(const QString &field) const;
    Q_INVOKABLE void setValue(const QString &field, const QString &value);
    Q_INVOKABLE void addRef(bool waitsFor, const QString &id);
    Q_INVOKABLE void removeRef(bool waitsFor, int row);
    /** The file as it would be written. */
    [[nodiscard]] QString markdown() const;
    /** Writes the file, never over one that is there, and shows it; true when that is done. */
    Q_INVOKABLE bool create();

Q_SIGNALS:
    void viewChanged();
    void changed();

private:
    [[nodiscard]] std::optional<qint64> parsedNumber() const;
    [[nodiscard]] QString id() const;
    [[nodiscard]] IssueRefRows::Row rowOf(const QString &id) const;
    void showRefs();

    IssuesView *m_view = nullptr;
    IssueCreateContext m_context;
    QString m_prefix;
    QString m_number;
    QString m_title;
    QString m_error;
    QHash<QString, QString> m_values; // by the key of the row
    QStringList m_blockedBy;
    QStringList m_blocks;
    IssueRefRows m_blockedByRows;
    IssueRefRows m_blocksRows;
};

} // namespace Vesk
