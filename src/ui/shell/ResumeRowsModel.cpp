#include "ui/shell/ResumeRowsModel.h"

#include "sessions/AgentSessionStore.h"
#include "ui/chat/ChatWords.h"
#include "ui/shell/SessionState.h"

#include <algorithm>

namespace Vesk
{

using namespace Qt::StringLiterals;

ResumeRowsModel::ResumeRowsModel(const AgentSessionStore &store, Clock clock, QObject *parent)
    : KeyedRowsModel(parent)
    , m_store(store)
    , m_clock(clock ? std::move(clock) : Clock(&QDateTime::currentDateTime))
{
    connect(&store, &AgentSessionStore::sessionAdded, this, &ResumeRowsModel::noteAllChanged);
    // Queued: it is still in the store when it says that it goes.
    connect(&store, &AgentSessionStore::sessionAboutToBeRemoved, this, &ResumeRowsModel::noteAllChanged,
            Qt::QueuedConnection);
}

QHash<int, QByteArray> ResumeRowsModel::roleNames() const
{
    return {{KeyRole, "key"}, {TitleRole, "title"}, {DetailRole, "detail"}, {OpenRole, "isOpen"}};
}

QVariant ResumeRowsModel::data(const QModelIndex &index, int role) const
{
    const ResumableSession *session = holds(index) ? find(keys().at(index.row())) : nullptr;
    if (!session) {
        return {};
    }
    switch (role) {
    case KeyRole:
        return session->path;
    case TitleRole:
    case Qt::DisplayRole:
        return session->title.simplified();
    case DetailRole:
        return u"%1 · %2"_s.arg(ageText(session->lastModified, m_clock()),
                                ChatWords::fileSize(session->size));
    case OpenRole:
        return m_store.conversation(session->id) != nullptr;
    default:
        return {};
    }
}

const ResumableSession *ResumeRowsModel::find(const QString &key) const
{
    const auto found = m_sessions.constFind(key);
    return found == m_sessions.constEnd() ? nullptr : &*found;
}

void ResumeRowsModel::clear()
{
    setKeys({});
    m_sessions.clear();
}

void ResumeRowsModel::take(const QList<ResumableSession> &sessions)
{
    QStringList changed;
    for (const ResumableSession &session : sessions) {
        const ResumableSession *known = find(session.path);
        if (known && *known != session) {
            changed << session.path;
        }
        m_sessions.insert(session.path, session);
    }
    update();
    for (const QString &key : std::as_const(changed)) {
        noteChanged(key);
    }
}

void ResumeRowsModel::retain(const QSet<QString> &paths)
{
    QStringList gone;
    for (auto it = m_sessions.cbegin(); it != m_sessions.cend(); ++it) {
        if (!paths.contains(it.key())) {
            gone << it.key();
        }
    }
    for (const QString &key : std::as_const(gone)) {
        remove(key);
    }
    noteAllChanged(); // their ages have grown
}

void ResumeRowsModel::remove(const QString &key)
{
    QStringList rest = keys();
    rest.removeOne(key);
    setKeys(rest);
    m_sessions.remove(key);
}

void ResumeRowsModel::setFilter(const QString &text)
{
    m_words = text.simplified().normalized(QString::NormalizationForm_C).split(u' ', Qt::SkipEmptyParts);
    update();
}

bool ResumeRowsModel::isWanted(const ResumableSession &session) const
{
    return std::ranges::all_of(m_words, [&](const QString &word) {
        return session.title.normalized(QString::NormalizationForm_C).contains(word, Qt::CaseInsensitive);
    });
}

void ResumeRowsModel::update()
{
    std::vector<const ResumableSession *> wanted;
    for (const ResumableSession &session : std::as_const(m_sessions)) {
        if (isWanted(session)) {
            wanted.push_back(&session);
        }
    }
    std::ranges::sort(wanted, [](const ResumableSession *a, const ResumableSession *b) {
        return a->lastModified != b->lastModified ? a->lastModified > b->lastModified : a->path < b->path;
    });
    QStringList rows;
    for (const ResumableSession *session : wanted) {
        rows.append(session->path);
    }
    setKeys(rows);
}

} // namespace Vesk
