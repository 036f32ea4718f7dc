// What the sheet for a new issue starts from.
#pragma once

#include "issues/IssueNumbering.h"
#include "issues/IssueStatus.h"
#include "issues/IssueTemplate.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Vesk
{

class IssueStore;

struct IssueCreateContext {
    /** An issue that the new one can wait for, or hold up. */
    struct Other {
        QString id;
        QString title;
        IssueStatus status {};
        bool operator==(const Other &) const = default;
    };

    IssueNumbering::Survey survey;
    IssueTemplate::Template skeleton;
    IssueDocument fields;     ///< the skeleton, read: its rows are those that the sheet can fill
    QSet<QString> takenNames; ///< of files, in lower case
    QList<IssueStatus> statuses;
    QStringList milestones; ///< short names, in the board's order; the lists below as they occur
    QStringList areas;
    QStringList priorities;
    QStringList estimates;
    QList<Other> others; ///< by id; then the board's rows without a file

    [[nodiscard]] static IssueCreateContext of(const IssueStore &store);
};

} // namespace Vesk
