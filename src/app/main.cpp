// The cuebox executable: the window, or the command line when asked for it.
#include "commandline.h"
#include "ui/cueboxapp.h"

#include <QApplication>
#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

// Qt takes the whole C locale from the environment; under a comma locale printf, strtod and
// libav's option parsing would then read and write "1,5". Numbers stay in the C form; texts
// keep the user's character set.
void keepNumbersInTheCLocale()
{
    std::setlocale(LC_NUMERIC, "C");
}

void nameApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CUEBOX_VERSION));
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));

    // Options and verbs run headless; anything else (nothing, or folders and files to add)
    // opens the window.
    if (CommandLine::wants(args)) {
        QCoreApplication app(argc, argv);
        keepNumbersInTheCLocale();
        nameApplication();
        const int code = CommandLine::run(args);
        // A verb has written, synced and cleaned up all it made by the time it returns. What is
        // left is tearing down the thread pool and the static state of some 150 libraries,
        // which took about 10 ms of every run; the kernel takes the memory back at once.
        std::fflush(stdout);
        std::fflush(stderr);
        std::_Exit(code);
    }
    QApplication app(argc, argv);
    keepNumbersInTheCLocale();
    nameApplication();
    CueboxApp::applyLook();
    CueboxApp cuebox;
    cuebox.start(args);
    return QApplication::exec();
}
