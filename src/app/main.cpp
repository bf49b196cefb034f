// The cuebox executable: the window, or the command line when asked for it.
#include "commandline.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));

    // Until the window exists, everything goes to the command line.
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationName(QStringLiteral("Cuebox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CUEBOX_VERSION));
    return CommandLine::run(args);
}
