#pragma once

#include "media/convert/convertformat.h"
#include "model/mediaclip.h"

#include <QString>

#include <functional>
#include <stop_token>
#include <utility>
#include <variant>

// Why a conversion did not produce a file. The descriptions are fixed English texts, or the
// text of the library that failed (FFmpeg's av_strerror, the file system's strerror).
class MediaConverterError
{
public:
    enum class Kind { exportFailed, unsupported, cancelled };

    static MediaConverterError exportFailed(QString text) { return {Kind::exportFailed, text}; }
    static MediaConverterError unsupported() { return {Kind::unsupported, {}}; }
    static MediaConverterError cancelled() { return {Kind::cancelled, {}}; }

    Kind kind() const { return m_kind; }
    QString description() const;

    friend bool operator==(const MediaConverterError &, const MediaConverterError &) = default;

private:
    MediaConverterError(Kind kind, QString text) : m_kind(kind), m_text(std::move(text)) {}

    Kind m_kind;
    QString m_text; // exportFailed only
};

// The written file's path, or why there is none. Shaped like std::expected.
class ConvertResult
{
public:
    ConvertResult(QString path) : m_data(std::in_place_index<0>, std::move(path)) {}
    ConvertResult(MediaConverterError error) : m_data(std::in_place_index<1>, std::move(error)) {}

    bool has_value() const { return m_data.index() == 0; }
    explicit operator bool() const { return has_value(); }
    const QString &value() const { return std::get<0>(m_data); }
    const QString &operator*() const { return value(); }
    const MediaConverterError &error() const { return std::get<1>(m_data); }

private:
    std::variant<QString, MediaConverterError> m_data;
};

// Turns one clip into a file Resolume Arena plays well, written into `folder` under the clip's
// Arena name. Stateless; every call is synchronous and meant for a worker thread. The source
// file is only ever read. The output appears under its final name only when complete: a
// failed or cancelled call leaves the folder as it found it. `progress` (may be empty) gets
// fractions from 0 to 1 on the calling thread, ending with exactly 1.0 on success.
class MediaConverter
{
public:
    // A QuickTime movie arenaName + ".mov" in the chosen format: the first video track, and the
    // first audio track unless `options.dropAudio`, with timestamps and orientation kept.
    static ConvertResult convertVideo(const MediaClip &clip, const QString &folder,
                                      const ConvertOptions &options,
                                      std::function<void(double)> progress, std::stop_token stop);

    // A PNG arenaName + ".png" with the stored pixels (no orientation applied), cropped at the
    // right and bottom edges to even sizes when `forceEven`. 16-bit sources stay 16-bit.
    static ConvertResult convertImage(const MediaClip &clip, const QString &folder, bool forceEven,
                                      std::function<void(double)> progress);
};
