#pragma once

#include "mediaclip.h"
#include "screenprofile.h"

// The risk rules append findings to a probed clip and change nothing else.
namespace MediaInspector {
void applyGeometryRules(MediaClip &clip, const InspectionRules &rules);
void applyCodecRules(MediaClip &clip, const InspectionRules &rules);
void applyBitrateRules(MediaClip &clip, const InspectionRules &rules);
} // namespace MediaInspector
