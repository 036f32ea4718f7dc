#include "issues/IssueTemplate.h"

#include "base/Text.h"
#include "issues/IssueCells.h"
#include "issues/IssueScaffold.h"
#include "markdown/MarkdownLines.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::array titleSeparators {QStringView(u" · "), QStringView(u" — "), QStringView(u" – "),
                                      QStringView(u": ")};

/** The items that stand in at least `threshold` of the lists, in the order in which they first appear. */
QStringList frequentOrdered(const QList<QStringList> &lists, qsizetype threshold)
{
    QStringList order;
    QHash<QString, qsizetype> counts;
    for (const QStringList &list : lists) {
        QSet<QString> counted;
        for (const QString &item : list) {
            if (counted.contains(item)) {
                continue;
            }
            counted.insert(item);
            if (++counts[item] == 1) {
                order.append(item);
            }
        }
    }
    order.removeIf([&](const QString &item) { return counts.value(item) < threshold; });
    return order;
}

bool isTitleLine(QStringView line)
{
    return line.startsWith(u"# ");
}

bool isTemplate(const QStringList &lines)
{
    bool hasTitle = false;
    bool hasRow = false;
    for (const QString &line : lines) {
        const QString trimmed = Text::trimBlanks(line);
        hasTitle = hasTitle || isTitleLine(trimmed);
        hasRow = hasRow || (trimmed.startsWith(u'|') && IssueCells::tableCells(trimmed).size() == 2);
    }
    return hasTitle && hasRow;
}

bool isStatusKey(const QString &key)
{
    return IssueKeys::status().contains(key, Qt::CaseInsensitive);
}

QString skeleton(const QStringList &keys, const QStringList &sections, bool backticks)
{
    QStringList lines {u"# ID · 제목"_s, QString(), u"| 항목 | 값 |"_s, u"|---|---|"_s};
    for (const QString &key : keys) {
        const QString value = !isStatusKey(key) ? u"—"_s : backticks ? u"`todo`"_s : u"todo"_s;
        lines.append(u"| "_s + key + u" | "_s + value + u" |"_s);
    }
    for (const QString &section : sections) {
        lines << QString() << u"## "_s + section << QString();
    }
    return lines.join(u'\n');
}

} // namespace

IssueTemplate::Template IssueTemplate::resolve(const std::optional<QString> &readme,
                                               const QList<IssueDocument> &existing, const QString &key)
{
    if (auto own = readme ? templateFence(*readme) : std::nullopt) {
        return {*own, Origin::Readme};
    }
    if (auto learned = learn(existing)) {
        return {*learned, Origin::Existing};
    }
    // A prefix may be anything that a file name holds, signs of a fence among it.
    return {templateFence(IssueScaffold::readme(key)).value_or(IssueScaffold::skeleton(key)),
            Origin::Builtin};
}

std::optional<QString> IssueTemplate::templateFence(const QString &text)
{
    QStringList fence;
    MarkdownLines lines(text);
    while (const auto line = lines.next()) {
        if (!line->fenced) {
            continue;
        }
        if (!line->trimmed.startsWith(u"```")) {
            fence.append(line->text.toString());
        } else if (isTemplate(fence)) {
            return fence.join(u'\n');
        } else {
            fence.clear();
        }
    }
    return std::nullopt;
}

std::optional<QString> IssueTemplate::learn(const QList<IssueDocument> &documents)
{
    QList<QStringList> keysOfAll;
    QList<QStringList> sectionsOfAll;
    bool backticks = false;
    for (const IssueDocument &document : documents) {
        QStringList sections;
        for (const auto &section : document.sections) {
            sections.append(section.title);
        }
        sectionsOfAll.append(sections);
        if (!document.hasMetaTable || document.fields.isEmpty()) {
            continue;
        }
        QStringList keys;
        for (const auto &field : document.fields) {
            keys.append(field.key);
        }
        keysOfAll.append(keys);
        backticks = backticks || document.rawValue(IssueKeys::status()).value_or(QString()).startsWith(u'`');
    }
    const qsizetype threshold = (keysOfAll.size() + 1) / 2;
    const QStringList keys = frequentOrdered(keysOfAll, threshold);
    if (keys.isEmpty()) {
        return std::nullopt;
    }
    return skeleton(keys, frequentOrdered(sectionsOfAll, threshold), backticks);
}

std::optional<QString> IssueTemplate::headingSeparator(const QString &markdown)
{
    for (const QStringView line : QStringView(markdown).tokenize(u'\n')) {
        if (!isTitleLine(line)) {
            continue;
        }
        const auto found = std::ranges::find_if(
            titleSeparators, [&](QStringView separator) { return line.contains(separator); });
        return found == titleSeparators.end() ? std::nullopt : std::optional(found->toString());
    }
    return std::nullopt;
}

QString IssueTemplate::replaceHeading(const QString &markdown, const QString &id, const QString &title)
{
    const QString heading =
        u"# "_s + id + headingSeparator(markdown).value_or(titleSeparators.front().toString()) + title;
    QStringList lines = markdown.split(u'\n');
    const auto old = std::ranges::find_if(lines, [](const QString &line) { return isTitleLine(line); });
    if (old == lines.end()) {
        return heading + u"\n\n"_s + markdown;
    }
    *old = heading;
    return lines.join(u'\n');
}

QString IssueTemplate::fileName(const QString &id, const QString &slug)
{
    return id + (slug.isEmpty() ? slug : u'-' + slug.toLower()) + u".md"_s;
}

} // namespace Vesk
