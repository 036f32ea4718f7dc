#include "markdown/EditorFlushers.h"

#include <QDir>

#include <utility>

namespace Vesk
{

int EditorFlushers::enrol(const QString &path, Flush flush)
{
    m_editors.emplace(++m_last, Editor {QDir::cleanPath(path), std::move(flush)});
    return m_last;
}

void EditorFlushers::withdraw(int number)
{
    m_editors.erase(number);
}

void EditorFlushers::flush(const QString &path) const
{
    const QString clean = QDir::cleanPath(path);
    const auto editors = m_editors; // a save may lead to a withdrawal
    for (const auto &[number, editor] : editors) {
        if (editor.path == clean && m_editors.contains(number)) {
            editor.flush();
        }
    }
}

void EditorFlushers::flushAll() const
{
    const auto editors = m_editors;
    for (const auto &[number, editor] : editors) {
        if (m_editors.contains(number)) {
            editor.flush();
        }
    }
}

} // namespace Vesk
