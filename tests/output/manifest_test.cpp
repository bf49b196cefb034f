#include "output/jsonwriter.h"
#include "output/manifest.h"
#include "output/timestamp.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

namespace {

QList<MediaClip> knownPack()
{
    MediaClip intro = MediaClip::forFile("/pack/media/01_show_intro.mov");
    intro.originalName = "Intro Loop.mov";
    intro.arenaName = "01_show_intro_loop";
    intro.cueIndex = 1;
    intro.isInspected = true;
    intro.width = 1920;
    intro.height = 1080;
    intro.duration = 12.5;
    intro.videoCodec = "avc1";

    MediaClip odd = MediaClip::forFile("/pack/media/02_show_ete.MOV");
    odd.originalName = QString::fromUtf8("ÉTÉ \"2024\"/final.MOV");
    odd.arenaName = QString::fromUtf8("02_show_été_2024_final");
    odd.cueIndex = 2;
    odd.isInspected = true;
    odd.width = 1921;
    odd.height = 1080;
    odd.duration = 7.007;
    odd.videoCodec = "hvc1";
    odd.issues = {ClipIssue::make(ClipHealth::warn, IssueKind::oddSize),
                  ClipIssue::make(ClipHealth::warn, IssueKind::weirdCodec),
                  ClipIssue::make(ClipHealth::warn, IssueKind::duplicate),
                  ClipIssue::make(ClipHealth::warn, IssueKind::duplicate)};

    MediaClip broken = MediaClip::forFile("/pack/media/03_show_notes.mov");
    broken.arenaName = "03_show_notes";
    broken.cueIndex = 3;
    broken.isInspected = true;
    broken.issues = {ClipIssue::make(ClipHealth::fail, IssueKind::readError)};

    MediaClip pending = MediaClip::forFile("/pack/media/04_show_later.png");
    pending.arenaName = "04_show_later";
    pending.cueIndex = 4;
    return {intro, odd, broken, pending};
}

const char *const kExpected = R"({
  "app" : "Cuebox",
  "clips" : [
    {
      "arenaName" : "01_show_intro_loop",
      "cue" : 1,
      "duration" : 12.5,
      "health" : "ok",
      "height" : 1080,
      "issues" : [],
      "originalName" : "Intro Loop.mov",
      "videoCodec" : "avc1",
      "width" : 1920
    },
    {
      "arenaName" : "02_show_été_2024_final",
      "cue" : 2,
      "duration" : 7.007,
      "health" : "warn",
      "height" : 1080,
      "issues" : [
        "oddSize",
        "weirdCodec",
        "duplicate",
        "duplicate"
      ],
      "originalName" : "ÉTÉ \"2024\"/final.MOV",
      "videoCodec" : "hvc1",
      "width" : 1921
    },
    {
      "arenaName" : "03_show_notes",
      "cue" : 3,
      "health" : "fail",
      "issues" : [
        "readError"
      ],
      "originalName" : "03_show_notes.mov"
    },
    {
      "arenaName" : "04_show_later",
      "cue" : 4,
      "health" : "unknown",
      "issues" : [],
      "originalName" : "04_show_later.png"
    }
  ],
  "createdAt" : "2026-11-16T21:42:48Z",
  "showPrefix" : "Show",
  "version" : "0.1.0"
})";

const QDateTime kCreated = QDateTime(QDate(2026, 11, 16), QTime(21, 42, 48, 730), QTimeZone::utc());

} // namespace

TEST(Manifest, WrittenByteForByte)
{
    QTemporaryDir dir;
    ASSERT_TRUE(Manifest::write(knownPack(), dir.path(), "Show", kCreated).has_value());
    QFile file(dir.filePath("manifest.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), QString::fromUtf8(kExpected));
}

TEST(Manifest, EmptyPrefixAndFailures)
{
    const QByteArray empty = *encodeJson(Manifest::build({}, "", kCreated));
    EXPECT_TRUE(empty.contains("\"showPrefix\" : \"\""));
    EXPECT_TRUE(empty.contains("\"clips\" : []"));

    QList<MediaClip> clips = knownPack();
    clips[0].duration = std::numeric_limits<double>::infinity();
    QTemporaryDir dir;
    EXPECT_FALSE(Manifest::write(clips, dir.path(), "", kCreated).has_value());
    EXPECT_FALSE(QFile::exists(dir.filePath("manifest.json")));
    const Status missing =
        Manifest::write(knownPack(), dir.filePath("no/such/folder"), "", kCreated);
    ASSERT_FALSE(missing.has_value());
    EXPECT_EQ(missing.error().kind, Error::Kind::WriteFailed);
}

TEST(Timestamp, IsoAndFolderForms)
{
    EXPECT_EQ(isoTimestamp(kCreated), "2026-11-16T21:42:48Z");
    EXPECT_EQ(folderTimestamp(kCreated), "2026-11-16T21-42-48Z");
    const QDateTime berlin(QDate(2026, 1, 2), QTime(0, 30, 5), QTimeZone("Europe/Berlin"));
    EXPECT_EQ(isoTimestamp(berlin), "2026-01-01T23:30:05Z");
}
