#include "windowmain.h"

#include "startup.h"
#include "ui/cueboxapp.h"

#include <QApplication>

extern "C" int cuebox_window_main(int &argc, char **argv, const QStringList &paths)
{
    QApplication app(argc, argv);
    Startup::prepareApplication();
    CueboxApp::applyLook();
    CueboxApp cuebox;
    cuebox.start(paths);
    return QApplication::exec();
}
