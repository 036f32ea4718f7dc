#include "issues/IssueGraph.h"

namespace Vesk::IssueGraph
{

using namespace Qt::StringLiterals;

namespace
{

struct ProblemIdentity {
    QString operator()(const Cycle &cycle) const { return u"cycle:"_s + cycle.ids.join(u'>'); }
    QString operator()(const Missing &missing) const
    {
        return u"missing:"_s + missing.from + u':' + missing.key + u':' + missing.ref;
    }
    QString operator()(const OneSided &one) const
    {
        return u"one:"_s + one.from + u':' + one.to + u':' + one.missingIn + u':' + one.missingInKey;
    }
    QString operator()(const SelfReference &self) const { return u"self:"_s + self.id + u':' + self.key; }
    QString operator()(const Duplicate &duplicate) const
    {
        return u"dup:"_s + duplicate.id + u':' + QString::number(duplicate.count);
    }
};

struct ProblemMessage {
    QString operator()(const Cycle &cycle) const
    {
        QStringList round = cycle.ids;
        round += cycle.ids.mid(0, 1);
        return u"순환 의존: "_s + round.join(u" → "_s) + u" — 이 사슬은 서로를 막아 영원히 안 풀립니다"_s;
    }
    QString operator()(const Missing &missing) const
    {
        return u"없는 이슈 참조: "_s + missing.from + u"의 `"_s + missing.key + u"`에 적힌 "_s + missing.ref
            + u" — 파일도 보드 행도 없습니다"_s;
    }
    QString operator()(const OneSided &one) const
    {
        return u"한쪽만 적힌 관계: "_s + one.from + u" → "_s + one.to + u" — "_s + one.missingIn + u"의 `"_s
            + one.missingInKey + u"` 칸에 반대쪽이 없습니다"_s;
    }
    QString operator()(const SelfReference &self) const
    {
        return u"자기 참조: "_s + self.id + u"의 `"_s + self.key + u"` 칸이 자기 자신을 가리킵니다"_s;
    }
    QString operator()(const Duplicate &duplicate) const
    {
        return u"같은 번호 파일 "_s + QString::number(duplicate.count) + u"개: "_s + duplicate.id
            + u" — 그래프엔 하나만 그려집니다"_s;
    }
};

struct ProblemHome {
    QString operator()(const Cycle &cycle) const { return cycle.ids.value(0); }
    QString operator()(const Missing &missing) const { return missing.from; }
    QString operator()(const OneSided &one) const { return one.missingIn; }
    QString operator()(const SelfReference &self) const { return self.id; }
    QString operator()(const Duplicate &duplicate) const { return duplicate.id; }
};

} // namespace

QString Problem::id() const
{
    return std::visit(ProblemIdentity(), what);
}

QString Problem::message() const
{
    return std::visit(ProblemMessage(), what);
}

QString primaryID(const Problem &problem)
{
    return std::visit(ProblemHome(), problem.what);
}

QHash<QString, QString> refNotes(const QString &issueID, const QList<Problem> &problems)
{
    QHash<QString, QString> notes;
    const QString issue = issueID.toLower();
    if (issue.isEmpty()) {
        return notes;
    }
    for (const Problem &problem : problems) {
        if (const auto *self = std::get_if<SelfReference>(&problem.what)) {
            if (self->id.toLower() == issue) {
                notes.insert(issue, u"자기 자신을 가리킵니다 — `"_s + self->key + u"` 칸에서 지우세요"_s);
            }
        } else if (const auto *one = std::get_if<OneSided>(&problem.what)) {
            const QString other = one->missingIn.toLower();
            const bool concerned = one->from.toLower() == issue || one->to.toLower() == issue;
            if (concerned && other != issue) {
                notes.insert(other,
                             u"반대쪽이 비어 있습니다 — "_s + one->missingIn + u"의 `"_s + one->missingInKey
                                 + u"` 칸에 "_s + issueID + u"를 적으세요"_s);
            }
        }
    }
    return notes;
}

} // namespace Vesk::IssueGraph
