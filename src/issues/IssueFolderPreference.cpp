#include "issues/IssueFolderPreference.h"

#include "base/Text.h"
#include "core/Preferences.h"

#include <QDir>

namespace Vesk
{

namespace
{

QString folderKey(const QString &cwd)
{
    return QStringLiteral("orvane.issues.folder.") + QDir::cleanPath(cwd);
}

} // namespace

std::optional<QString> IssueFolderPreference::folder(const QString &cwd, const Preferences &store)
{
    const QString path = Text::trimWhitespace(store.stringValue(folderKey(cwd)));
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

void IssueFolderPreference::setFolder(const std::optional<QString> &path, const QString &cwd,
                                      Preferences &store)
{
    const QString chosen = Text::trimWhitespace(path.value_or(QString()));
    store.setValue(folderKey(cwd), chosen.isEmpty() ? QVariant() : QDir::cleanPath(chosen));
}

} // namespace Vesk
