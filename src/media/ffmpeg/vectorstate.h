#pragma once

// Marks the upper halves of the vector registers unused before FFmpeg's plain C code runs.
// Qt's seeded string hashing (every QHash or QSet lookup by a QString) can leave them in use;
// on an AMD EPYC every legacy SSE instruction of a demuxer then waited on them, and a movie
// header read took 126 µs instead of 66 µs. FFmpeg's own vector routines clear them on return,
// its C code never does. A no-op on processors without AVX.
void clearUpperVectorState();
