// The names that stand before a commit's subject.
#pragma once

#include "git/GitStatusReader.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace Vesk
{

/** Kinds of names. */
namespace RefKind
{
Q_NAMESPACE
QML_ELEMENT

enum class Kind { Head, Branch, Remote, Tag };
Q_ENUM_NS(Kind)
} // namespace RefKind

/** A branch, tag or HEAD, told apart. */
struct RefName {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(Vesk::RefKind::Kind kind MEMBER kind)

public:
    QString name {};
    RefKind::Kind kind = RefKind::Kind::Tag;

    bool operator==(const RefName &) const = default;
};

/** The names of a commit, HEAD first, tags last. What is no branch and of no remote is taken for a tag; the
    remote's own HEAD is left out. */
[[nodiscard]] QList<RefName> refNames(const QStringList &refs, const GitStatusReader::RepoStatus &status);

} // namespace Vesk
