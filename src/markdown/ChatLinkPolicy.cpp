#include "markdown/ChatLinkPolicy.h"

#include "markdown/LinkHost_p.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>

namespace Vesk
{
namespace
{

using Action = LinkDecision::Action;

constexpr qsizetype longestShown = 400;

bool isHiddenSign(char32_t sign)
{
    const QChar::Category category = QChar::category(sign);
    return category == QChar::Other_Control || category == QChar::Other_Format
        || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

bool hasHiddenSign(const QString &text)
{
    const auto signs = text.toUcs4();
    return std::any_of(signs.begin(), signs.end(), isHiddenSign);
}

QString withSignsAsCodes(const QString &text)
{
    QString shown;
    for (const char32_t sign : text.toUcs4()) {
        const QString written = QString::fromUcs4(&sign, 1);
        shown += isHiddenSign(sign) ? QString::fromLatin1(written.toUtf8().toPercentEncoding()) : written;
        if (shown.size() > longestShown)
            return shown + u'…';
    }
    return shown;
}

QString schemeIn(const QString &address)
{
    static const QRegularExpression scheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+-]*):(?!\\d)"));
    return scheme.match(address).captured(1).toLower();
}

bool isWeb(const QString &scheme)
{
    return scheme == u"http" || scheme == u"https";
}

// The path in an address that names a file, as written; empty for one on another machine.
QString writtenPath(const QString &address)
{
    constexpr QStringView prefix = u"file:";
    if (!address.startsWith(prefix, Qt::CaseInsensitive))
        return address;
    QString rest = address.mid(prefix.size());
    if (!rest.startsWith(u"//"))
        return rest;
    rest.remove(0, 2);
    const qsizetype slash = rest.indexOf(u'/');
    const QStringView host = QStringView(rest).left(slash);
    const bool here = host.isEmpty() || host.compare(u"localhost", Qt::CaseInsensitive) == 0;
    return slash >= 0 && here ? rest.mid(slash) : QString();
}

QString absolutePath(const QString &path, const LinkFolders &folders)
{
    if (path.startsWith(u'/'))
        return QDir::cleanPath(path);
    if (path.startsWith(u"~/"))
        return folders.home.isEmpty() ? QString() : QDir::cleanPath(folders.home + path.mid(1));
    return folders.project.isEmpty() || path.isEmpty() ? QString()
                                                       : QDir::cleanPath(folders.project + u'/' + path);
}

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

// Programs of the desktop run these instead of showing them.
bool mayRun(const LinkedFile &file)
{
    if (file.kind != LinkedFile::Kind::File)
        return false;
    constexpr QStringView endings[] = {u".desktop", u".appimage", u".jar", u".run", u".deb", u".rpm"};
    return file.executable || std::any_of(std::begin(endings), std::end(endings), [&](QStringView ending) {
               return file.realPath.endsWith(ending, Qt::CaseInsensitive);
           });
}

LinkDecision refused(const QString &address, const QString &reason)
{
    return {Action::Refuse, {}, withSignsAsCodes(address), reason};
}

LinkDecision missing(const QString &path)
{
    LinkDecision decision = refused(path, QStringLiteral("링크의 파일을 찾지 못했습니다."));
    decision.isMissing = true;
    return decision;
}

LinkDecision decideWeb(const ChatLink &link)
{
    const QUrl url(link.address);
    if (!url.isValid() || url.host().isEmpty() || link.address.contains(u'\\'))
        return refused(link.address, QStringLiteral("읽을 수 없는 웹 주소입니다."));
    LinkDecision decision {Action::OpenInBrowser, url, ChatLinkPolicy::shownAddress(link.address), {}};
    const QString host = url.host(QUrl::FullyEncoded);
    QStringList reasons;
    if (!url.userInfo().isEmpty() || url.authority().contains(u'@'))
        reasons << QStringLiteral("주소 앞에 사용자 이름이 붙어 있습니다. 실제로 열리는 곳은 %1입니다.")
                       .arg(host);
    if (const QString readable = LinkHost::misleading(host); !readable.isEmpty())
        reasons << QStringLiteral("다른 글자로 보일 수 있는 호스트입니다: %1 (%2)").arg(host, readable);
    if (const QString shown = LinkHost::claimedBy(link.shown, url); !shown.isEmpty())
        reasons << QStringLiteral("글에는 %1(이)라고 적혀 있지만 %2(으)로 갑니다.")
                       .arg(withSignsAsCodes(shown), host);
    if (hasHiddenSign(link.shown))
        reasons << QStringLiteral("링크의 글에 보이지 않는 제어 문자가 있습니다.");
    if (!reasons.isEmpty())
        decision.action = Action::Ask;
    decision.reason = reasons.join(u'\n');
    return decision;
}

LinkDecision decideFile(const ChatLink &link, const LinkFolders &folders, const LinkedFiles &files)
{
    LinkedFile file;
    QString path;
    const QStringList candidates = ChatLinkPolicy::pathsIn(link.address, folders);
    for (const QString &candidate : candidates) {
        if (hasHiddenSign(candidate))
            return refused(candidate, QStringLiteral("경로에 보이지 않는 제어 문자가 있습니다."));
        if (file.kind == LinkedFile::Kind::Missing) {
            file = files.value(candidate);
            path = candidate;
        }
    }
    if (candidates.isEmpty())
        return refused(link.address, QStringLiteral("이 컴퓨터의 파일이 아닙니다."));
    if (file.kind == LinkedFile::Kind::Missing)
        return missing(candidates.first());
    if (file.kind == LinkedFile::Kind::Other)
        return refused(path, QStringLiteral("보통 파일이나 폴더가 아닙니다."));
    LinkDecision decision {
        Action::OpenFile, QUrl::fromLocalFile(file.realPath), withSignsAsCodes(file.realPath), {}};
    const QString project = files.value(folders.project).realPath;
    QStringList reasons;
    if (project.isEmpty() || !isInside(file.realPath, project))
        reasons << (isInside(path, folders.project)
                        ? QStringLiteral("프로젝트 폴더 밖을 가리키는 심볼릭 링크입니다.")
                        : QStringLiteral("프로젝트 폴더 밖의 파일입니다."));
    if (mayRun(file))
        reasons << QStringLiteral("여는 프로그램에 따라 실행될 수 있는 파일입니다.");
    if (!LinkHost::claimedBy(link.shown, {}).isEmpty())
        reasons << QStringLiteral("글에는 웹 주소가 적혀 있지만 파일을 엽니다.");
    if (hasHiddenSign(link.shown))
        reasons << QStringLiteral("링크의 글에 보이지 않는 제어 문자가 있습니다.");
    if (!reasons.isEmpty())
        decision.action = Action::Ask;
    decision.reason = reasons.join(u'\n');
    return decision;
}

} // namespace

