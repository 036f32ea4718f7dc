#include "issues/IssueStatus.h"

#include "base/Text.h"

#include <array>

namespace Vesk
{
namespace
{

struct StatusWords {
    IssueStatus::Kind kind;
    QLatin1StringView written;
    QStringView aliases; ///< separated by "|"
};

constexpr std::array statusWords {
    StatusWords {IssueStatus::Kind::Todo, QLatin1StringView("todo"), u"todo|to do|backlog|할일|할 일|대기"},
    StatusWords {IssueStatus::Kind::Doing, QLatin1StringView("doing"),
                 u"doing|in progress|wip|진행|진행중|진행 중"},
    StatusWords {IssueStatus::Kind::Blocked, QLatin1StringView("blocked"), u"blocked|block|막힘|차단|대기중"},
    StatusWords {IssueStatus::Kind::Review, QLatin1StringView("review"), u"review|in review|검토|검증|리뷰"},
    StatusWords {IssueStatus::Kind::Done, QLatin1StringView("done"), u"done|closed|complete|완료"},
    StatusWords {IssueStatus::Kind::Cancelled, QLatin1StringView("cancelled"),
                 u"cancelled|canceled|wontfix|취소|기각"},
};

} // namespace

IssueStatus IssueStatus::parse(const std::optional<QString> &text)
{
    const QString trimmed = Text::trimWhitespace(text.value_or(QString()));
    if (trimmed.isEmpty()) {
        return {};
    }
    for (const StatusWords &words : statusWords) {
        for (const QStringView alias : words.aliases.tokenize(u'|')) {
            if (alias.compare(trimmed, Qt::CaseInsensitive) == 0) {
                return {.kind = words.kind};
            }
        }
    }
    return {.kind = Kind::Other, .other = trimmed};
}

QList<IssueStatus> IssueStatus::vocabulary(const QList<IssueStatus> &seen)
{
    QList<IssueStatus> offered;
    for (const StatusWords &words : statusWords) {
        offered.append({.kind = words.kind});
    }
    for (const IssueStatus &status : seen) {
        if (status.kind == Kind::Other && !offered.contains(status)) {
            offered.append(status);
        }
    }
    return offered;
}

QString IssueStatus::written() const
{
    if (isKnown()) {
        return statusWords.at(static_cast<std::size_t>(kind)).written;
    }
    return other;
}

} // namespace Vesk
