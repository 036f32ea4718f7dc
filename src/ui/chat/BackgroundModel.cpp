#include "ui/chat/BackgroundModel.h"

#include "core/UsageRecorder.h"
#include "sessions/ProjectChat.h"
#include "ui/chat/BackgroundWords.h"
#include "ui/chat/ChatWords.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QUrl>

#include <algorithm>

namespace Vesk
{

namespace
{

using Key = BackgroundRowKey;

BackgroundModel::Kind drawnKind(Key::Kind kind)
{
    switch (kind) {
    case Key::Kind::Task:
        return BackgroundModel::Kind::Task;
    case Key::Kind::Phase:
    case Key::Kind::OtherPhase:
        return BackgroundModel::Kind::Phase;
    case Key::Kind::Agent:
        return BackgroundModel::Kind::Agent;
    case Key::Kind::Line:
        return BackgroundModel::Kind::Line;
    case Key::Kind::Dropped:
    case Key::Kind::Lines:
        return BackgroundModel::Kind::Lines;
    case Key::Kind::Output:
        return BackgroundModel::Kind::Output;
    case Key::Kind::Summary:
        return BackgroundModel::Kind::Summary;
    }
    return BackgroundModel::Kind::Line;
}

QString stateName(BackgroundRow::State state)
{
    switch (state) {
    case BackgroundRow::State::Waiting:
        return QStringLiteral("waiting");
    case BackgroundRow::State::Running:
        return QStringLiteral("running");
    case BackgroundRow::State::Done:
        return QStringLiteral("done");
    case BackgroundRow::State::Failed:
        return QStringLiteral("failed");
    }
    return {};
}

QSet<Key> keysOf(const QList<BackgroundRow> &rows)
{
    QSet<Key> keys;
    keys.reserve(rows.size());
    for (const BackgroundRow &row : rows) {
        keys.insert(row.key);
    }
    return keys;
}

} // namespace

BackgroundModel::BackgroundModel(QObject *parent)
    : QAbstractListModel(parent)
{
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(refreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &BackgroundModel::refresh);
}

BackgroundModel::~BackgroundModel() = default;

ProjectChat *BackgroundModel::chat() const
{
    return m_chat;
}

void BackgroundModel::setChat(ProjectChat *chat)
{
    if (m_chat == chat && chat) {
        return;
    }
    if (m_chat) {
        disconnect(&m_chat->backgroundTasks(), nullptr, this, nullptr);
    }
    m_chat = chat;
    m_status.setChat(chat);
    if (m_chat) {
        if (!m_memories.contains(m_chat->id())) {
            connect(m_chat, &QObject::destroyed, this, [this, id = m_chat->id()] { m_memories.remove(id); });
        }
        connect(&m_chat->backgroundTasks(), &BackgroundTasks::tasksChanged, this, [this] {
            if (m_shown && !m_refresh.isActive()) {
                m_refresh.start();
            }
        });
    }
    beginResetModel();
    m_rows.clear();
    endResetModel();
    setProblem({});
    refresh();
    Q_EMIT chatChanged();
}

void BackgroundModel::setShown(bool shown)
{
    if (shown == m_shown) {
        return;
    }
    m_shown = shown;
    if (shown) {
        UsageRecorder::record(FeatureSignal::BackgroundPanelOpened);
        refresh();
    }
    Q_EMIT shownChanged();
}

QString BackgroundModel::runningText() const
{
    return m_running > 0 ? QStringLiteral("진행 %1").arg(m_running) : QString();
}

QString BackgroundModel::finishedText() const
{
    return m_finished > 0 ? QStringLiteral("끝남 %1").arg(m_finished) : QString();
}

void BackgroundModel::activate(int row)
{
    if (!holdsRow(row)) {
        return;
    }
    const BackgroundRow &pressed = m_rows.at(row);
    if (pressed.key.kind == Key::Kind::Output) {
        openFile(pressed.title);
    } else if (pressed.key.kind == Key::Kind::Summary) {
        setOpen(parentOf(row), !pressed.isOpen);
    } else {
        setOpen(row, !pressed.isOpen);
    }
}

bool BackgroundModel::setOpen(int row, bool open)
{
    if (!m_chat || !holdsRow(row) || !m_rows.at(row).canOpen || m_rows.at(row).isOpen == open) {
        return false;
    }
    m_memories[m_chat->id()].folding.insert(m_rows.at(row).key, open);
    refresh();
    return true;
}

int BackgroundModel::parentOf(int row) const
{
    if (!holdsRow(row) || m_rows.at(row).key.kind == Key::Kind::Task) {
        return -1;
    }
    const bool inPhase = m_rows.at(row).key.kind == Key::Kind::Agent;
    int above = row - 1;
    while (above >= 0 && m_rows.at(above).key.kind != Key::Kind::Task
           && !(inPhase && drawnKind(m_rows.at(above).key.kind) == Kind::Phase)) {
        --above;
    }
    return above;
}

int BackgroundModel::rowStartingWith(const QString &text, int from) const
{
    const auto count = static_cast<int>(m_rows.size());
    for (int step = 0; step < count; ++step) {
        const int row = (std::max(from, 0) + step) % count;
        if (m_rows.at(row).title.startsWith(text, Qt::CaseInsensitive)) {
            return row;
        }
    }
    return -1;
}

int BackgroundModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant BackgroundModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const BackgroundRow &row = m_rows.at(index.row());
    switch (role) {
    case KindRole:
        return static_cast<int>(drawnKind(row.key.kind));
    case StateRole:
        return stateName(row.state);
    case Qt::DisplayRole:
    case TitleRole:
        return row.title;
    case DetailRole:
        return row.detail;
    case ChipRole:
        return row.chip;
    case IsCodeRole:
        return row.isCode;
    case IsRestoredRole:
        return row.isRestored;
    case CanOpenRole:
        return row.canOpen;
    case IsOpenRole:
        return row.isOpen;
    case IsLastRole:
        return row.isLast;
    case IsFirstRole:
        return index.row() == 0;
    case SinceRole:
        return row.since;
    case TimeRole:
        return row.durationMs ? ChatWords::elapsed(*row.durationMs / 1000) : QString();
    case TokensRole:
        return row.tokens ? ChatWords::tokens(*row.tokens) : QString();
    case CallsRole:
        return row.toolCalls ? QStringLiteral("%1회").arg(*row.toolCalls) : QString();
    case DoneRole:
        return row.done;
    case FailedRole:
        return row.failed;
    case TotalRole:
        return row.total;
    case AccessibleTextRole:
        return BackgroundWords::accessibleText(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> BackgroundModel::roleNames() const
{
    return {{KindRole, "kind"},
            {StateRole, "workState"},
            {TitleRole, "title"},
            {DetailRole, "detail"},
            {ChipRole, "chip"},
            {IsCodeRole, "isCode"},
            {IsRestoredRole, "isRestored"},
            {CanOpenRole, "canOpen"},
            {IsOpenRole, "isOpen"},
            {IsLastRole, "isLast"},
            {IsFirstRole, "isFirst"},
            {SinceRole, "since"},
            {TimeRole, "time"},
            {TokensRole, "tokens"},
            {CallsRole, "calls"},
            {DoneRole, "done"},
            {FailedRole, "failed"},
            {TotalRole, "total"},
            {AccessibleTextRole, "accessibleText"}};
}

void BackgroundModel::refresh()
{
    m_refresh.stop();
    QList<BackgroundRow> rows;
    int running = 0;
    int finished = 0;
    if (m_chat) {
        const QList<BackgroundTask> &tasks = m_chat->backgroundTasks().tasks();
        Memory &memory = m_memories[m_chat->id()];
        rows = backgroundRows(tasks, memory.keys, memory.folding);
        for (const BackgroundTask &task : tasks) {
            ++(task.status == BackgroundTask::Status::Running ? running : finished);
        }
    }
    const bool wasEmpty = isEmpty();
    setRows(rows);
    if (running != m_running || finished != m_finished || wasEmpty != isEmpty()) {
        m_running = running;
        m_finished = finished;
        Q_EMIT countsChanged();
    }
}

void BackgroundModel::setRows(const QList<BackgroundRow> &rows)
{
    const Key top = m_rows.isEmpty() ? Key() : m_rows.constFirst().key;
    removeGone(rows);
    arrange(rows);
    updateKept(rows);
    if (!m_rows.isEmpty() && m_rows.constFirst().key != top) {
        Q_EMIT dataChanged(index(0), index(static_cast<int>(m_rows.size()) - 1), {IsFirstRole});
    }
}

void BackgroundModel::removeGone(const QList<BackgroundRow> &rows)
{
    const QSet<Key> wanted = keysOf(rows);
    for (auto last = static_cast<int>(m_rows.size()) - 1; last >= 0; --last) {
        if (wanted.contains(m_rows.at(last).key)) {
            continue;
        }
        int first = last;
        while (first > 0 && !wanted.contains(m_rows.at(first - 1).key)) {
            --first;
        }
        beginRemoveRows({}, first, last);
        m_rows.remove(first, last - first + 1);
        endRemoveRows();
        last = first;
    }
}

/** Every row that is left is wanted: rows move up to their places, and new ones come in between. */
void BackgroundModel::arrange(const QList<BackgroundRow> &rows)
{
    const QSet<Key> kept = keysOf(m_rows);
    qsizetype place = 0;
    while (place < rows.size()) {
        const Key &key = rows.at(place).key;
        if (place < m_rows.size() && m_rows.at(place).key == key) {
            ++place;
            continue;
        }
        qsizetype count = 1;
        if (!kept.contains(key)) {
            while (place + count < rows.size() && !kept.contains(rows.at(place + count).key)) {
                ++count;
            }
            beginInsertRows({}, static_cast<int>(place), static_cast<int>(place + count - 1));
            m_rows = m_rows.first(place) + rows.mid(place, count) + m_rows.mid(place);
            endInsertRows();
        } else {
            qsizetype from = place + 1;
            while (m_rows.at(from).key != key) {
                ++from;
            }
            while (place + count < rows.size() && from + count < m_rows.size()
                   && m_rows.at(from + count).key == rows.at(place + count).key) {
                ++count;
            }
            beginMoveRows({}, static_cast<int>(from), static_cast<int>(from + count - 1), {},
                          static_cast<int>(place));
            std::rotate(m_rows.begin() + place, m_rows.begin() + from, m_rows.begin() + from + count);
            endMoveRows();
        }
        place += count;
    }
}

void BackgroundModel::updateKept(const QList<BackgroundRow> &rows)
{
    for (qsizetype first = 0; first < rows.size(); ++first) {
        if (m_rows.at(first) == rows.at(first)) {
            continue;
        }
        qsizetype last = first;
        while (last < rows.size() && m_rows.at(last) != rows.at(last)) {
            m_rows[last] = rows.at(last);
            ++last;
        }
        Q_EMIT dataChanged(index(static_cast<int>(first)), index(static_cast<int>(last - 1)));
        first = last;
    }
}

void BackgroundModel::openFile(const QString &path)
{
    const auto address = openableFile(path, m_chat ? m_chat->cwd() : QString());
    if (!address) {
        setProblem(QStringLiteral("출력 파일을 열 수 없습니다 — ") + path);
    } else {
        setProblem(QDesktopServices::openUrl(*address)
                       ? QString()
                       : QStringLiteral("이 파일을 여는 프로그램이 없습니다 — ") + path);
    }
}

void BackgroundModel::setProblem(const QString &problem)
{
    if (problem != m_problem) {
        m_problem = problem;
        Q_EMIT problemChanged();
    }
}

std::optional<QUrl> openableFile(const QString &path, const QString &folder)
{
    const QFileInfo file(QDir(folder), path);
    // The desktop would start a launcher or a program in place of showing it.
    const bool starts = file.isExecutable() || file.suffix() == QLatin1StringView("desktop");
    if (path.isEmpty() || !file.isFile() || !file.isReadable() || starts) {
        return std::nullopt;
    }
    return QUrl::fromLocalFile(file.absoluteFilePath());
}

} // namespace Vesk
