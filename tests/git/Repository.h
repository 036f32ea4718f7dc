// A real repository in a scratch folder, with settings of its own.
#pragma once

#include "git/GitTask.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Vesk::Test
{

/** Made with plain git, away from the settings of user and machine. */
class Repository
{
public:
    /** `options` go to `git init`. */
    explicit Repository(const QStringList &options = {});
    ~Repository(); ///< also removes what Qt cannot name

    [[nodiscard]] QString path() const; ///< of the work tree
    [[nodiscard]] QString path(const QString &name) const { return path() + u'/' + name; }
    [[nodiscard]] QString globalConfig() const;                      ///< the user's own settings
    [[nodiscard]] QString folder() const { return m_folder.path(); } ///< that all lies in
    /** A setting for the calls under test. */
    [[nodiscard]] GitSetting setting() const;
    [[nodiscard]] GitSetting settingWithoutGit() const;

    /** Plain git, with nothing closed; its output without blanks around. Fails the test when it fails. */
    QString git(const QStringList &arguments, const QString &folder = {}) const;
    /** The same, whatever its end. */
    int tryGit(const QStringList &arguments, const QString &folder = {}, QByteArray *output = nullptr) const;
    void write(const QString &name, const QByteArray &content) const;
    void write(const QByteArray &rawName, const QByteArray &content) const;
    /** Adds everything and commits; gives the hash. */
    QString commit(const QString &subject, const QStringList &options = {}) const;

private:
    QTemporaryDir m_folder;
};

/** Writes an executable script. */
void writeScript(const QString &path, const QByteArray &body);

} // namespace Vesk::Test
