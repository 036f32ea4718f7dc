// What the window does with the catalog: adding, colouring and removing projects, and a catalog that cannot
// be read.
#pragma once

#include "base/Result.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

class Runtime;

/**
 * The one road from the window to the catalog. A catalog file that could not be read is copied aside before
 * the first write replaces it; if that fails, nothing is written.
 */
class Projects : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the main window")
    Q_PROPERTY(QString loadError READ loadError NOTIFY loadErrorChanged)
    Q_PROPERTY(QString catalogPath READ catalogPath CONSTANT)

public:
    explicit Projects(Runtime &runtime, QObject *parent = nullptr);

    /** Why the catalog could not be read; empty when it could, and after it was written anew. */
    [[nodiscard]] QString loadError() const;
    [[nodiscard]] QString catalogPath() const;

    [[nodiscard]] QStringList aliases() const;
    [[nodiscard]] int nextLane() const;

    /** Adds a project. Returns why it could not, in the user's words; empty on success. */
    [[nodiscard]] QString add(const QString &alias, const QString &path, int lane);
    /** Shows the project in one of the eight lane colours. */
    Q_INVOKABLE void setLane(const QString &alias, int lane);
    /** The titles of the project's sessions that work; they would end with it. */
    Q_INVOKABLE QStringList liveSessions(const QString &alias) const;
    Q_INVOKABLE int sessionCount(const QString &alias) const;
    Q_INVOKABLE void remove(const QString &alias);
    /** The project's folder; empty for an unknown alias. */
    Q_INVOKABLE QString folder(const QString &alias) const;
    /** The project that is listed first; empty when there is none. */
    Q_INVOKABLE QString firstAlias() const;

Q_SIGNALS:
    void loadErrorChanged();

private:
    /** Copies an unreadable catalog file aside, once. Returns why that failed; empty when all is well. */
    [[nodiscard]] QString keepUnreadableFile();

    Runtime &m_runtime;
    bool m_keptAside = false;
};

/** Copies `path` to `path.bak`, or `path.bak-2`, … while that is taken, and gives the copy's path; an empty
   one when there is nothing to copy. */
[[nodiscard]] Result<QString> keepCopyAside(const QString &path);

} // namespace Vesk
