// Any text is a board, and any other an issue's file: the plan for the two deletes no line, and planned again
// on its own text it changes nothing.
#include "issues/IssueBoard.h"
#include "issues/IssueBoardSync.h"

#include <cstdint>
#include <cstdlib>

namespace
{

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

// The board ends at the first NUL; behind it, and behind each further one, is an issue's file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace Vesk;
    const QStringList texts =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)).split(QChar());
    const QString &board = texts.front();
    QList<IssueBoardSync::Entry> entries;
    for (const QString &text : texts.mid(1)) {
        const QString fileName = QStringLiteral("A-%1.md").arg(entries.size());
        entries.append(IssueBoardSync::entry(IssueDocument::parse(text, fileName), fileName));
    }
    for (const auto scope : {IssueBoardSync::Scope::Full, IssueBoardSync::Scope::StatusesOnly}) {
        const IssueBoardSync::Plan plan = IssueBoardSync::plan(board, entries, scope);
        expect(plan.changesAnything() == (plan.markdown != board));
        expect(plan.markdown.count(u'\n') == board.count(u'\n') + plan.added.size());
        expect(!IssueBoardSync::plan(plan.markdown, entries, scope).changesAnything());
        expect(IssueBoard::parse(plan.markdown).rows.size()
               == IssueBoard::parse(board).rows.size() + plan.added.size());
    }
    return 0;
}
