#include "issues/FileNameSlug.h"

#include "base/Text.h"

namespace Vesk
{

QString FileNameSlug::slug(const QString &text)
{
    QString slug;
    bool kept = false; // an accent that stands alone belongs to the letter before it
    const auto points = Text::trimWhitespace(text.normalized(QString::NormalizationForm_C)).toUcs4();
    for (const uint point : points) {
        kept = point == u' ' || point == u'-' || point == u'_' || QChar::isLetterOrNumber(point)
            || (kept && QChar::isMark(point));
        if (kept) {
            slug.append(QChar::fromUcs4(point == u' ' ? u'-' : point));
        }
    }
    return slug;
}

} // namespace Vesk
