// One issue file, read and carefully rewritten: a title line, a table of fields, sections, checkboxes.
#pragma once

#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** A value; any text yields one, a malformed text merely an emptier one. */
struct IssueDocument {
    /** Checkboxes. */
    struct Progress {
        int done = 0;
        int total = 0;
        bool operator==(const Progress &) const = default;
    };

    /** A row of the table at the top. */
    struct Field {
        QString key;      ///< the first cell without decoration
        QString value;    ///< the second cell without decoration; empty for a placeholder
        QString rawValue; ///< the second cell as written, without the blanks around it
        bool operator==(const Field &) const = default;
    };

    /** A "## " section. */
    struct Section {
        QString title;
        Progress progress {};
        bool operator==(const Section &) const = default;
    };

    /** A mention of another issue in a cell. */
    struct Ref {
        QString id;
        bool struck = false; ///< written with a line through it: it no longer counts
        bool operator==(const Ref &) const = default;
        friend size_t qHash(const Ref &ref, size_t seed = 0) noexcept
        {
            return qHashMulti(seed, ref.id, ref.struck);
        }
    };

    /** The status cell taken apart, so that it can be rewritten without loss. */
    struct StatusCell {
        QString token;    ///< the status word exactly as written, backticks included
        QString word;     ///< the same without decoration
        QString trailing; ///< all behind the word, leading blanks included: the note beside a status
        bool operator==(const StatusCell &) const = default;

        /** The cell with another word: the style of the old word and the note stay. */
        [[nodiscard]] QString rewritten(const QString &newWord) const;
    };

    QString id; ///< as written
    QString title;
    QList<Field> fields;       ///< in the order of the file
    QList<Section> sections;   ///< in the order of the file
    Progress progress {};      ///< of the whole file
    bool hasMetaTable = false; ///< a table row was seen above the first "## " line

    bool operator==(const IssueDocument &) const = default;

    /** Never fails. `fileName` gives the id and title that the text does not. */
    [[nodiscard]] static IssueDocument parse(const QString &markdown, const QString &fileName);

    /** The key as the file spells it, of the first row whose key is one of `keys` in any case. */
    [[nodiscard]] std::optional<QString> key(const QStringList &keys) const;
    /** That row's value; absent when there is no row or its value is empty. */
    [[nodiscard]] std::optional<QString> value(const QStringList &keys) const;
    /** That row's cell as written, even when blank. */
    [[nodiscard]] std::optional<QString> rawValue(const QStringList &keys) const;

    /** The status word; absent when empty. */
    [[nodiscard]] std::optional<QString> status() const;
    [[nodiscard]] StatusCell statusCell() const;
    /** The note beside the status; absent when there is none. */
    [[nodiscard]] std::optional<QString> statusNote() const;
    /** Ids of the issues this one waits for, struck ones included. */
    [[nodiscard]] QStringList blockedBy() const;
    /** Ids of the issues that wait for this one, struck ones included. */
    [[nodiscard]] QStringList blocks() const;
};

/** The spellings under which a meaning is found in a table, by meaning. */
namespace IssueKeys
{
[[nodiscard]] const QStringList &status();
[[nodiscard]] const QStringList &blockedBy();
[[nodiscard]] const QStringList &blocks();
[[nodiscard]] const QStringList &milestone();
[[nodiscard]] const QStringList &area();
[[nodiscard]] const QStringList &priority();
[[nodiscard]] const QStringList &estimate();
[[nodiscard]] const QStringList &recommendedModel();
[[nodiscard]] const QStringList &recommendedEffort();
} // namespace IssueKeys

} // namespace Vesk
