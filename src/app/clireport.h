#pragma once

#include "l10n/l10n.h"
#include "model/mediaclip.h"
#include "output/jsonvalue.h"
#include "session/packstatus.h"
#include "session/preshowchecklist.h"

#include <QList>
#include <QString>

// What `cuebox check` prints: one row per clip, the checklist and the pack report, as text
// (coloured on a terminal) or as one JSON document.
namespace CliReport {

QString text(const QList<MediaClip> &clips, const PreShowChecklist &checklist, const L10n &strings,
             bool colour);
JsonValue json(const QList<MediaClip> &clips, const PreShowChecklist &checklist,
               const PackStatus &status, const L10n &strings);
JsonValue clipJson(const MediaClip &clip, const L10n &strings);
// One line of `cuebox watch`: what happened (`eventKey` looked up), then the clip's row.
QString eventLine(const char *eventKey, const MediaClip &clip, const L10n &strings, bool colour);

} // namespace CliReport
