// Where the program's files lie.
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace Vesk
{

/** The base folders, and every path that follows from them. A value: the environment is read once. */
class AppPaths
{
public:
    /** From HOME and the XDG variables (relative ones are ignored). `currentFolder` is the process's. */
    [[nodiscard]] static AppPaths fromEnvironment(const QProcessEnvironment &environment,
                                                  const QString &currentFolder);

    /** The application-support folder: taken over from the older one if need be, then created. */
    [[nodiscard]] QString appSupportDir() const;
    [[nodiscard]] QString accountsDir() const;
    [[nodiscard]] QString accountConfigDir(const QString &id) const;
    [[nodiscard]] QString cachesDir() const;

    [[nodiscard]] QString auditLogFile() const;
    [[nodiscard]] QString projectsFile() const;
    [[nodiscard]] QString schedulesFile() const;
    [[nodiscard]] QString rateLimitsFile() const;
    [[nodiscard]] QString accountsFile() const;
    [[nodiscard]] QString secretsFile() const;
    [[nodiscard]] QString whitelistFile() const;
    [[nodiscard]] QString draftsFile() const; ///< unsent messages

    [[nodiscard]] QString preferencesFile() const;
    [[nodiscard]] QString olderPreferencesFile() const;

    /** Every secrets file, the one with the highest priority first. */
    [[nodiscard]] QStringList candidateSecretURLs() const;

    /**
     * Copies the folder `orvane` under `base` to `newDir` when that is there and this is not. The older
     * folder stays. All or nothing: a copy that fails half-way leaves no `newDir`. Failures are silent.
     */
    static void migrateFromOrvaneIfNeeded(const QString &newDir, const QString &base);

private:
    AppPaths() = default;

    QString m_dataHome;
    QString m_configHome;
    QString m_cacheHome;
    QString m_currentFolder;
    QString m_extraSecretsFile;
};

} // namespace Vesk
