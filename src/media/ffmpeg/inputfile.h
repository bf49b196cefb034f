#pragma once

#include "avhandles.h"
#include "model/result.h"

#include <chrono>
#include <memory>
#include <stop_token>

// A local media file opened for reading its container header. Every blocking FFmpeg call on it
// gives up at a deadline or when `stop` is requested, only the file protocol is allowed, and the
// demuxer may not open any other file (playlists, references, manifests) on its own.
class InputFile
{
public:
    // Opens `path` and reads its header. The error carries FFmpeg's text for what went wrong
    // ("No such file or directory", "Invalid data found when processing input").
    static Result<InputFile> open(const QString &path, std::stop_token stop,
                                  std::chrono::milliseconds budget);

    InputFile(InputFile &&) noexcept = default;
    InputFile &operator=(InputFile &&) noexcept = default;
    ~InputFile();

    AVFormatContext *format() const { return m_format.get(); }

    // Reads a few packets to fill in what the header left out (MPEG program streams carry no
    // header at all). Kept small: it only has to find the streams and their parameters.
    int readStreamInfo();
    // Gives the following calls a fresh deadline, `budget` from now.
    void extendDeadline(std::chrono::milliseconds budget);
    bool interrupted() const;

private:
    struct Guard;
    InputFile(std::unique_ptr<Guard> guard, FormatHandle format);
    // One open with `demuxer`, or with the one the first bytes show when it is null.
    static Result<InputFile> attempt(const QString &path, std::stop_token stop,
                                     std::chrono::steady_clock::time_point deadline,
                                     const AVInputFormat *demuxer);

    std::unique_ptr<Guard> m_guard; // outlives m_format: the context points at it
    FormatHandle m_format;
};

// FFmpeg prints nothing of its own in the product; findings carry its error texts instead.
void silenceFfmpegLog();
