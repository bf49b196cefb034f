// A second conversion into the same folder within one second, or stripping a clip that already
// lies in the working folder: the output takes its own source's name. The source stays intact
// while it is read (the output grows under a hidden name) and is then replaced in one rename.
#include "convertfixtures.h"

#include <QTemporaryDir>

using namespace ConvertFixtures;

TEST(OwnSource, OutputNamedLikeItsSourceReplacesIt)
{
    struct Row {
        const char *fixture;
        const char *name; // the source's name in the folder, and the output's
        const char *codec;
        int width;
    };
    const Row rows[] = {{"av.mov", "03_show.mov", "prores", 320},
                        {"still_1921x1081.png", "03_logo.png", "png", 1920}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        QTemporaryDir folder;
        const QString source = folder.filePath(row.name);
        ASSERT_TRUE(QFile::copy(path(row.fixture), source));
        const MediaClip clip = clipFor(source, QFileInfo(source).completeBaseName());
        const ConvertResult result =
            clip.isImage()
                ? MediaConverter::convertImage(clip, folder.path(), true, {})
                : MediaConverter::convertVideo(clip, folder.path(), ConvertOptions{}, {}, {});
        ASSERT_TRUE(result) << result.error().description().toStdString();
        EXPECT_EQ(*result, source);
        EXPECT_EQ(entries(folder.path()), QStringList{row.name});
        const QList<QJsonObject> video = streams(ffprobe(source), u"video");
        ASSERT_EQ(video.size(), 1);
        EXPECT_EQ(video[0][u"codec_name"].toString(), row.codec);
        EXPECT_EQ(video[0][u"width"].toInt(), row.width);
        EXPECT_TRUE(decodesCleanly(source));
    }
}
