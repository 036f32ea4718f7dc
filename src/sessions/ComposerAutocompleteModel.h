// The candidates of a completion, and which of them is chosen.
#pragma once

#include "sessions/ComposerAutocomplete.h"

#include <QAbstractListModel>

namespace Vesk
{

/** The state of a composer's popup. */
class ComposerAutocompleteModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Roles {
        NameRole = Qt::UserRole + 1, ///< a command with its "/", or a file's name
        FolderRole,                  ///< of a file, relative; empty at the top and for commands
        MatchStartRole,              ///< where what was typed last stands in the name
        MatchLengthRole,             ///< 0 when it doesn't
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] bool isActive() const { return m_isActive; }
    [[nodiscard]] const QStringList &candidates() const { return m_candidates; }
    [[nodiscard]] int highlighted() const { return m_highlighted; }
    /** A candidate was asked for while the list was still that of an older query. */
    [[nodiscard]] bool pendingConfirm() const { return m_pendingConfirm; }
    void setPendingConfirm(bool pending) { m_pendingConfirm = pending; }
    [[nodiscard]] ComposerAutocomplete::Trigger trigger() const { return m_detection.trigger; }
    [[nodiscard]] bool namesFiles() const { return trigger() == ComposerAutocomplete::Trigger::At; }
    [[nodiscard]] const ComposerAutocomplete::TokenRange &tokenRange() const { return m_detection.range; }
    /** The highlighted candidate; absent when there is none. */
    [[nodiscard]] std::optional<QString> selected() const;

    /** Shows these candidates; without a detection or a candidate, dismiss(). */
    void update(const std::optional<ComposerAutocomplete::Detection> &detection,
                const QStringList &candidates);
    void dismiss();
    void moveHighlight(int delta); ///< goes round at both ends
    void highlight(int index);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void isActiveChanged();
    void candidatesChanged();
    void highlightedChanged();

private:
    void setActive(bool active);

    bool m_isActive = false;
    bool m_pendingConfirm = false;
    int m_highlighted = 0;
    QStringList m_candidates;
    ComposerAutocomplete::Detection m_detection;
};

} // namespace Vesk
