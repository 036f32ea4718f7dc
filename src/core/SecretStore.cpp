#include "core/SecretStore.h"

#include "base/Files.h"
#include "base/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

#include <utility>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype maxSecretsBytes = qsizetype {16} * 1024 * 1024;

struct Definition {
    QString key;
    QString value; // with the quotes that it has in the file
};

std::optional<Definition> definitionIn(const QString &rawLine)
{
    const QString line = Text::trimBlanks(rawLine);
    if (line.startsWith(u'#'))
        return std::nullopt;
    const qsizetype divider = line.indexOf(u'=');
    if (divider < 0)
        return std::nullopt;
    QString key = Text::trimBlanks(line.left(divider));
    constexpr auto exportPrefix = "export "_L1;
    if (key.startsWith(exportPrefix))
        key = Text::trimBlanks(key.mid(exportPrefix.size()));
    return Definition {key, Text::trimBlanks(line.mid(divider + 1))};
}

QString withoutQuotes(const QString &value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back()
        && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

/** The file's lines; absent when it cannot be read as UTF-8. */
std::optional<QStringList> linesOf(const QString &path)
{
    const auto bytes = readFile(path, maxSecretsBytes);
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(*bytes);
    if (decoder.hasError())
        return std::nullopt;
    QStringList lines = text.split(u'\n');
    // What follows the last line feed is no line; kept, it would grow a blank one at each update.
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

EnvFileSecretStore::EnvFileSecretStore(QString url)
    : m_url(std::move(url))
{
}

std::optional<QString> EnvFileSecretStore::read(const QString &key) const
{
    const QStringList lines = linesOf(m_url).value_or(QStringList());
    for (const QString &line : lines) {
        const auto definition = definitionIn(line);
        if (definition && definition->key == key)
            return withoutQuotes(definition->value);
    }
    return std::nullopt;
}

bool EnvFileSecretStore::upsert(const QString &key, const std::optional<QString> &value) const
{
    if (key.contains(u'\n') || (value && value->contains(u'\n')))
        return false;
    QDir().mkpath(QFileInfo(m_url).path());
    QStringList lines = linesOf(m_url).value_or(QStringList());
    lines.removeIf([&](const QString &line) {
        const auto definition = definitionIn(line);
        return definition && definition->key == key;
    });
    if (value)
        lines.append(key + u'=' + *value);
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    const QString text = lines.isEmpty() ? QString() : lines.join(u'\n') + u'\n';
    return writeAtomically(m_url, text.toUtf8(), 0600).has_value();
}

CompositeSecretStore::CompositeSecretStore(std::vector<std::shared_ptr<const SecretStore>> stores)
    : m_stores(std::move(stores))
{
}

CompositeSecretStore CompositeSecretStore::overFiles(const QStringList &urls)
{
    std::vector<std::shared_ptr<const SecretStore>> stores;
    stores.reserve(static_cast<std::size_t>(urls.size()));
    for (const QString &url : urls)
        stores.push_back(std::make_shared<const EnvFileSecretStore>(url));
    return CompositeSecretStore(std::move(stores));
}

std::optional<QString> CompositeSecretStore::read(const QString &key) const
{
    for (const auto &store : m_stores) {
        auto value = store->read(key);
        if (value && !value->isEmpty())
            return value;
    }
    return std::nullopt;
}

} // namespace Vesk
