// The messages of a session that were sent before, brought back one by one.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace Vesk
{

class Transcript;

/** The user's texts, oldest first; one that repeats the one before it stands once. */
[[nodiscard]] QStringList sentMessages(const Transcript &transcript);

/**
 * A walk through the sent messages. It begins in an empty composer and goes on while what it brought back is
 * untouched and the caret still stands behind it: from then on the keys are the editor's own again.
 */
class SentMessageWalk
{
public:
    /** The next older text; the oldest again at its end. Absent when the key is the editor's. */
    [[nodiscard]] std::optional<QString> older(const QStringList &sent, const QString &text, qsizetype caret);
    /** The next newer text, behind the newest the empty one. Absent when the key is the editor's. */
    [[nodiscard]] std::optional<QString> newer(const QStringList &sent, const QString &text, qsizetype caret);

private:
    [[nodiscard]] std::optional<QString> show(const QStringList &sent, qsizetype back);

    qsizetype m_back = 0; // how many messages back; 0 is the empty composer
    QString m_shown;
};

} // namespace Vesk
