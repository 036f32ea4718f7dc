// Who blocks whom, what can be started now, and what is wrong with the declarations.
#pragma once

#include "issues/IssueDocument.h"
#include "issues/IssueStatus.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <variant>

namespace Vesk::IssueGraph
{

/** What the graph needs of one issue file. */
struct Input {
    QString id {};
    QString title {};
    QString status {}; ///< as written, or empty
    QString milestone {};
    QList<IssueDocument::Ref> blockedBy {};
    QList<IssueDocument::Ref> blocks {};
    QString blockedByKey = QStringLiteral("선행"); ///< as the file spells it, for messages
    QString blocksKey = QStringLiteral("후행");
};

/** A row of the board without a file. */
struct BoardRow {
    QString id {};
    QString title {};
    QString status {};
    QString milestone {};
};

enum class Kind { File, BoardOnly };
enum class Readiness { Ready, Blocked, Settled };

struct Node {
    QString id;  ///< as written
    QString key; ///< the id in lower case: the identity in the graph
    QString title;
    IssueStatus status {};
    QString milestone; ///< the short name
    Kind kind = Kind::File;
    Readiness readiness = Readiness::Ready;
    QStringList unresolved {}; ///< ids of blockers still in force
    int blocking = 0;          ///< issues this one holds up directly
    int downstream = 0;        ///< all issues it holds up, directly or not
    int depth = 0;             ///< the layer in the picture
    bool context = false;      ///< shown only as a neighbour of the chosen milestone

    bool operator==(const Node &) const = default;
};

/** `from` blocks `to`; both are keys. */
struct Edge {
    QString from;
    QString to;
    bool struck = false;
    bool resolved = false;
    bool declaredByBlocked = false;
    bool declaredByBlocker = false;

    bool operator==(const Edge &) const = default;
};

struct Cycle {
    QStringList ids;
    bool operator==(const Cycle &) const = default;
};
struct Missing {
    QString from;
    QString key;
    QString ref;
    bool operator==(const Missing &) const = default;
};
struct OneSided {
    QString from;
    QString to;
    QString missingIn {};
    QString missingInKey {};
    bool operator==(const OneSided &) const = default;
};
struct SelfReference {
    QString id;
    QString key;
    bool operator==(const SelfReference &) const = default;
};
struct Duplicate {
    QString id;
    int count = 0;
    bool operator==(const Duplicate &) const = default;
};

/** What is wrong with a declaration. */
struct Problem {
    std::variant<Cycle, Missing, OneSided, SelfReference, Duplicate> what;

    bool operator==(const Problem &) const = default;

    /** A stable identity. */
    [[nodiscard]] QString id() const;
    /** What the person reads: it names the cell to fix. */
    [[nodiscard]] QString message() const;
};

struct Graph {
    QList<Node> nodes {}; ///< those with a relation
    QList<Edge> edges {};
    QList<Problem> problems {};   ///< by weight, then by id
    QList<Node> isolatedNodes {}; ///< those without
    QStringList milestones {};    ///< the board's order first

    bool operator==(const Graph &) const = default;

    /** The ids of the isolated nodes. */
    [[nodiscard]] QStringList isolated() const;
    [[nodiscard]] int readyCount() const;
    [[nodiscard]] int blockedCount() const;
    /** The keys of everything upstream and downstream of an issue, itself included; empty for one unknown. */
    [[nodiscard]] QSet<QString> chain(const QString &id) const;
};

[[nodiscard]] Input input(const IssueDocument &document);

[[nodiscard]] Graph build(const QList<Input> &inputs, const QList<BoardRow> &boardRows,
                          const QStringList &milestoneOrder);

/** The graph of one milestone with its direct neighbours; the graph itself for an empty or unknown one. */
[[nodiscard]] Graph scoped(const Graph &graph, const QString &milestone);

/** Notes beside the references of one issue, by the lower-case id of the reference. */
[[nodiscard]] QHash<QString, QString> refNotes(const QString &issueID, const QList<Problem> &problems);

/** The issue to open for a problem: the one to mend. */
[[nodiscard]] QString primaryID(const Problem &problem);

} // namespace Vesk::IssueGraph
