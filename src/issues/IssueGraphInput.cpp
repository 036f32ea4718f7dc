#include "issues/IssueCells.h"
#include "issues/IssueGraph.h"

namespace Vesk::IssueGraph
{

Input input(const IssueDocument &document)
{
    const Input unnamed;
    return {.id = document.id,
            .title = document.title,
            .status = document.status().value_or(QString()),
            .milestone = document.value(IssueKeys::milestone()).value_or(QString()),
            .blockedBy = IssueCells::refDetails(document.rawValue(IssueKeys::blockedBy())),
            .blocks = IssueCells::refDetails(document.rawValue(IssueKeys::blocks())),
            .blockedByKey = document.key(IssueKeys::blockedBy()).value_or(unnamed.blockedByKey),
            .blocksKey = document.key(IssueKeys::blocks()).value_or(unnamed.blocksKey)};
}

} // namespace Vesk::IssueGraph
