#pragma once

#include "mediaprobe.h"
#include "model/filestamp.h"
#include "model/mediaclip.h"
#include "model/riskrules.h"

#include <stop_token>

// Probes one file and judges it. Never fails: every problem becomes a finding on the clip.
namespace MediaInspector {

// `lookedAt`, when given, receives the file's stamp as it was just before the probe: a file
// that changes during or after the probe then differs from it.
MediaClip inspect(const QString &path, const InspectionRules &rules, const MediaProbe &probe,
                  std::stop_token stop = {}, FileStamp *lookedAt = nullptr);

// Four bytes, most significant first, as ASCII with spaces and tabs trimmed at both ends;
// "????" when any byte is 128 or above. NUL bytes stay.
QString fourCC(quint32 code);

// The bounding box of the (0, 0, width, height) rectangle under the transform, each side
// rounded to the nearest integer, halves up.
std::pair<qint64, qint64> displaySize(double width, double height, const DisplayMatrix &matrix);

} // namespace MediaInspector
