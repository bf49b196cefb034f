#pragma once

#include "model/result.h"
#include "packexporter.h"
#include "verifiedcopy.h"

#include <QStringList>

#include <functional>
#include <stop_token>

// The backup of originals before a pack conversion: every source under its own name in
// `folder` (a second clip.mov becomes clip_1.mov), read back like the export's copies, and a
// checksums.sha256 over them, written last.
namespace PackBackup {

Result<QString> backupFiles(const QStringList &sources, const QString &folder, const CopyFile &copy,
                            ReadBack readBack,
                            const std::function<void(const PackExporter::Progress &)> &progress,
                            std::stop_token stop);

} // namespace PackBackup
