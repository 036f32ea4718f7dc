// The folder in which the agent notes what it was given, for the test that started it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ScriptedAgent
{

/** How the signals were when the program began: what its parent left it with. */
struct InheritedSignals {
    QStringList ignored;
    QStringList blocked;

    [[nodiscard]] static InheritedSignals read();
};

/** One run's notes: `run-<n>.json` at the start, `run-<n>.stdin` byte by byte as they come. */
class Record
{
public:
    /** Takes the next free number of the folder; without a folder nothing is noted. */
    static Record begin(const QString &folder, const QStringList &arguments,
                        const InheritedSignals &inherited);

    /** 1 for the folder's first run; 0 without a folder. */
    [[nodiscard]] int run() const { return m_run; }
    void noteInput(QByteArrayView bytes) const;
    void noteGrandchild(qint64 pid) const;

private:
    QString m_base;
    int m_run = 0;
    int m_input = -1; // stays open to the program's end
};

} // namespace ScriptedAgent
