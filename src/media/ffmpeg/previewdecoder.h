#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

// The preview's picture source: a movie's video frames in presentation order, upright and
// fitted into a box, decoded by FFmpeg so that everything the probe reads also plays (ProRes,
// HAP, DXV, H.264, HEVC, VP9…). Audio is never decoded: previews are muted. Blocking; one
// decoder belongs to one thread at a time.
class PreviewDecoder
{
public:
    struct Frame {
        QImage image;
        double seconds = 0; // from the start of the stream
    };

    // Null when the file has no decodable video track.
    static std::unique_ptr<PreviewDecoder> open(const QString &path, QSize box,
                                                std::stop_token stop);
    ~PreviewDecoder();

    // The next frame; nothing at the end of the stream, on a broken stream, or once `stop`
    // was requested.
    std::optional<Frame> next();
    double frameRate() const; // 0 when unknown

private:
    struct State;
    explicit PreviewDecoder(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};
