// What stands in a composer and has not been sent.
#pragma once

#include <QString>
#include <QStringList>

namespace Vesk
{

struct ComposerDraft {
    QString text;
    qsizetype caret = 0; ///< in UTF-16 units
    QStringList attachments;

    [[nodiscard]] bool isEmpty() const { return text.isEmpty() && attachments.isEmpty(); }
    bool operator==(const ComposerDraft &) const = default;
};

} // namespace Vesk
