#include "Repository.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

namespace Vesk::Test
{
namespace
{

QByteArrayList environmentOf(const QString &folder)
{
    QByteArrayList all;
    for (const QByteArray &variable : GitEnvironment::inherited()) {
        if (!variable.startsWith("GIT_") && !variable.startsWith("HOME="))
            all.append(variable);
    }
    const QByteArray home = QFile::encodeName(folder);
    all << "HOME=" + home << "GIT_CONFIG_GLOBAL=" + home + "/global.config"
        << "GIT_CONFIG_NOSYSTEM=1"
        << "GIT_AUTHOR_NAME=김개발"
        << "GIT_AUTHOR_EMAIL=dev@example.org"
        << "GIT_COMMITTER_NAME=dev"
        << "GIT_COMMITTER_EMAIL=dev@example.org";
    return all;
}

} // namespace

Repository::Repository(const QStringList &options)
{
    QDir().mkpath(path());
    QFile global(globalConfig());
    if (global.open(QIODevice::WriteOnly))
        global.write("[init]\n\tdefaultBranch = main\n[protocol \"file\"]\n\tallow = always\n");
    global.close();
    git(QStringList {QStringLiteral("init"), QStringLiteral("-q")} + options);
}

Repository::~Repository()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder.path().toStdString(), ignored);
}

QString Repository::path() const
{
    return QDir(m_folder.path()).canonicalPath() + QStringLiteral("/work");
}

QString Repository::globalConfig() const
{
    return m_folder.path() + QStringLiteral("/global.config");
}

GitSetting Repository::setting() const
{
    return {.git = GitProcess::gitURL().value_or(QString()),
            .environment = GitEnvironment::base(environmentOf(m_folder.path())),
            .cancel = std::make_shared<GitCancel>()};
}

GitSetting Repository::settingWithoutGit() const
{
    GitSetting setting = this->setting();
    setting.git.clear();
    return setting;
}

int Repository::tryGit(const QStringList &arguments, const QString &folder, QByteArray *output) const
{
    QProcess process;
    QProcessEnvironment environment;
    for (const QByteArray &variable : environmentOf(m_folder.path())) {
        const qsizetype end = variable.indexOf('=');
        environment.insert(QString::fromLocal8Bit(variable.left(end)),
                           QString::fromLocal8Bit(variable.mid(end + 1)));
    }
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder.isEmpty() ? path() : folder);
    process.start(QStringLiteral("git"), arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(-1))
        return -1;
    if (output)
        *output = process.readAllStandardOutput() + process.readAllStandardError();
    return process.exitCode();
}

QString Repository::git(const QStringList &arguments, const QString &folder) const
{
    QByteArray output;
    const int code = tryGit(arguments, folder, &output);
    if (code != 0)
        QTest::qFail(("git " + arguments.join(u' ').toUtf8() + ": " + output).constData(), __FILE__,
                     __LINE__);
    return QString::fromUtf8(output).trimmed();
}

void Repository::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    write(name.toUtf8(), content);
}

void Repository::write(const QByteArray &rawName, const QByteArray &content) const
{
    const QByteArray name = QFile::encodeName(path()) + '/' + rawName;
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, content.constData(), std::size_t(content.size())) != content.size())
        QTest::qFail(name.constData(), __FILE__, __LINE__);
    ::close(file);
}

QString Repository::commit(const QString &subject, const QStringList &options) const
{
    git({QStringLiteral("add"), QStringLiteral("-A")});
    git(QStringList {QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("--allow-empty"),
                     QStringLiteral("-m"), subject}
        + options);
    return git({QStringLiteral("rev-parse"), QStringLiteral("HEAD")});
}

void writeScript(const QString &path, const QByteArray &body)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + body + "\n") < 0)
        QTest::qFail(qPrintable(path), __FILE__, __LINE__);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace Vesk::Test
