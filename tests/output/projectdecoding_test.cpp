// What a project file may say and still be read: null for an absent bookmark, the all-zero
// UUID; what makes it unreadable: damaged Base64, a creation time that is not a full
// date-time with a zone.
#include "output/packproject.h"

#include <QTimeZone>

#include <gtest/gtest.h>

namespace {

const QByteArray kFile = R"({
  "clips" : [
    {
      "arenaName" : "01_intro",
      "bookmark" : BOOKMARK,
      "cueIndex" : 1,
      "id" : "ID",
      "originalName" : "intro.mov",
      "path" : "/show/intro.mov"
    }
  ],
  "convertFormat" : "h264",
  "createdAt" : "CREATED",
  "forceEvenDimensions" : false,
  "preferredWidth" : 1920,
  "showPrefix" : "",
  "stripAudioOnConvert" : false,
  "version" : 1,
  "warnOnEmbeddedAudio" : true,
  "warnOnHEVC" : true,
  "zeroPad" : true
})";

} // namespace

TEST(ProjectDecoding, FollowsTheFileFormat)
{
    struct Row {
        const char *name;
        const char *bookmark;
        const char *id;
        const char *createdAt;
        bool readable;
        std::optional<QByteArray> decodedBookmark = std::nullopt;
    };
    const char *kId = "0B6C1C5E-8D1E-4A53-9A50-0D1F2A3B4C5D";
    const char *kAt = "2026-11-16T21:42:48Z";
    const Row rows[] = {
        {"plain", "\"Ym9vaw==\"", kId, kAt, true, QByteArray("book")},
        {"null bookmark is absent", "null", kId, kAt, true},
        {"all-zero id", "null", "00000000-0000-0000-0000-000000000000", kAt, true},
        {"lower-case id", "null", "0b6c1c5e-8d1e-4a53-9a50-0d1f2a3b4c5d", kAt, true},
        {"offset zone", "null", kId, "2026-11-16T22:42:48+01:00", true},
        {"braced id", "null", "{0B6C1C5E-8D1E-4A53-9A50-0D1F2A3B4C5D}", kAt, false},
        {"id not hex", "null", "0B6C1C5E-8D1E-4A53-9A50-0D1F2A3B4C5X", kAt, false},
        {"bookmark with a bad character", "\"Ym9v!w==\"", kId, kAt, false},
        {"bookmark without padding", "\"Ym9vaw\"", kId, kAt, false},
        {"bookmark a number", "42", kId, kAt, false},
        {"date alone", "null", kId, "2026-11-16", false},
        {"no zone", "null", kId, "2026-11-16T21:42:48", false},
        {"no seconds", "null", kId, "2026-11-16T21:42Z", false},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        QByteArray text = kFile;
        text.replace("BOOKMARK", row.bookmark).replace("\"ID\"", '"' + QByteArray(row.id) + '"');
        text.replace("CREATED", row.createdAt);
        const std::optional<PackProjectFile> file = PackProject::decode(text);
        ASSERT_EQ(file.has_value(), row.readable);
        if (!file)
            continue;
        ASSERT_EQ(file->clips.size(), 1);
        EXPECT_EQ(file->clips[0].bookmark, row.decodedBookmark);
        EXPECT_EQ(file->clips[0].id, QUuid::fromString(QString::fromLatin1(row.id)));
        EXPECT_EQ(file->createdAt.toUTC(),
                  QDateTime(QDate(2026, 11, 16), QTime(21, 42, 48), QTimeZone::utc()));
    }
}
