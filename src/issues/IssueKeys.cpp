#include "issues/IssueDocument.h"

using namespace Qt::StringLiterals;

namespace Vesk::IssueKeys
{

const QStringList &status()
{
    static const QStringList keys {u"상태"_s, u"status"_s, u"state"_s};
    return keys;
}

const QStringList &blockedBy()
{
    static const QStringList keys {u"선행"_s, u"depends on"_s, u"blocked by"_s, u"의존"_s};
    return keys;
}

const QStringList &blocks()
{
    static const QStringList keys {u"후행"_s, u"blocks"_s, u"후속"_s};
    return keys;
}

const QStringList &milestone()
{
    static const QStringList keys {u"마일스톤"_s, u"milestone"_s, u"이정표"_s};
    return keys;
}

const QStringList &area()
{
    static const QStringList keys {u"영역"_s, u"area"_s, u"분야"_s};
    return keys;
}

const QStringList &priority()
{
    static const QStringList keys {u"우선순위"_s, u"우선"_s, u"priority"_s};
    return keys;
}

const QStringList &estimate()
{
    static const QStringList keys {u"추정"_s, u"estimate"_s, u"예상"_s, u"규모"_s};
    return keys;
}

const QStringList &recommendedModel()
{
    static const QStringList keys {u"추천 모델"_s, u"recommended model"_s};
    return keys;
}

const QStringList &recommendedEffort()
{
    static const QStringList keys {u"추천 Effort"_s, u"recommended effort"_s};
    return keys;
}

} // namespace Vesk::IssueKeys
