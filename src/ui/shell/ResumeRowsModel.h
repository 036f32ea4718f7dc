// The past conversations of one project, as a list that grows while they are read and is filtered by words.
#pragma once

#include "sessions/ClaudeSessionHistory.h"
#include "ui/controls/KeyedRowsModel.h"

#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace Vesk
{

class AgentSessionStore;

/** Newest first. The keys are the paths of the transcripts. */
class ResumeRowsModel : public Vesk::KeyedRowsModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by ResumeView")

public:
    enum Role {
        KeyRole = Qt::UserRole + 1,
        TitleRole,
        DetailRole, ///< age and size, as in "3시간 · 1.2 MB"
        OpenRole,   ///< a session is open on it
    };
    using Clock = std::function<QDateTime()>;

    ResumeRowsModel(const AgentSessionStore &store, Clock clock, QObject *parent = nullptr);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /** All of them, the filtered ones too. */
    [[nodiscard]] qsizetype total() const { return m_sessions.size(); }
    /** Null for an unknown key. */
    [[nodiscard]] const ResumableSession *find(const QString &key) const;
    Q_INVOKABLE QString keyAt(int row) const { return keys().value(row); }

    void clear();
    /** Adds what is new and takes over what has changed. */
    void take(const QList<ResumableSession> &sessions);
    /** Leaves only these. */
    void retain(const QSet<QString> &paths);
    void remove(const QString &key);
    /** Only titles in which every word of `text` occurs; all for a blank text. */
    void setFilter(const QString &text);

private:
    void update();
    [[nodiscard]] bool isWanted(const ResumableSession &session) const;

    const AgentSessionStore &m_store;
    Clock m_clock;
    QHash<QString, ResumableSession> m_sessions; // by path
    QStringList m_words;
};

} // namespace Vesk
