#include "issues/TableLine_p.h"

namespace Vesk::TableLine
{

QString asCell(const QString &text)
{
    QString cell = text;
    for (QChar &c : cell) {
        if (c == u'|')
            c = u'｜'; // a pipe would end the cell, and nothing escapes it
        else if (c == u'\n' || c == u'\r')
            c = u' ';
    }
    return cell;
}

} // namespace Vesk::TableLine
