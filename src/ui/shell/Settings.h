// The settings: their sections, and what these show beside the choices of ViewSettings.
#pragma once

#include "ui/shell/ViewSettings.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Runtime;

/** The sections in their order. Each is one row of the table in the source and one QML file, whose root has
   the property `settings`. */
class SettingsSections : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Settings")

public:
    enum Role { IdRole = Qt::UserRole + 1, TitleRole, IconRole, FileRole };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /** The row of a section; the first one for a name that is not, or no longer, one. */
    [[nodiscard]] int rowOf(const QString &id) const;
    [[nodiscard]] QString idAt(int row) const;
    Q_INVOKABLE QString fileAt(int row) const;
};

/** Files of Vesk's own, for the person to find. */
class SettingsPlaces : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by Settings")

public:
    enum Role { NameRole = Qt::UserRole + 1, PathRole, ShownPathRole };

    struct Place {
        QString name;
        QString path;
    };

    explicit SettingsPlaces(QList<Place> places, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<Place> m_places;
};

class Settings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(Vesk::SettingsSections *sections READ sections CONSTANT)
    Q_PROPERTY(Vesk::SettingsPlaces *places READ places CONSTANT)
    Q_PROPERTY(Vesk::ViewSettings *view READ view CONSTANT)
    Q_PROPERTY(int section READ section WRITE setSection NOTIFY sectionChanged)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString qtVersion READ qtVersion CONSTANT)
    Q_PROPERTY(QString agentPath READ agentPath NOTIFY agentPathChanged)

public:
    Settings(Runtime &runtime, ViewSettings &view, QObject *parent = nullptr);

    [[nodiscard]] SettingsSections *sections() { return &m_sections; }
    [[nodiscard]] SettingsPlaces *places() { return &m_places; }
    [[nodiscard]] ViewSettings *view() { return &m_view; }
    /** The row of the section that is open; kept for the next time. */
    [[nodiscard]] int section() const;
    void setSection(int row);
    [[nodiscard]] QString version() const;
    [[nodiscard]] QString qtVersion() const;
    /** Home as "~"; empty while there is none. */
    [[nodiscard]] QString agentPath() const;

Q_SIGNALS:
    void sectionChanged();
    void agentPathChanged();

private:
    Runtime &m_runtime;
    ViewSettings &m_view;
    SettingsSections m_sections;
    SettingsPlaces m_places;
};

} // namespace Vesk
