// The two things a child can wait for a person with.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

/** A tool that waits for permission. */
struct PermissionRequest {
    QString requestId;
    QString toolName;
    QString displayName; ///< what the card calls the tool
    std::optional<QString> toolUseId;
    QString summary;                              ///< one line
    QString detail;                               ///< every argument, one a line: `key: value`
    QByteArray rawInputJSON;                      ///< byte for byte what came; "{}" when it was no object
    std::optional<QByteArray> rawSuggestionsJSON; ///< what "always" would send, sanitised
    QStringList ruleTexts;                        ///< the same for people, as in `Bash(git status:*)`
    bool remote = false;                          ///< the turn was started from a messenger

    bool operator==(const PermissionRequest &) const = default;
};

/** Questions that wait for an answer. */
struct QuestionRequest {
    struct Option {
        QString label;
        std::optional<QString> description;
        bool operator==(const Option &) const = default;
    };
    struct Question {
        int id = 0; ///< its position
        QString question;
        QString header;
        QList<Option> options;
        bool multiSelect = false;
        bool operator==(const Question &) const = default;
    };

    QString requestId;
    std::optional<QString> toolUseId;
    QList<Question> questions;
    QByteArray rawInputJSON;
    bool remote = false;

    bool operator==(const QuestionRequest &) const = default;
};

/** What was chosen for one question. */
struct QuestionAnswer {
    QStringList selected; ///< labels
    QString other;        ///< free text
};

enum class PermissionChoice { Once, Always, Deny };

} // namespace Vesk
