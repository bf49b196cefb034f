#pragma once

#include <QStringList>

// The command line: verbs that do the window's work without a display.
namespace CommandLine {
// True when the arguments ask for the command line rather than the window.
bool wants(const QStringList &args);
// Runs with a QCoreApplication already created; returns the exit status.
int run(const QStringList &args);
} // namespace CommandLine