QStringList ChatLinkPolicy::pathsIn(const QString &address, const LinkFolders &folders)
{
    const QString scheme = schemeIn(address);
    const QString written = writtenPath(address);
    if ((!scheme.isEmpty() && scheme != u"file") || written.isEmpty() || written.startsWith(u"//"))
        return {};
    static const QRegularExpression place(
        QStringLiteral("(?:#[^/]*|:\\d+(?::\\d+)?(?:-\\d+)?)$")); // a line, some lines, or a heading
    const QString decoded = QUrl::fromPercentEncoding(written.toUtf8());
    QStringList paths;
    for (const QString &form : {written, decoded}) {
        for (const QString &path : {form, QString(form).remove(place)}) {
            const QString absolute = absolutePath(path, folders);
            if (!absolute.isEmpty() && !paths.contains(absolute))
                paths << absolute;
        }
    }
    return paths;
}

LinkDecision ChatLinkPolicy::decide(const ChatLink &link, const LinkFolders &folders,
                                    const LinkedFiles &files)
{
    if (link.address.isEmpty() || link.address.startsWith(u'#'))
        return refused(link.address, QStringLiteral("열 곳이 없는 링크입니다."));
    if (hasHiddenSign(link.address))
        return refused(link.address, QStringLiteral("주소에 보이지 않는 제어 문자가 있습니다."));
    const QString scheme = schemeIn(link.address);
    if (isWeb(scheme))
        return decideWeb(link);
    if (!scheme.isEmpty() && scheme != u"file")
        return refused(link.address,
                       QStringLiteral("%1: 주소는 열지 않습니다. 웹 주소와 파일만 엽니다.").arg(scheme));
    return decideFile(link, folders, files);
}

QString ChatLinkPolicy::shownAddress(const QString &address)
{
    if (!isWeb(schemeIn(address)))
        return withSignsAsCodes(address);
    const QUrl url(address);
    if (!url.isValid() || url.host().isEmpty())
        return withSignsAsCodes(address);
    const QString user = url.userInfo(QUrl::FullyEncoded);
    const QString port = url.port() < 0 ? QString() : u':' + QString::number(url.port());
    return withSignsAsCodes(url.scheme() + QStringLiteral("://") + (user.isEmpty() ? user : user + u'@')
                            + url.host(QUrl::FullyEncoded) + port
                            + url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority));
}

} // namespace Vesk
