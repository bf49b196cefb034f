#include "output/packproject.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace {

PackProjectFile sample()
{
    PackProjectFile file;
    file.showPrefix = "Main Show";
    file.zeroPad = false;
    file.preferredWidth = 2560;
    file.warnOnEmbeddedAudio = false;
    file.warnOnHEVC = false;
    file.convertFormat = "h264";
    file.stripAudioOnConvert = false;
    file.forceEvenDimensions = false;
    file.createdAt = QDateTime(QDate(2026, 11, 16), QTime(21, 42, 48), QTimeZone::utc());
    file.clips = {{QUuid("{0b6c1c5e-8d1e-4a53-9a50-0d1f2a3b4c5d}"), "/show/intro.mov", std::nullopt,
                   "intro.mov", "1_main_show_intro", 1}};
    return file;
}

} // namespace

TEST(PackProject, EncodesSortedWithoutBookmark)
{
    EXPECT_EQ(QString::fromUtf8(PackProject::encode(sample())), QString::fromUtf8(R"({
  "clips" : [
    {
      "arenaName" : "1_main_show_intro",
      "cueIndex" : 1,
      "id" : "0B6C1C5E-8D1E-4A53-9A50-0D1F2A3B4C5D",
      "originalName" : "intro.mov",
      "path" : "/show/intro.mov"
    }
  ],
  "convertFormat" : "h264",
  "createdAt" : "2026-11-16T21:42:48Z",
  "forceEvenDimensions" : false,
  "preferredWidth" : 2560,
  "showPrefix" : "Main Show",
  "stripAudioOnConvert" : false,
  "version" : 1,
  "warnOnEmbeddedAudio" : false,
  "warnOnHEVC" : false,
  "zeroPad" : false
})"));
    EXPECT_EQ(PackProject::decode(PackProject::encode(sample())), sample());
}

// Bookmarks, ids and times have their own table in projectdecoding_test.
TEST(PackProject, DecodingIsStrictButToleratesLaterVersions)
{
    const QByteArray text = PackProject::encode(sample());
    const auto edited = [&](const char *from, const char *to) {
        return QByteArray(text).replace(from, to);
    };
    EXPECT_TRUE(PackProject::decode(edited("\"version\" : 1", "\"version\" : 2")));
    EXPECT_FALSE(PackProject::decode(edited("\"createdAt\" : \"2026-11-16T21:42:48Z\",\n", "")));
    EXPECT_FALSE(PackProject::decode(edited("\"zeroPad\" : false", "\"zeroPad\" : \"no\"")));
    EXPECT_FALSE(PackProject::decode(edited("\"cueIndex\" : 1", "\"cueIndex\" : 1.5")));
    EXPECT_FALSE(PackProject::decode(text.left(text.size() / 2)));
    EXPECT_FALSE(PackProject::decode(""));
    EXPECT_FALSE(PackProject::decode("[]"));
}

TEST(PackProject, ProposedNamesAndAtomicWrite)
{
    EXPECT_EQ(PackProject::proposedFileName(""), "Show.cuebox.json");
    EXPECT_EQ(PackProject::proposedFileName("Main Show"), "main_show.cuebox.json");
    QTemporaryDir dir;
    const QString path = dir.filePath("Show.cuebox.json");
    ASSERT_TRUE(PackProject::write(sample(), path).has_value());
    EXPECT_EQ(PackProject::read(path), sample());
    EXPECT_FALSE(PackProject::write(sample(), dir.filePath("missing/x.json")).has_value());
    EXPECT_FALSE(PackProject::read(dir.filePath("nothing.json")));
}
