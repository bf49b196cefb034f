#pragma once

#include <QStringList>

// The window's entry in its module (cuebox-window.so): runs the application until the window
// closes and returns its exit code. `paths` are folders and files to add.
extern "C" int cuebox_window_main(int &argc, char **argv, const QStringList &paths);
