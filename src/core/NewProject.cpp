#include "core/NewProject.h"

#include "base/Text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace Vesk::NewProject
{

using namespace Qt::StringLiterals;

namespace
{

/** Line breaks and tabs among them: an alias is one word of a messenger command and one line of a list. */
bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator
        || c == QChar::ParagraphSeparator;
}

} // namespace

QString proposeAlias(const QString &folderPath, const QStringList &existingAliases)
{
    QString name = QDir(QDir::cleanPath(folderPath)).dirName();
    name.removeIf(isControl);
    name = Text::trimWhitespace(name);
    if (name.isEmpty() || name == "."_L1)
        name = u"project"_s;
    QString alias = name;
    for (int number = 2; existingAliases.contains(alias); ++number)
        alias = name + u'-' + QString::number(number);
    return alias;
}

std::optional<QString> validateAlias(const QString &alias, const QStringList &existingAliases)
{
    if (Text::trimWhitespace(alias).isEmpty())
        return u"별칭을 입력하세요"_s;
    if (std::any_of(alias.begin(), alias.end(), isControl))
        return u"별칭에는 줄바꿈이나 탭을 쓸 수 없습니다"_s;
    if (alias != Text::trimWhitespace(alias))
        return u"별칭의 앞뒤 공백을 지우세요"_s;
    if (existingAliases.contains(alias))
        return u"이미 쓰는 별칭입니다"_s;
    return std::nullopt;
}

std::optional<QString> validateFolder(const QString &path)
{
    if (path.isEmpty())
        return u"폴더를 선택하세요"_s;
    const QFileInfo folder(path);
    if (folder.isRelative())
        return u"폴더의 절대 경로를 입력하세요"_s;
    if (!folder.exists())
        return u"폴더가 없습니다"_s;
    if (!folder.isDir())
        return u"폴더가 아닙니다"_s;
    if (!folder.isReadable() || !folder.isExecutable())
        return u"폴더를 읽을 권한이 없습니다"_s;
    return std::nullopt;
}

} // namespace Vesk::NewProject
