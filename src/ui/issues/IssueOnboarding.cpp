#include "ui/issues/IssueOnboarding.h"

#include "issues/IssueScaffold.h"

namespace Vesk
{

using namespace Qt::StringLiterals;

void IssueOnboarding::setView(IssuesView *view)
{
    m_view = view;
    m_key = IssueScaffold::suggestedKey(view->alias());
    Q_EMIT changed();
}

QUrl IssueOnboarding::startFolder() const
{
    return m_view ? QUrl::fromLocalFile(m_view->projectPath()) : QUrl();
}

void IssueOnboarding::setKey(const QString &key)
{
    m_key = IssueScaffold::normalizedKey(key);
    m_failure.clear();
    Q_EMIT changed();
}

void IssueOnboarding::setFolderName(const QString &name)
{
    m_folderName = name;
    m_failure.clear();
    Q_EMIT changed();
}

QString IssueOnboarding::problem() const
{
    const QString name = m_folderName.trimmed();
    if (!m_failure.isEmpty()) {
        return m_failure;
    }
    if (name.isEmpty() || name.startsWith(u'/') || name.split(u'/').contains(u".."_s)) {
        return u"프로젝트 안의 폴더 이름을 적습니다"_s;
    }
    return m_key.isEmpty() ? u"접두사는 영문자와 숫자로 적습니다"_s : QString();
}

QString IssueOnboarding::hint() const
{
    return problem().isEmpty() ? u"%1/README.md와 BOARD.md를 만들고, 이슈는 %2-001부터 번호를 붙입니다"_s.arg(
               m_folderName.trimmed(), m_key)
                               : QString();
}

void IssueOnboarding::create()
{
    const auto folder =
        IssueScaffold::create(m_view->projectPath(), m_folderName.trimmed(), m_key, m_view->alias());
    if (!folder) {
        m_failure = folder.error();
        Q_EMIT changed();
        return;
    }
    m_view->desk().logInfo(u"issue folder created: "_s + *folder + u" ("_s + m_view->alias() + u')');
    m_view->noteFolderMade(m_key);
    m_view->chooseFolder(*folder);
}

void IssueOnboarding::choose(const QUrl &folder)
{
    if (folder.isLocalFile()) {
        m_view->chooseFolder(folder.toLocalFile());
    }
}

} // namespace Vesk
