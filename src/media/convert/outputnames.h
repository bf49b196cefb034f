#pragma once

#include "model/result.h"

#include <QString>

namespace OutputNames {

// folder / (arenaName + extension), once it is safe to write there: the folder exists and the
// name is a plain file name. The error message says which of these failed. The result may be
// the source itself (converted again into the same folder): the output is written under a
// hidden name while the source is read, and renamed over it only when complete.
Result<QString> targetPath(const QString &folder, const QString &arenaName, QStringView extension);

} // namespace OutputNames
