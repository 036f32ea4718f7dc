// Turns SIGTERM and SIGINT into calls on the main loop.
#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace Vesk
{

/**
 * While it lives, SIGTERM and SIGINT call `onTerminate` from the event loop instead of ending the process.
 * One per process. A child does not inherit this: a handler, unlike an ignored signal, is back to its default
 * after exec.
 */
class SignalSources : public QObject
{
    Q_OBJECT

public:
    explicit SignalSources(std::function<void()> onTerminate, QObject *parent = nullptr);
    ~SignalSources() override;

private:
    std::function<void()> m_onTerminate;
    QSocketNotifier *m_notifier = nullptr;
    int m_descriptor = -1;
};

} // namespace Vesk
