#pragma once

#include <QByteArray>

// Where the program's own modules are: next to the executable in a build tree, in the
// program's folder under the library folder once installed. Empty when neither holds the file.
namespace ModuleFile {

QByteArray path(const char *fileName);

} // namespace ModuleFile
