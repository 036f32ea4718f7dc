#include "issues/IssueCreateContext.h"

#include "base/Text.h"
#include "issues/IssueScaffold.h"
#include "issues/IssueStore.h"

#include <algorithm>

namespace Vesk
{

namespace
{

/** The values of a field over all issues and rows of the board, each once, by name. */
QStringList valuesOf(const IssueStore &store, const QStringList &keys,
                     std::optional<QString> IssueBoard::Row::*ofRow)
{
    QSet<QString> values;
    for (const IssueItem &item : store.items()) {
        values.insert(item.doc.value(keys).value_or(QString()));
    }
    for (const IssueBoard::Row &row : store.board().rows) {
        values.insert((row.*ofRow).value_or(QString()));
    }
    values.remove(QString());
    QStringList sorted = values.values();
    std::ranges::sort(
        sorted, [](const auto &left, const auto &right) { return Text::compareNames(left, right) < 0; });
    return sorted;
}

} // namespace

IssueCreateContext IssueCreateContext::of(const IssueStore &store)
{
    IssueCreateContext context;
    context.survey = store.numbering();
    QList<IssueDocument> existing;
    for (const IssueItem &item : store.items()) {
        existing.append(item.doc);
        context.others.append({item.doc.id, item.doc.title, IssueStatus::parse(item.doc.status())});
    }
    for (const IssueGraph::BoardRow &row : store.boardOnlyRows()) {
        context.others.append({row.id, row.title, IssueStatus::parse(row.status)});
    }
    const QString &prefix = context.survey.prefix;
    context.skeleton = IssueTemplate::resolve(
        store.readmeText(), existing, prefix.isEmpty() ? IssueScaffold::suggestedKey(store.cwd()) : prefix);
    context.fields = IssueDocument::parse(context.skeleton.markdown, QString());
    context.takenNames = store.fileNames();
    context.statuses = IssueStatus::vocabulary(store.statusesSeen());
    context.milestones = store.graph().milestones;
    context.areas = valuesOf(store, IssueKeys::area(), &IssueBoard::Row::area);
    context.priorities = valuesOf(store, IssueKeys::priority(), &IssueBoard::Row::priority);
    context.estimates = valuesOf(store, IssueKeys::estimate(), &IssueBoard::Row::estimate);
    return context;
}

} // namespace Vesk
