#include "Streams.h"

#include "Values.h"

#include <QJsonDocument>

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace ScriptedAgent
{

namespace
{

void writeAll(int fd, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(fd, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count < 0 && errno != EINTR)
            ::_exit(0); // nobody reads any more
        bytes = bytes.sliced(qMax<ssize_t>(count, 0));
    }
}

} // namespace

void writeOut(QByteArrayView bytes)
{
    writeAll(STDOUT_FILENO, bytes);
}

void writeOutLine(const QJsonObject &line)
{
    writeOut(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}

void writeError(const QString &line)
{
    writeAll(STDERR_FILENO, line.toUtf8() + '\n');
}

void InputLines::wait(std::optional<std::chrono::milliseconds> limit)
{
    const bool listening = m_reading && !m_ended;
    pollfd input = {listening ? STDIN_FILENO : -1, POLLIN, 0};
    const int ready = ::poll(&input, 1, limit ? static_cast<int>(limit->count()) : -1);
    if (ready <= 0 || !listening)
        return;
    std::array<char, 65536> bytes; // NOLINT(*-member-init): filled by read
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR)
        return;
    if (count <= 0) {
        m_ended = true;
        return;
    }
    m_record.noteInput(QByteArrayView(bytes.data(), count));
    m_rest.append(bytes.data(), count);
    qsizetype end = 0;
    while ((end = m_rest.indexOf('\n')) >= 0) {
        const QByteArray line = m_rest.left(end);
        m_rest.remove(0, end + 1);
        noteLine(line);
    }
}

void InputLines::noteLine(const QByteArray &line)
{
    if (line.trimmed().isEmpty())
        return;
    const auto document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        writeError(u"Error parsing streaming input line: "_s + QString::fromUtf8(line.left(200)));
        ::_exit(1);
    }
    const QJsonObject object = document.object();
    const bool interrupt = valueAt(object, u"request.subtype"_s) == QJsonValue(u"interrupt"_s);
    if (!interrupt || m_interrupts == Interrupts::Line)
        m_lines.append(object);
    else if (m_interrupts == Interrupts::Answer)
        m_interrupt = object.value(u"request_id"_s).toString();
}

} // namespace ScriptedAgent
