#pragma once

#include "model/result.h"

#include <QString>

namespace OutputNames {

// folder / (arenaName + extension), once it is safe to write there: the folder exists, the
// name is a plain file name, and the result is not the source itself (a conversion never
// replaces the file it reads). The error message says which of these failed.
Result<QString> targetPath(const QString &sourcePath, const QString &folder,
                           const QString &arenaName, QStringView extension);

} // namespace OutputNames
