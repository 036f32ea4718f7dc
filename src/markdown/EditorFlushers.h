// Who holds unsaved text of which file.
#pragma once

#include <QString>

#include <functional>
#include <map>

namespace Vesk
{

/** Open editors enrol here, so that whoever writes a file first has them write what they hold. Main thread.
 */
class EditorFlushers
{
public:
    using Flush = std::function<void()>;

    /** Returns the number to withdraw() by. */
    int enrol(const QString &path, Flush flush);
    void withdraw(int number);

    /** Has the editors of this file save. */
    void flush(const QString &path) const;
    /** Has every editor save: the program ends. */
    void flushAll() const;

private:
    struct Editor {
        QString path;
        Flush flush;
    };

    std::map<int, Editor> m_editors;
    int m_last = 0;
};

} // namespace Vesk
