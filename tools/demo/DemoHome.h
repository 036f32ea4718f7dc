// A home folder for the demonstration, so that it touches nothing of the user's.
#pragma once

#include <QString>
#include <QTemporaryDir>

namespace Vesk::Demo
{

/**
 * A temporary home whose `claude` is the scripted agent, with two small project folders. Setting it up points
 * HOME, the XDG folders and the agent's scenario of this process at it. It goes with the object.
 */
class DemoHome
{
public:
    /** `agent` is the scripted agent's executable. */
    explicit DemoHome(const QString &agent);

    /** False when the folders could not be made. */
    [[nodiscard]] bool isReady() const { return m_ready; }
    [[nodiscard]] QString project(const QString &name) const;

private:
    QTemporaryDir m_folder;
    bool m_ready = false;
};

} // namespace Vesk::Demo
