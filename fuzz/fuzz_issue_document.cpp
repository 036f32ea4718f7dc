// Any text is an issue file: its parts are read, a field that is set leaves every other line alone, and a
// reference that is added is found.
#include "issues/IssueCells.h"
#include "issues/IssueDocument.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace
{

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

void expectOneLineChanged(const QString &before, const QString &after)
{
    const QStringList old = before.split(u'\n');
    const QStringList now = after.split(u'\n');
    const auto changed = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const auto same = changed.first - old.begin();
    const qsizetype grown = now.size() - old.size();
    expect(grown == 0 || grown == 1);
    expect(old.mid(same + 1 - grown) == now.mid(same + 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace Vesk;
    const auto text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const IssueDocument document = IssueDocument::parse(text, QStringLiteral("A-1-x.md"));
    expect(!document.id.isNull() && !document.title.isEmpty());
    expect(document.progress.done <= document.progress.total);

    const IssueDocument::StatusCell cell = document.statusCell();
    expect(cell.token + cell.trailing == document.rawValue(IssueKeys::status()).value_or(QString()));
    expect(!document.statusNote() || cell.trailing.contains(*document.statusNote()));

    const QString key = document.key(IssueKeys::status()).value_or(QStringLiteral("상태"));
    const QString done = QStringLiteral("done");
    const auto written = IssueCells::setField(text, key, cell.rewritten(done), true);
    expect(written.has_value() == document.hasMetaTable);
    if (written)
        expectOneLineChanged(text, *written);

    const QString id = QStringLiteral("Z-99");
    const QString refs = document.rawValue(IssueKeys::blockedBy()).value_or(QString());
    const QString appended = IssueCells::appendingRef(id, refs);
    expect(IssueCells::appendingRef(id, appended) == appended);
    return 0;
}
