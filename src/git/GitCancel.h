// One thread asking another to end its git calls.
#pragma once

#include <atomic>

namespace Vesk
{

/** A wish that can be waited for: shared between who asks and who works. */
class GitCancel
{
public:
    GitCancel();
    ~GitCancel();
    GitCancel(const GitCancel &) = delete;
    GitCancel &operator=(const GitCancel &) = delete;

    /** From any thread, any number of times. */
    void request();
    [[nodiscard]] bool isRequested() const { return m_requested; }
    /** Readable once the wish has been made; -1 where the system had none to give. */
    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    std::atomic_bool m_requested = false;
    int m_descriptor;
};

} // namespace Vesk
