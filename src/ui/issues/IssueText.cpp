#include "ui/issues/IssueText.h"

#include "markdown/MarkdownLines.h"

#include <QList>

#include <algorithm>

namespace Vesk
{

namespace
{

bool isEditorLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator || c == QChar(0xfdd0)
        || c == QChar(0xfdd1);
}

/** How many code units the sign at `at` takes: two for CR LF. */
qsizetype signSize(const QString &text, qsizetype at)
{
    return text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n' ? 2 : 1;
}

QStringView lineAround(QStringView text, qsizetype at)
{
    const auto begin = at > 0 ? text.lastIndexOf(u'\n', at - 1) + 1 : 0;
    const auto end = text.indexOf(u'\n', at);
    return text.sliced(begin, (end < 0 ? text.size() : end) - begin);
}

} // namespace

IssueText::SameEnds IssueText::sameEnds(QStringView one, QStringView other)
{
    const auto most = std::min(one.size(), other.size());
    const auto head = std::mismatch(one.begin(), one.begin() + most, other.begin()).first - one.begin();
    const auto tail =
        std::mismatch(one.rbegin(), one.rbegin() + (most - head), other.rbegin()).first - one.rbegin();
    return {head, tail};
}

qsizetype IssueText::caretAfter(const QString &before, const QString &after, qsizetype at)
{
    const auto [head, tail] = sameEnds(before, after);
    if (at <= head) {
        return at;
    }
    if (at >= before.size() - tail) {
        return at + after.size() - before.size();
    }
    const QStringView line = lineAround(before, at);
    const auto column = at - (line.begin() - QStringView(before).begin());
    const auto lines = QStringView(after).split(u'\n');
    const auto here = std::min(QStringView(before).first(at).count(u'\n'), lines.size() - 1);
    auto found = here;
    for (qsizetype step = 0; step < lines.size() && !line.trimmed().isEmpty(); ++step) {
        const auto isIt = [&](qsizetype row) { return row >= 0 && row < lines.size() && lines[row] == line; };
        if (isIt(here - step) || isIt(here + step)) {
            found = isIt(here - step) ? here - step : here + step;
            break;
        }
    }
    return (lines[found].begin() - QStringView(after).begin()) + std::min(column, lines[found].size());
}

QString IssueText::body(const QString &markdown)
{
    QString shown = markdown;
    const auto blank = [&shown](const MarkdownLine &line) {
        std::fill_n(shown.begin() + line.begin, line.text.size(), u' ');
    };
    bool title = false;
    bool table = false;
    MarkdownLines lines(markdown);
    while (const auto line = lines.next()) {
        if (line->trimmed.isEmpty()) {
            if (table) {
                break;
            }
            continue;
        }
        if (!title && !table && line->trimmed.startsWith(u"# ")) {
            title = true;
            blank(*line);
        } else if (!line->fenced && line->isTableLine()) {
            table = true;
            blank(*line);
        } else {
            break;
        }
    }
    return shown;
}

std::optional<QString> IssueText::toggledTask(const QString &markdown, qsizetype at)
{
    if (at < 1 || at + 1 >= markdown.size() || markdown[at - 1] != u'[' || markdown[at + 1] != u']') {
        return std::nullopt;
    }
    const bool open = markdown[at] == u' ';
    if (!open && markdown[at] != u'x' && markdown[at] != u'X') {
        return std::nullopt;
    }
    QString changed = markdown;
    changed[at] = open ? u'x' : u' ';
    return changed;
}

QString IssueText::editorText(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return c != u'\n' && isEditorLineEnd(c); })) {
        return text;
    }
    QString edited;
    edited.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); at += signSize(text, at)) {
        edited.append(isEditorLineEnd(text[at]) ? QChar(u'\n') : text[at]);
    }
    return edited;
}

QString IssueText::withEdit(const QString &text, const QString &edited)
{
    const QString before = editorText(text);
    if (before == edited) {
        return text;
    }
    const auto [head, tail] = sameEnds(before, edited);
    QString middle = edited.mid(head, edited.size() - head - tail);
    if (before == text) {
        return text.left(head) + middle + text.right(tail);
    }
    // Line ends that are added are like those that are there.
    if (text.contains(u"\r\n")) {
        middle.replace(u'\n', QStringLiteral("\r\n"));
    }
    qsizetype from = 0;
    for (qsizetype sign = 0; sign < head; ++sign) {
        from += signSize(text, from);
    }
    qsizetype to = from;
    for (qsizetype sign = head; sign < before.size() - tail; ++sign) {
        to += signSize(text, to);
    }
    const QString changed = text.left(from) + middle + text.mid(to);
    // A lone CR and a LF that is typed behind it would become one line end.
    return editorText(changed) == edited ? changed : edited;
}

} // namespace Vesk
