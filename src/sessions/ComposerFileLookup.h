// The search behind an "@", off the main thread.
#pragma once

#include <QObject>
#include <QStringList>

#include <stop_token>

namespace Vesk
{

/** At most one search at a time: a newer one ends the one before, which then gives no answer. */
class ComposerFileLookup : public QObject
{
    Q_OBJECT

public:
    static constexpr qsizetype limit = 8;

    using QObject::QObject;
    ~ComposerFileLookup() override;

    void find(const QString &query, const QString &cwd);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_running; }

Q_SIGNALS:
    /** Once for each find() that no other call has overtaken. */
    void found(const QStringList &paths);

private:
    std::stop_source m_stop;
    bool m_running = false;
};

} // namespace Vesk
