// A job of a document's model that is under way on its thread.
#pragma once

#include "markdown/DocumentDisk_p.h"
#include "markdown/MarkdownDocumentModel.h"

#include <QFutureWatcher>

namespace Vesk
{

struct MarkdownDocumentModel::Flight {
    DiskJob job;
    QFutureWatcher<DiskReport> *landing = nullptr;
};

} // namespace Vesk
