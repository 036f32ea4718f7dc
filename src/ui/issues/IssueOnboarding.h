// A project without issues gets a folder: one that is there, or a new one.
#pragma once

#include "ui/issues/IssuesView.h"

#include <QUrl>

namespace Vesk
{

class IssueOnboarding : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Vesk::IssuesView *view READ view WRITE setView NOTIFY changed REQUIRED)
    Q_PROPERTY(QUrl startFolder READ startFolder NOTIFY changed)
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY changed)
    Q_PROPERTY(QString folderName READ folderName WRITE setFolderName NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(bool canCreate READ canCreate NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] IssuesView *view() const { return m_view; }
    void setView(IssuesView *view);
    [[nodiscard]] QUrl startFolder() const; ///< where choosing one begins: the project's
    [[nodiscard]] const QString &key() const { return m_key; }
    void setKey(const QString &key); ///< as a prefix has it
    [[nodiscard]] const QString &folderName() const { return m_folderName; }
    void setFolderName(const QString &name);
    [[nodiscard]] QString problem() const; ///< why no folder can be made
    [[nodiscard]] QString hint() const;    ///< what will be made
    [[nodiscard]] bool canCreate() const { return !m_key.isEmpty() && problem().isEmpty(); }

    /** Makes the folder and chooses it. */
    Q_INVOKABLE void create();
    /** Chooses a folder that is there. */
    Q_INVOKABLE void choose(const QUrl &folder);

Q_SIGNALS:
    void changed();

private:
    IssuesView *m_view = nullptr;
    QString m_key;
    QString m_folderName = QStringLiteral("issues");
    QString m_failure;
};

} // namespace Vesk
