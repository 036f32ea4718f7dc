// The choices of the composer's three pickers.
#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class ProjectChat;

/** One picker: model, effort or permission mode. Choosing sets the session's own value at once. */
class PickerModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a composer")
    Q_PROPERTY(QString label READ label NOTIFY chosenChanged)
    Q_PROPERTY(QString help READ help NOTIFY chosenChanged)
    Q_PROPERTY(int chosen READ chosen NOTIFY chosenChanged)
    Q_PROPERTY(QString icon READ icon NOTIFY chosenChanged)
    Q_PROPERTY(QString drift READ drift NOTIFY chosenChanged)

public:
    enum class Subject { Model, Effort, Mode };

    enum Roles {
        LabelRole = Qt::UserRole + 1,
        DescriptionRole, ///< empty for models and efforts
        IconRole,        ///< the icon's name, empty without one
        ChosenRole,
        SeparatedRole, ///< a hairline stands before it
    };

    PickerModel(Subject subject, QObject *parent);

    void setChat(ProjectChat *chat);

    [[nodiscard]] QString label() const; ///< of what is chosen
    [[nodiscard]] QString help() const;
    [[nodiscard]] int chosen() const; ///< the row, -1 without a session
    [[nodiscard]] QString icon() const;
    /** That the live process runs under another mode than the chosen one; empty when it does not. */
    [[nodiscard]] QString drift() const;
    Q_INVOKABLE void choose(int row);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void chosenChanged();

private:
    [[nodiscard]] QString labelOf(int row) const;
    void noteChosen();

    Subject m_subject;
    QPointer<ProjectChat> m_chat;
};

} // namespace Vesk
