#pragma once
// Sources made by make_convert_fixtures.sh (or make_gpu_fixtures.sh) before these tests run,
// and the media fixtures' ffmpeg CLI tools as the independent reader of what the converter
// wrote.
#include "media/convert/mediaconverter.h"
#include "media/mediafixtures.h"
#include "model/mediaclip.h"

#include <QDir>

namespace ConvertFixtures {

using namespace MediaFixtures;

inline QString path(const QString &name)
{
    return QDir(QStringLiteral(CUEBOX_CONVERT_FIXTURES)).filePath(name);
}

inline MediaClip clipFor(const QString &file, const QString &arenaName)
{
    MediaClip clip = MediaClip::forFile(file);
    clip.arenaName = arenaName;
    return clip;
}

// Every entry of a folder, hidden ones included: leftovers of a failed conversion show here.
inline QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// Converts `source` into `folder` as `arenaName`; the source must come out untouched.
inline ConvertResult convertVideo(const QString &source, const QString &folder,
                                  ConvertOptions options, const QString &arenaName = "01_clip",
                                  std::function<void(double)> progress = {},
                                  std::stop_token stop = {})
{
    const Snapshot before = Snapshot::of(source);
    ConvertResult result = MediaConverter::convertVideo(clipFor(source, arenaName), folder, options,
                                                        std::move(progress), stop);
    EXPECT_EQ(Snapshot::of(source), before) << "the source changed";
    return result;
}

} // namespace ConvertFixtures
