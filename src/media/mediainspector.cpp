#include "mediainspector.h"

#include "model/filesystem.h"
#include "model/pathnames.h"

#include <algorithm>
#include <cmath>

namespace MediaInspector {

namespace {

using Stage = VideoFacts::Stage;

void addFailure(MediaClip &clip, IssueKind kind, std::optional<QString> text = std::nullopt)
{
    ClipIssue issue = ClipIssue::make(ClipHealth::fail, kind);
    issue.textValue = std::move(text);
    clip.issues.append(issue);
}

qint64 roundHalfUp(double value)
{
    return static_cast<qint64>(std::floor(value + 0.5));
}

void inspectImage(MediaClip &clip, const InspectionRules &rules, const MediaProbe &probe,
                  std::stop_token stop)
{
    const ImageFacts facts = probe.probeImage(clip.sourcePath(), stop);
    if (!facts.opened || !facts.hasProperties) {
        addFailure(clip, IssueKind::imageUnreadable);
        return;
    }
    clip.width = facts.width;
    clip.height = facts.height;
    clip.duration = 0.0; // present, so a still reads 0:00
    clip.hasAlpha = facts.hasAlpha;
    clip.videoCodec = PathNames::extension(clip.sourcePath()).toUpper();
    applyGeometryRules(clip, rules);
}

// Traps the header shows but a file browser does not; only a track that is there has them.
void addStageTraps(MediaClip &clip, const VideoFacts &facts)
{
    if (facts.videoTrackCount == 0)
        return;
    const auto warn = [&](IssueKind kind) -> ClipIssue & {
        clip.issues.append(ClipIssue::make(ClipHealth::warn, kind));
        return clip.issues.last();
    };
    if (facts.variableFrameRate)
        warn(IssueKind::variableFrameRate);
    if (facts.interlaced)
        warn(IssueKind::interlaced);
    if (facts.hdrTransfer)
        warn(IssueKind::hdr).textValue = facts.hdrTransfer;
}

// Each load in turn; a failed load ends the probe with the fields filled so far.
void inspectVideo(MediaClip &clip, const InspectionRules &rules, const MediaProbe &probe,
                  std::stop_token stop)
{
    const VideoFacts facts = probe.probeVideo(clip.sourcePath(), stop);
    const auto failedBy = [&](Stage stage) {
        if (facts.failedAt != stage)
            return false;
        addFailure(clip, IssueKind::readError, facts.errorText);
        return true;
    };
    if (failedBy(Stage::open) || failedBy(Stage::duration))
        return;
    if (facts.duration && std::isfinite(*facts.duration))
        clip.duration = facts.duration;
    if (failedBy(Stage::tracks))
        return;
    clip.hasAudio = facts.audioTrackCount > 0;

    if (facts.videoTrackCount == 0) {
        addFailure(clip, IssueKind::noVideo);
    } else {
        if (failedBy(Stage::naturalSize))
            return;
        if (failedBy(Stage::transform))
            return;
        const auto [width, height] =
            displaySize(facts.naturalWidth.value_or(0), facts.naturalHeight.value_or(0),
                        facts.transform.value_or(DisplayMatrix{}));
        clip.width = width;
        clip.height = height;
        if (failedBy(Stage::frameRate))
            return;
        if (facts.nominalFrameRate > 0)
            clip.frameRate = static_cast<double>(facts.nominalFrameRate);
        // A variable rate's nominal value is the container's fastest beat, not what plays.
        if (facts.variableFrameRate && facts.averageFrameRate > 0)
            clip.frameRate = facts.averageFrameRate;
        if (failedBy(Stage::formats))
            return;
        if (facts.videoCodecCode)
            clip.videoCodec = fourCC(*facts.videoCodecCode);
        clip.hasAlpha = facts.hasAlpha;
    }
    if (facts.videoTrackCount == 0 && failedBy(Stage::formats))
        return;
    if (facts.audioTrackCount > 0 && facts.audioCodecCode)
        clip.audioCodec = fourCC(*facts.audioCodecCode);

    applyGeometryRules(clip, rules);
    applyCodecRules(clip, rules);
    applyBitrateRules(clip, rules);
    addStageTraps(clip, facts);
    if (rules.warnOnEmbeddedAudio && facts.audioTrackCount > 0)
        clip.issues.append(ClipIssue::make(ClipHealth::warn, IssueKind::audio));
}

} // namespace

QString fourCC(quint32 code)
{
    const char bytes[4] = {static_cast<char>(code >> 24), static_cast<char>(code >> 16),
                           static_cast<char>(code >> 8), static_cast<char>(code)};
    if (std::any_of(std::begin(bytes), std::end(bytes),
                    [](char b) { return static_cast<unsigned char>(b) >= 0x80; }))
        return QStringLiteral("????");
    QString text = QString::fromLatin1(bytes, 4);
    qsizetype start = 0;
    qsizetype end = text.size();
    const auto blank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (start < end && blank(text[start]))
        ++start;
    while (end > start && blank(text[end - 1]))
        --end;
    return text.mid(start, end - start);
}

std::pair<qint64, qint64> displaySize(double width, double height, const DisplayMatrix &m)
{
    const double xs[4] = {m.tx, m.a * width + m.tx, m.c * height + m.tx,
                          m.a * width + m.c * height + m.tx};
    const double ys[4] = {m.ty, m.b * width + m.ty, m.d * height + m.ty,
                          m.b * width + m.d * height + m.ty};
    const auto [xMin, xMax] = std::minmax_element(std::begin(xs), std::end(xs));
    const auto [yMin, yMax] = std::minmax_element(std::begin(ys), std::end(ys));
    return {roundHalfUp(*xMax - *xMin), roundHalfUp(*yMax - *yMin)};
}

MediaClip inspect(const QString &path, const InspectionRules &rules, const MediaProbe &probe,
                  std::stop_token stop, FileStamp *lookedAt)
{
    MediaClip clip = MediaClip::forFile(path);
    const FileSystem::Look look = FileSystem::look(path);
    if (lookedAt)
        *lookedAt = FileStamp::of(look);
    clip.fileSize = look.size;
    if (look.special) // never opened: a pipe would block the probe for ever
        addFailure(clip, IssueKind::readError, FileSystem::notRegularText());
    else if (PathNames::isImage(path))
        inspectImage(clip, rules, probe, stop);
    else
        inspectVideo(clip, rules, probe, stop);
    clip.isInspected = true;
    return clip;
}

} // namespace MediaInspector
