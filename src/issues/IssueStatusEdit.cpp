#include "issues/IssueStatusEdit.h"

#include "core/UsageRecorder.h"
#include "issues/IssueBoardUpdate.h"
#include "issues/IssueCells.h"
#include "issues/IssueFile.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

QString nameOf(const QString &path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

IssueStatusEdit::Outcome statusProblem(const QString &text)
{
    return {std::nullopt, text};
}

/** What the cell of a document is to become; a problem when it is to stay. */
using NewCell = std::function<tl::expected<QString, QString>(const IssueDocument &document)>;

IssueStatusEdit::Outcome rewriteStatus(const IssueDesk &desk, const QString &path, const NewCell &newCell)
{
    desk.flush(path);
    const QString name = nameOf(path);
    const auto text = IssueFile::read(path);
    if (!text) {
        return statusProblem(u"파일을 읽지 못해 바꾸지 않았습니다: "_s + name);
    }
    const auto document = IssueDocument::parse(*text, name);
    const auto cell = newCell(document);
    if (!cell) {
        return statusProblem(cell.error());
    }
    const QString key = document.key(IssueKeys::status()).value_or(u"상태"_s);
    const auto changed = IssueCells::setField(*text, key, *cell, true);
    if (!changed) {
        return statusProblem(
            u"이 파일엔 `| 항목 | 값 |` 표가 없어 상태를 바꿀 수 없습니다 — 상세에서 표를 추가하세요."_s);
    }
    if (*changed == *text) {
        return {};
    }
    if (const auto problem = desk.io.write(path, *changed)) {
        return statusProblem(*problem);
    }
    const auto now = IssueDocument::parse(*changed, name);
    desk.logInfo(u"issue status="_s + now.status().value_or(QString()) + u" from list: "_s + name + u" ("_s
                 + desk.alias + u')');
    UsageRecorder::record(FeatureSignal::IssueStatusChanged);
    desk.store.reload();
    IssueBoardUpdate::automatic(desk);
    return {IssueStatusEdit::Change {path, key, document.rawValue(IssueKeys::status()),
                                     now.rawValue(IssueKeys::status()).value_or(QString())},
            QString()};
}

} // namespace

IssueStatusEdit::Outcome IssueStatusEdit::setStatus(const IssueDesk &desk, const QString &path,
                                                    const IssueStatus &status)
{
    return rewriteStatus(desk, path, [&](const IssueDocument &document) -> tl::expected<QString, QString> {
        return document.statusCell().rewritten(status.written());
    });
}

IssueStatusEdit::Outcome IssueStatusEdit::undo(const IssueDesk &desk, const Change &change)
{
    return rewriteStatus(
        desk, change.path, [&](const IssueDocument &document) -> tl::expected<QString, QString> {
            if (document.rawValue(IssueKeys::status()).value_or(QString()) != change.after) {
                return tl::unexpected(u"그 사이 상태가 바뀌어 되돌리지 않았습니다: "_s + nameOf(change.path));
            }
            return change.before.value_or(QString());
        });
}

} // namespace Vesk
