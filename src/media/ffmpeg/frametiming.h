#pragma once

#include "media/mediaprobe.h"

#include <cstdint>
#include <vector>

class InputFile;
struct AVStream;

// How a video track's frames are timed and laid out, read from what the container already holds
// (its sample table, else its first packets) without decoding a picture.
namespace FrameTiming {

struct Verdict {
    bool judged = false;    // enough timed frames to tell
    bool variable = false;  // their durations vary beyond timestamp rounding
    double averageRate = 0; // frames per second over the judged frames
};

// Judges the start times of a track's frames, in ticks of `tickSeconds`, in any order;
// `spanSeconds` > 0 is the track's whole length when the times cover all of it.
Verdict judge(std::vector<int64_t> times, double tickSeconds, double spanSeconds = 0);

// Fills the stage-trap fields of `facts` (variable rate and average rate, interlacing, HDR
// transfer) for `video`, the first video track of `input`. Reads packets only where the header
// cannot tell, and only a few seconds of them.
void readStageTraps(InputFile &input, const AVStream *video, VideoFacts &facts);

} // namespace FrameTiming
