// The window's one call that reaches out: begun, cancelled, and what came of it.
#pragma once

#include "git/GitFetch.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** One fetch at a time. A problem is told until it is closed, a success for a while. */
class VersionFetch : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the version window")
    Q_PROPERTY(bool running READ running NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool isProblem READ isProblem NOTIFY changed)

public:
    explicit VersionFetch(QObject *parent = nullptr);

    void start(const QString &root, bool hasAnyRemote);
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void closeNotice();

    [[nodiscard]] bool running() const { return m_running; }
    [[nodiscard]] const QString &notice() const { return m_notice; }
    [[nodiscard]] bool isProblem() const { return m_isProblem; }

Q_SIGNALS:
    void changed();
    void ended(); ///< not after a cancel

private:
    void take(const GitFetch::Outcome &outcome);

    GitTask m_task;
    bool m_running = false;
    bool m_isProblem = false;
    QString m_notice;
    QTimer m_readLong;
};

} // namespace Vesk
