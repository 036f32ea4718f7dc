// Any bytes are a status, a listing of a commit, of settings, or an index: names come through byte by byte,
// and what is closed is never what a repository says.
#include "git/GitCommitChanges.h"
#include "git/GitEnvironment.h"
#include "git/GitFetch.h"
#include "git/GitIndex.h"
#include "git/GitPath.h"
#include "git/GitWorkingTree.h"

#include <cstdint>
#include <cstdlib>

namespace
{

using namespace Vesk;

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

void look(const QList<GitWorkingTree::Change> &changes, const QByteArray &bytes)
{
    for (const GitWorkingTree::Change &change : changes) {
        expect(bytes.contains(GitPath::encode(change.path)));
        expect(!change.originalPath || bytes.contains(GitPath::encode(*change.originalPath)));
        expect(change.fileName().isValidUtf16());
        expect(!change.directory().endsWith(u'/') || change.path.contains(QStringLiteral("//")));
        (void)change.badge();
        (void)change.kindLabel();
        (void)change.stageSummary();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    expect(GitPath::encode(GitPath::decode(bytes)) == bytes);
    look(GitWorkingTree::parseStatus(bytes), bytes);
    look(GitCommitChanges::parse(bytes), bytes);
    const auto settings = GitEnvironment::parseListing(bytes);
    for (const auto &closed : GitEnvironment::closedRoads(settings)) {
        const bool isDefault = closed.value.isEmpty() || closed.value == "false" || closed.value == "short";
        bool isOfUser = false;
        for (const auto &setting : settings)
            isOfUser |= !setting.isOfRepository() && setting.key == closed.key;
        expect(isDefault || isOfUser);
    }
    (void)GitFetch::blockingKeys(bytes);
    (void)GitFetch::pruneIsSafe(bytes);
    for (const qsizetype hashBytes : {20, 32})
        (void)GitIndex::submodules(bytes, hashBytes);
    (void)GitIndex::submodulesOfListing(bytes);
    return 0;
}
