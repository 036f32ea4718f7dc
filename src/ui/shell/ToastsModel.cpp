#include "ui/shell/ToastsModel.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

QString toastKey(const AttentionSession &session)
{
    const AttentionTold told = toldOf(session);
    return u"%1/%2/%3"_s.arg(told.key).arg(static_cast<int>(told.signal)).arg(told.since.toMSecsSinceEpoch());
}

QString toastDetail(const AttentionSession &session)
{
    const SessionState state = sessionState(session.facts);
    return session.project + u" · "_s
        + (isMyTurn(state)                     ? sessionStateText(session.facts)
               : state == SessionState::Failed ? u"실패"_s
                                               : u"끝남"_s);
}

} // namespace

QVariant ToastsModel::data(const QModelIndex &index, int role) const
{
    if (!holds(index)) {
        return {};
    }
    const AttentionSession session = m_sessions.value(keys().at(index.row()));
    const SessionState state = sessionState(session.facts);
    switch (role) {
    case KeyRole:
        return session.key;
    case TitleRole:
    case Qt::DisplayRole:
        return session.title;
    case DetailRole:
        return toastDetail(session);
    case StateRole:
        return static_cast<int>(state);
    case WaitsRole:
        return isMyTurn(state);
    case FailedRole:
        return state == SessionState::Failed;
    default:
        return {};
    }
}

QHash<int, QByteArray> ToastsModel::roleNames() const
{
    return {{KeyRole, "key"},         {TitleRole, "title"},
            {DetailRole, "detail"},   {StateRole, "sessionState"},
            {WaitsRole, "isWaiting"}, {FailedRole, "isFailed"}};
}

void ToastsModel::setSessions(const QList<AttentionSession> &sessions)
{
    QStringList rows;
    QHash<QString, AttentionSession> held = m_sessions; // rows on their way out are still asked about
    for (const AttentionSession &session : sessions) {
        rows.append(toastKey(session));
        held.insert(rows.constLast(), session);
    }
    m_sessions = held;
    setKeys(rows);
    m_sessions.removeIf([&rows](const auto &entry) { return !rows.contains(entry.key()); });
    noteAllChanged(); // a title may be another
}

} // namespace Vesk
