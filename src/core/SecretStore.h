// Secrets in plain KEY=VALUE files: which file wins, and how ours is edited.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace Vesk
{

/** Where a secret can be asked for. */
class SecretStore
{
public:
    virtual ~SecretStore() = default;

    /** The value of a key; absent when there is none. */
    [[nodiscard]] virtual std::optional<QString> read(const QString &key) const = 0;

protected:
    SecretStore() = default;
    SecretStore(const SecretStore &) = default;
    SecretStore &operator=(const SecretStore &) = default;
};

/** One `secrets.env` file. Nothing is cached: an edit by hand counts at the next read. */
class EnvFileSecretStore final : public SecretStore
{
public:
    explicit EnvFileSecretStore(QString url);

    /** The first definition's value, which may be empty; absent without one or when the file cannot be read.
     */
    [[nodiscard]] std::optional<QString> read(const QString &key) const override;

    /**
     * Replaces every definition of `key` by one at the end of the file, or removes them when `value` is
     * absent. Other lines keep their text and order. True when the file was written; false also for a key or
     * value with a line feed, which one line cannot hold. The file ends up with permission bits 0600.
     */
    bool upsert(const QString &key, const std::optional<QString> &value) const;

    [[nodiscard]] const QString &url() const { return m_url; }

private:
    QString m_url;
};

/** Several stores by priority: the first value that is not empty wins. */
class CompositeSecretStore final : public SecretStore
{
public:
    explicit CompositeSecretStore(std::vector<std::shared_ptr<const SecretStore>> stores);

    /** A composite over env files, the first path with the highest priority. */
    [[nodiscard]] static CompositeSecretStore overFiles(const QStringList &urls);

    [[nodiscard]] std::optional<QString> read(const QString &key) const override;

private:
    std::vector<std::shared_ptr<const SecretStore>> m_stores;
};

} // namespace Vesk
