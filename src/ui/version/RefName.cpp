#include "ui/version/RefName.h"

#include <algorithm>

namespace Vesk
{

namespace
{

bool isOfRemote(const QString &name, const QStringList &remotes)
{
    return std::ranges::any_of(remotes, [&](const QString &remote) {
        return name.size() > remote.size() + 1 && name.startsWith(remote) && name[remote.size()] == u'/';
    });
}

} // namespace

QList<RefName> refNames(const QStringList &refs, const GitStatusReader::RepoStatus &status)
{
    QList<RefName> names;
    for (const QString &name : refs) {
        if (name == QStringLiteral("HEAD")) {
            names.append({name, RefKind::Kind::Head});
        } else if (name == status.branch || status.branches.contains(name)) {
            names.append({name, RefKind::Kind::Branch});
        } else if (isOfRemote(name, status.remotes)) {
            if (!name.endsWith(QStringLiteral("/HEAD")))
                names.append({name, RefKind::Kind::Remote});
        } else {
            names.append({name, RefKind::Kind::Tag});
        }
    }
    std::ranges::stable_sort(names, {}, &RefName::kind);
    return names;
}

} // namespace Vesk
