// The form behind "폴더 추가": a folder, the name it will be known by, a colour.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Projects;

/** Reasons are shown as soon as there is something to judge: an untouched field has none. */
class AddProject : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY changed)
    Q_PROPERTY(QString alias READ alias WRITE setAlias NOTIFY changed)
    Q_PROPERTY(int lane READ lane WRITE setLane NOTIFY changed)
    Q_PROPERTY(QString folderReason READ folderReason NOTIFY changed)
    Q_PROPERTY(QString aliasReason READ aliasReason NOTIFY changed)
    Q_PROPERTY(QString saveReason READ saveReason NOTIFY changed)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed)

public:
    explicit AddProject(Projects &projects, QObject *parent = nullptr);

    /** An empty form; with a folder the alias is proposed from its name. */
    Q_INVOKABLE void begin(const QString &folder = {});
    /** Adds what stands in the form. True on success; else saveReason() tells why not. */
    Q_INVOKABLE bool submit();

    [[nodiscard]] const QString &folder() const { return m_folder; }
    /** "~" at the front stands for the home folder. A name that was not typed by hand follows the folder. */
    void setFolder(const QString &folder);
    [[nodiscard]] const QString &alias() const { return m_alias; }
    void setAlias(const QString &alias);
    [[nodiscard]] int lane() const { return m_lane; }
    void setLane(int lane);
    [[nodiscard]] const QString &folderReason() const { return m_folderReason; }
    [[nodiscard]] const QString &aliasReason() const { return m_aliasReason; }
    [[nodiscard]] const QString &saveReason() const { return m_saveReason; }
    [[nodiscard]] bool canAdd() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QString path() const;
    void judge();

    Projects &m_projects;
    QString m_folder, m_alias;
    QString m_folderReason, m_aliasReason, m_saveReason;
    int m_lane = 0;
    bool m_aliasTyped = false;
};

} // namespace Vesk
