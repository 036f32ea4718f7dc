#include "sessions/DraftKeeper.h"

#include "base/Files.h"
#include "base/PoolWork.h"
#include "sessions/AgentSessionStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <algorithm>

namespace Vesk
{

namespace
{

Q_LOGGING_CATEGORY(lcDrafts, "vesk.sessions.drafts")

constexpr int draftSettlesMs = 1000;
constexpr qsizetype maxDraftFileBytes = 64 * 1024 * 1024;

QJsonObject draftToJson(const SavedDraft &saved)
{
    QJsonObject object {{QStringLiteral("at"), saved.at.toUTC().toString(Qt::ISODateWithMs)},
                        {QStringLiteral("caret"), saved.draft.caret},
                        {QStringLiteral("folder"), saved.folder},
                        {QStringLiteral("text"),
                         saved.draft.text.first(qMin(saved.draft.text.size(), SavedDraft::maxTextLength))}};
    if (!saved.conversation.isEmpty())
        object.insert(QStringLiteral("conversation"), saved.conversation);
    if (!saved.draft.attachments.isEmpty())
        object.insert(QStringLiteral("attachments"),
                      QJsonArray::fromStringList(saved.draft.attachments.first(
                          qMin(saved.draft.attachments.size(), SavedDraft::maxAttachments))));
    return object;
}

/** What is lost with the program: the messages that wait for the end of a turn, and behind them the composer.
 */
ComposerDraft unsent(const ProjectChat &chat)
{
    ComposerDraft draft = chat.composerDraft();
    QString queued;
    QStringList attachments;
    for (const QueuedLocalSend &message : chat.pendingLocalSends()) {
        if (!message.text.isEmpty())
            queued += message.text + QStringLiteral("\n\n");
        attachments += message.attachments;
    }
    draft.text.prepend(queued);
    draft.caret += queued.size();
    draft.attachments = attachments + draft.attachments;
    draft.attachments.removeDuplicates();
    return draft;
}

bool isTalkedIn(const ProjectChat &chat)
{
    return std::ranges::any_of(chat.messages().rows(),
                               [](const ChatMessage &row) { return row.role == ChatMessage::Role::User; });
}

std::optional<SavedDraft> draftFromJson(const QJsonObject &object)
{
    SavedDraft saved;
    saved.conversation = object.value(QStringLiteral("conversation")).toString();
    saved.folder = object.value(QStringLiteral("folder")).toString();
    saved.at = QDateTime::fromString(object.value(QStringLiteral("at")).toString(), Qt::ISODateWithMs);
    saved.draft.text = object.value(QStringLiteral("text")).toString();
    const auto length = static_cast<qint64>(saved.draft.text.size());
    saved.draft.caret = qBound(qint64(0), object.value(QStringLiteral("caret")).toInteger(length), length);
    for (const auto &path : object.value(QStringLiteral("attachments")).toArray()) {
        if (path.isString())
            saved.draft.attachments.append(path.toString());
    }
    if (saved.folder.isEmpty() || saved.draft.isEmpty())
        return std::nullopt;
    return saved;
}

} // namespace

QByteArray encodeDrafts(QList<SavedDraft> drafts)
{
    std::ranges::stable_sort(drafts, std::ranges::greater(), &SavedDraft::at);
    QJsonArray array;
    for (const SavedDraft &saved : std::as_const(drafts)) {
        if (array.size() == maxSavedDrafts) {
            qCInfo(lcDrafts) << drafts.size() - maxSavedDrafts << "old drafts are not kept";
            break;
        }
        if (const auto length = saved.draft.text.size(); length > SavedDraft::maxTextLength)
            qCWarning(lcDrafts) << "a draft is too long to be kept: its last"
                                << length - SavedDraft::maxTextLength << "characters are lost";
        array.append(draftToJson(saved));
    }
    return QJsonDocument(QJsonObject {{QStringLiteral("drafts"), array}}).toJson();
}

Result<QList<SavedDraft>> decodeDrafts(const QByteArray &bytes)
{
    const auto document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return failure(ErrorKind::Malformed, QStringLiteral("no file of drafts"));
    QList<SavedDraft> drafts;
    for (const auto &entry : document.object().value(QStringLiteral("drafts")).toArray()) {
        if (auto saved = draftFromJson(entry.toObject()))
            drafts.append(std::move(*saved));
    }
    return drafts;
}

DraftKeeper::DraftKeeper(AgentSessionStore &store, QString path, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_path(std::move(path))
{
    m_writer.setMaxThreadCount(1);
    m_settled.setSingleShot(true);
    m_settled.setInterval(draftSettlesMs);
    connect(&m_settled, &QTimer::timeout, this, &DraftKeeper::save);
    connect(&m_store, &AgentSessionStore::sessionAdded, this, &DraftKeeper::add);
    connect(&m_store, &AgentSessionStore::sessionAboutToBeRemoved, this, &DraftKeeper::remove);
}

DraftKeeper::~DraftKeeper() = default;

void DraftKeeper::load()
{
    if (std::exchange(m_loaded, true))
        return;
    const auto bytes = readFile(m_path, maxDraftFileBytes);
    if (!bytes && bytes.error().kind == ErrorKind::NotFound)
        return;
    const auto drafts = bytes ? decodeDrafts(*bytes) : tl::unexpected(bytes.error());
    if (drafts) {
        m_waiting = *drafts;
        m_written = *bytes;
    } else {
        m_readable = false;
        qCWarning(lcDrafts).noquote() << m_path << drafts.error().text;
    }
}

SavedDraft DraftKeeper::draftOf(const ProjectChat &chat)
{
    return {chat.sessionId(), chat.cwd(), unsent(chat), {}};
}

void DraftKeeper::add(ProjectChat *chat)
{
    connect(chat, &ProjectChat::composerInputChanged, this, &DraftKeeper::noteChange);
    connect(chat, &ProjectChat::attachmentsChanged, this, &DraftKeeper::noteChange);
    connect(chat, &ProjectChat::pendingLocalSendsChanged, this, &DraftKeeper::noteChange);
    // Whoever opened the session may be about to fill it.
    QTimer::singleShot(0, chat, [this, keeper = QPointer(this), chat] {
        if (keeper)
            restore(chat);
    });
}

void DraftKeeper::restore(ProjectChat *chat)
{
    load();
    if (chat->isRunning() || !chat->composerDraft().isEmpty()
        || (chat->sessionId().isEmpty() && isTalkedIn(*chat)))
        return;
    const auto found = std::ranges::find_if(m_waiting, [chat](const SavedDraft &saved) {
        return saved.folder == chat->cwd() && saved.conversation == chat->sessionId();
    });
    if (found == m_waiting.end())
        return;
    const ComposerDraft draft = found->draft;
    m_waiting.erase(found);
    chat->restoreComposerDraft(draft);
}

void DraftKeeper::remove(ProjectChat *chat)
{
    disconnect(chat, nullptr, this, nullptr);
    auto saved = draftOf(*chat);
    if (!saved.conversation.isEmpty() && !saved.draft.isEmpty()) {
        saved.at = QDateTime::currentDateTimeUtc();
        m_waiting.append(std::move(saved));
    }
    noteChange();
}

void DraftKeeper::noteChange()
{
    if (!m_settled.isActive())
        m_settled.start();
}

void DraftKeeper::save()
{
    m_settled.stop();
    load();
    if (!m_readable || m_path.isEmpty())
        return;
    const auto now = QDateTime::currentDateTimeUtc();
    QList<SavedDraft> open;
    for (const ProjectChat *chat : m_store.sessions()) {
        auto saved = draftOf(*chat);
        if (saved.draft.isEmpty())
            continue;
        const auto before = std::ranges::find_if(m_open, [&saved](SavedDraft noted) {
            noted.at = {};
            return noted == saved;
        });
        saved.at = before == m_open.end() ? now : before->at;
        open.append(std::move(saved));
    }
    m_open = open;
    auto bytes = encodeDrafts(m_open + m_waiting);
    const bool isNew =
        bytes != m_written && !(m_written.isEmpty() && m_open.isEmpty() && m_waiting.isEmpty());
    if (!isNew && !m_writeFailed)
        return;
    m_written = bytes;
    m_writeFailed = false;
    workOnPool(
        this,
        [path = m_path, bytes = std::move(bytes)] {
            const auto written = writeAtomically(path, bytes, 0600);
            if (!written)
                qCWarning(lcDrafts).noquote() << written.error().text;
            return written.has_value();
        },
        [this](bool written) { m_writeFailed |= !written; }, &m_writer);
}

} // namespace Vesk
