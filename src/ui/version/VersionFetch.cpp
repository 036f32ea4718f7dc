#include "ui/version/VersionFetch.h"

#include "git/PullToRefresh.h"

#include <QRegularExpression>

#include <chrono>

namespace Vesk
{

namespace
{

constexpr std::chrono::seconds successStays {12};

} // namespace

VersionFetch::VersionFetch(QObject *parent)
    : QObject(parent)
{
    m_readLong.setSingleShot(true);
    m_readLong.setInterval(successStays);
    connect(&m_readLong, &QTimer::timeout, this, &VersionFetch::closeNotice);
}

void VersionFetch::start(const QString &root, bool hasAnyRemote)
{
    if (m_running)
        return;
    m_running = true;
    m_notice.clear();
    m_readLong.stop();
    m_task =
        GitFetch::run(root, hasAnyRemote, this, [this](const GitFetch::Outcome &outcome) { take(outcome); });
    Q_EMIT changed();
}

void VersionFetch::take(const GitFetch::Outcome &outcome)
{
    const auto notice = PullToRefresh::notice(outcome);
    m_running = false;
    static const QRegularExpression emptyLines(QStringLiteral("\\n\\s*\\n"));
    m_notice = QString(notice.text).replace(emptyLines, QStringLiteral("\n"));
    m_isProblem = notice.isProblem;
    if (!m_isProblem)
        m_readLong.start();
    Q_EMIT changed();
    Q_EMIT ended();
}

void VersionFetch::cancel()
{
    if (!m_running)
        return;
    m_task.cancel();
    m_running = false;
    Q_EMIT changed();
}

void VersionFetch::closeNotice()
{
    m_notice.clear();
    Q_EMIT changed();
}

} // namespace Vesk
