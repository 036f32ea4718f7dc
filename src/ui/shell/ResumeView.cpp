#include "ui/shell/ResumeView.h"

#include "app/Runtime.h"
#include "core/UsageRecorder.h"
#include "sessions/ProjectChat.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

ResumeView::ResumeView(Runtime &runtime, ResumeRowsModel::Clock clock, QObject *parent)
    : QObject(parent)
    , m_runtime(runtime)
    , m_rows(runtime.agentStore(), std::move(clock))
{
    connect(&m_scan, &SessionScan::found, this, [this](const QList<ResumableSession> &sessions) {
        for (const ResumableSession &session : sessions) {
            m_seen.insert(session.path);
        }
        m_rows.take(sessions);
        Q_EMIT stateChanged();
    });
    connect(&m_scan, &SessionScan::finished, this, [this](const QStringList &unreadable) {
        m_rows.retain(m_seen);
        m_errorText = unreadable.join(u'\n');
        Q_EMIT stateChanged();
    });
    connect(&runtime, &Runtime::catalogEntriesChanged, this, &ResumeView::onCatalogChanged);
}

QStringList ResumeView::aliases() const
{
    QStringList names = projectAliases(m_runtime.catalogEntries());
    names.removeDuplicates();
    return names;
}

void ResumeView::setAlias(const QString &alias)
{
    if (m_alias == alias) {
        return;
    }
    m_alias = alias;
    m_scan.cancel();
    m_rows.clear();
    m_errorText.clear();
    setNotice({});
    Q_EMIT aliasChanged();
    if (m_shown) {
        refresh();
    }
}

void ResumeView::setFilter(const QString &text)
{
    if (m_filter == text) {
        return;
    }
    m_filter = text;
    m_rows.setFilter(text);
    Q_EMIT filterChanged();
    Q_EMIT stateChanged();
}

QString ResumeView::countText() const
{
    const qsizetype total = m_rows.total();
    if (total == 0) {
        return {};
    }
    return m_rows.count() == total ? u"대화 %1개"_s.arg(total)
                                   : u"대화 %1개 중 %2개"_s.arg(total).arg(m_rows.count());
}

QString ResumeView::emptyText() const
{
    if (m_rows.count() > 0 || loading() || !m_errorText.isEmpty()) {
        return {};
    }
    if (m_alias.isEmpty()) {
        return u"프로젝트 폴더를 추가하면 그 폴더의 지난 대화가 여기에 보입니다"_s;
    }
    return m_rows.total() > 0 ? u"제목에 이 말이 든 대화가 없습니다"_s
                              : u"이 프로젝트의 지난 대화가 없습니다"_s;
}

void ResumeView::show(const QString &alias)
{
    if (!m_shown) {
        UsageRecorder::record(FeatureSignal::ResumePanelOpened);
    }
    m_shown = true;
    const QStringList known = aliases();
    const QString wanted = known.contains(alias) ? alias : known.contains(m_alias) ? m_alias : known.value(0);
    if (wanted == m_alias) {
        refresh();
    } else {
        setAlias(wanted);
    }
}

void ResumeView::hide()
{
    m_shown = false;
    m_scan.cancel();
    setFilter({});
    setNotice({});
}

void ResumeView::refresh()
{
    const auto &entries = m_runtime.catalogEntries();
    const auto entry = std::ranges::find(entries, m_alias, &ProjectCatalogEntry::alias);
    m_seen.clear();
    m_errorText.clear();
    if (entry == entries.end()) {
        m_scan.cancel();
        m_rows.clear();
    } else {
        m_scan.start(SessionResume::historyRoot(), m_alias, entry->path);
    }
    Q_EMIT stateChanged();
}

void ResumeView::cancel()
{
    m_scan.cancel();
    Q_EMIT stateChanged();
}

void ResumeView::dismissNotice()
{
    setNotice({});
}

void ResumeView::resume(const QString &key)
{
    const ResumableSession *session = m_rows.find(key);
    if (!session) {
        return;
    }
    setNotice({});
    m_runtime.resume().resumeSession(*session, this, [this](const ProjectChat *chat) {
        if (chat) {
            Q_EMIT resumed(chat->id().toString(QUuid::WithoutBraces));
        } else {
            setNotice(u"이어가기 실패 — 세션을 불러올 수 없습니다"_s);
        }
    });
}

void ResumeView::requestDelete(const QString &key)
{
    const ResumableSession *session = m_rows.find(key);
    if (!session) {
        return;
    }
    if (m_runtime.agentStore().conversation(session->id)) {
        moveToTrash(key); // which refuses, and says so
    } else {
        setNotice({});
        Q_EMIT deleteConfirmationNeeded(key, session->title.simplified());
    }
}

void ResumeView::moveToTrash(const QString &key)
{
    const ResumableSession *session = m_rows.find(key);
    if (!session) {
        return;
    }
    setNotice({});
    switch (m_runtime.resume().deleteResumableSession(*session)) {
    case ResumeDeleteOutcome::Deleted:
        if (m_runtime.resume().lastDeleted()) {
            setTrashed(session->title.simplified(), {});
        }
        m_rows.remove(key);
        Q_EMIT stateChanged();
        break;
    case ResumeDeleteOutcome::Blocked:
        setNotice(u"열려 있는 대화는 휴지통으로 옮길 수 없습니다. 탭을 먼저 닫으세요."_s);
        break;
    case ResumeDeleteOutcome::Failed:
        setNotice(u"휴지통으로 옮기지 못했습니다: "_s + session->path);
        break;
    }
}

void ResumeView::undoTrash()
{
    const auto deleted = m_runtime.resume().lastDeleted();
    if (!deleted) {
        return;
    }
    using ClaudeSessionHistory::TrashReturn;
    switch (m_runtime.resume().undoDelete()) {
    case TrashReturn::Returned:
        setTrashed({}, {});
        if (m_shown) {
            refresh();
        }
        break;
    case TrashReturn::Occupied:
        setTrashed(deleted->title.simplified(),
                   u"같은 이름의 파일이 그 자리에 다시 생겼습니다: "_s + deleted->path);
        break;
    case TrashReturn::Gone:
        setTrashed(deleted->title.simplified(), u"휴지통에 더는 없습니다."_s);
        break;
    case TrashReturn::Failed:
        setTrashed(deleted->title.simplified(), u"파일을 옮길 수 없습니다: "_s + deleted->path);
        break;
    }
}

void ResumeView::dismissTrashed()
{
    setTrashed({}, {});
}

void ResumeView::onCatalogChanged()
{
    Q_EMIT aliasesChanged();
    const QStringList known = aliases();
    if (!known.contains(m_alias)) {
        setAlias(known.value(0));
        Q_EMIT stateChanged();
    }
}

void ResumeView::setNotice(const QString &text)
{
    if (m_notice != text) {
        m_notice = text;
        Q_EMIT noticeChanged();
    }
}

void ResumeView::setTrashed(const QString &title, const QString &refusal)
{
    m_trashedTitle = title;
    m_undoRefusal = refusal;
    Q_EMIT trashedChanged(); // of the same title too: it is another conversation
}

} // namespace Vesk
