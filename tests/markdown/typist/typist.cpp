// Types into the document given as argument without end, autosaving, and prints the number of each text that
// is on the disk. It is there to be killed.
#include "markdown/MarkdownDocumentModel.h"
#include "TypedText.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Vesk;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 2)
        return 2;
    using std::chrono::milliseconds;
    const AutosaveDelays hurried {milliseconds(1), milliseconds(3), milliseconds(1)};
    MarkdownDocumentModel document(QString::fromLocal8Bit(argv[1]), nullptr, hurried);
    document.load();
    document.startWatching();
    int keys = Test::keysOf(document.text());
    QObject::connect(&document, &MarkdownDocumentModel::savedTextChanged, &document, [&document] {
        std::printf("%d\n", Test::keysOf(document.savedText()));
        std::fflush(stdout);
    });
    QTimer keyboard;
    QObject::connect(&keyboard, &QTimer::timeout, &document, [&] {
        document.setText(Test::typedText(++keys));
        document.scheduleAutosave();
    });
    keyboard.start(1);
    return QCoreApplication::exec();
}
