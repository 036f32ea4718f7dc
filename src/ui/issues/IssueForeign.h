// Types of the floors below, as the QML of the issue window knows them.
#pragma once

#include "markdown/MarkdownDocumentModel.h"

#include <QtQml/qqmlregistration.h>

namespace Vesk
{

struct MarkdownDocumentModelForeign {
    Q_GADGET
    QML_FOREIGN(Vesk::MarkdownDocumentModel)
    QML_NAMED_ELEMENT(MarkdownDocumentModel)
    QML_UNCREATABLE("belongs to IssueDetail")
};

} // namespace Vesk
