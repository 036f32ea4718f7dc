#include "base/Text.h"
#include "git/GitFields_p.h"
#include "git/GitStatusReader.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>

namespace Vesk::GitStatusReader
{
namespace
{

constexpr char recordEnd = '\x1e';
constexpr QChar fieldEnd = u'\x1f';
constexpr QChar partEnd = u'\0';

std::optional<GitCommit> parseRecord(QByteArrayView record)
{
    const QString text = Text::trimWhitespace(QString::fromUtf8(record));
    const QStringList parts = text.split(partEnd);
    if (text.isEmpty() || parts.size() < 4)
        return std::nullopt;
    const QStringList fields = parts[0].split(fieldEnd);
    if (fields.size() < 4)
        return std::nullopt;
    const QString hash = Text::trimBlanks(fields[0]);
    if (hash.isEmpty())
        return std::nullopt;
    return GitCommit {.hash = hash,
                      .parents = fields[1].split(u' ', Qt::SkipEmptyParts),
                      .subject = parts[3],
                      .refs = parseRefs(fields[2]),
                      .timestamp = Text::trimBlanks(fields[3]).toLongLong(),
                      .author = parts[1],
                      .authorEmail = parts[2]};
}

/** A hash stands as a parent too, and authors come again and again: each text is kept once. */
void shareTexts(QList<GitCommit> &commits)
{
    QSet<QString> texts;
    const auto share = [&texts](QString &text) { text = *texts.insert(text); };
    for (GitCommit &commit : commits) {
        share(commit.hash);
        share(commit.author);
        share(commit.authorEmail);
        std::ranges::for_each(commit.parents, share);
    }
}

/** What both histories hold is kept once. */
void shareCommits(QList<GitCommit> &commits, const QList<GitCommit> &others)
{
    QHash<QStringView, const GitCommit *> byHash;
    byHash.reserve(others.size());
    for (const GitCommit &other : others)
        byHash.insert(other.hash, &other);
    for (GitCommit &commit : commits) {
        if (const GitCommit *other = byHash.value(commit.hash); other && *other == commit)
            commit = *other;
    }
}

} // namespace

QList<GitCommit> parseLog(QByteArrayView text)
{
    QList<GitCommit> commits;
    GitFields records(text, recordEnd);
    while (const auto record = records.next()) {
        if (auto commit = parseRecord(*record))
            commits.append(*std::move(commit));
    }
    return commits;
}

QStringList parseRefs(const QString &text)
{
    QStringList refs;
    const auto add = [&](const QString &name) {
        if (!name.isEmpty())
            refs.append(name);
    };
    for (const QString &each : text.split(u',')) {
        const QString piece = Text::trimBlanks(each);
        const QLatin1StringView arrow(" -> ");
        const QLatin1StringView tag("tag: ");
        if (const qsizetype at = piece.indexOf(arrow); at >= 0) {
            add(Text::trimBlanks(piece.left(at)));
            add(Text::trimBlanks(piece.mid(at + arrow.size())));
        } else {
            add(piece.startsWith(tag) ? piece.mid(tag.size()) : piece);
        }
    }
    return refs;
}

QStringList parseBranches(const QString &text, const QString &current)
{
    QStringList branches;
    for (const QString &line : text.split(u'\n')) {
        const QString name = Text::trimBlanks(line);
        if (!name.isEmpty() && name != current)
            branches.append(name);
    }
    return branches;
}

AheadBehind parseAheadBehind(const QString &text)
{
    QList<int> numbers;
    const auto isSeparator = [](QChar c) { return c == u'\t' || c == u' ' || c == u'\n' || c == u'\r'; };
    QString clean = text;
    std::replace_if(clean.begin(), clean.end(), isSeparator, u' ');
    for (const QString &piece : clean.split(u' ', Qt::SkipEmptyParts)) {
        bool isNumber = false;
        const int number = piece.toInt(&isNumber);
        if (isNumber)
            numbers.append(number);
    }
    if (numbers.size() < 2)
        return {};
    return {.ahead = numbers[1], .behind = numbers[0]};
}

History history(QByteArrayView headLog, QByteArrayView allLog, int window)
{
    QList<GitCommit> head = parseLog(headLog);
    QList<GitCommit> all = parseLog(allLog);
    window = std::max(window, 0);
    History history {.truncated = head.size() > window, .graphTruncated = all.size() > window};
    head.resize(std::min<qsizetype>(head.size(), window));
    all.resize(std::min<qsizetype>(all.size(), window));
    shareTexts(all);
    shareCommits(head, all);
    history.rows = layout(head);
    history.graphRows = layout(all);
    return history;
}

bool headOutsideGraph(const QList<GraphRow> &rows, const QList<GraphRow> &graphRows)
{
    if (rows.isEmpty() || graphRows.isEmpty())
        return false;
    return std::ranges::none_of(
        graphRows, [&](const GraphRow &row) { return row.commit.hash == rows.first().commit.hash; });
}

} // namespace Vesk::GitStatusReader
