#include "model/arenanamer.h"

#include <gtest/gtest.h>

TEST(ArenaNamer, SanitizeFollowsTheUnicodeDatabase)
{
    struct Row {
        const char *name;
        QString input;
        QString expected;
    };
    const Row rows[] = {
        {"trim, spaces, hyphens, dots", "  Intro Loop - FINAL.take3  ", "intro_loop_final_take3"},
        {"accented capitals", QString::fromUtf8("ÉTÉ 2024"), QString::fromUtf8("été_2024")},
        {"symbol", QString::fromUtf8("clip★"), "clip"},
        {"ellipsis alone", QString::fromUtf8("…"), ""},
        {"cjk and kana", QString::fromUtf8("開場 ムービー"), QString::fromUtf8("開場_ムービー")},
        {"combining mark kept", QString::fromUtf8("Cafe\u0301 Intro"),
         QString::fromUtf8("cafe\u0301_intro")},
        {"emoji", QString::fromUtf8("🎉party🎉"), "party"},
        {"arabic digits are numbers", QString::fromUtf8("مقطع ٣"), QString::fromUtf8("مقطع_٣")},
        {"control characters and tabs", "a\tb\nc\u0001d", "a_b_c_d"},
        {"line breaks at the ends", "\n\t clip \r\n", "clip"},
        {"full lower-casing", QString::fromUtf8("İstanbul"), QString::fromUtf8("i\u0307stanbul")},
        {"german sharp s stays", QString::fromUtf8("STRAẞE"), QString::fromUtf8("straße")},
        {"superscript is a number", QString::fromUtf8("x²"), QString::fromUtf8("x²")},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ArenaNamer::sanitize(row.input), row.expected);
    }
}

TEST(ArenaNamer, SanitizeCutsAtFortyEightGraphemes)
{
    const QString sixty = QString(60, u'a');
    EXPECT_EQ(ArenaNamer::sanitize(sixty), QString(48, u'a'));

    // The cut lands on "_" and keeps it.
    const QString underscoreAt48 = QString(47, u'b') + QStringLiteral(" ") + QString(10, u'c');
    EXPECT_EQ(ArenaNamer::sanitize(underscoreAt48), QString(47, u'b') + u'_');

    // A letter with a combining accent is one user-perceived character.
    const QString cut = ArenaNamer::sanitize(QString::fromUtf8("e\u0301").repeated(50));
    EXPECT_EQ(cut.size(), 96);
    EXPECT_TRUE(cut.endsWith(QString::fromUtf8("e\u0301")));

    // Characters outside the basic plane count once, not per UTF-16 unit.
    // U+10330, a letter.
    EXPECT_EQ(ArenaNamer::sanitize(QString::fromUtf8("𐌰").repeated(50)).size(), 96);
}

TEST(ArenaNamer, MakeName)
{
    struct Row {
        qint64 index;
        QString file;
        QString prefix;
        bool zeroPad;
        QString expected;
    };
    const Row rows[] = {
        {1, "intro.mov", "show", true, "01_show_intro"},
        {1, "intro.mov", "", false, "1_intro"},
        {7, "My Clip - Final Take 2.MOV", "", true, "07_my_clip_final_take_2"},
        {3, "intro.mov", "!!!", true, "03__intro"},
        {5, "%%%.mov", "", true, "05_clip"},
        {2, "archive.tar.gz", "", true, "02_archive_tar"},
        {4, "intro.mov", "   ", true, "04_intro"},
        {100, "intro.mov", "", true, "100_intro"},
        {12, "intro.mov", "", true, "12_intro"},
        {9, "noext", "Main Show", true, "09_main_show_noext"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.file.toStdString());
        EXPECT_EQ(ArenaNamer::makeName(row.index, row.file, row.prefix, row.zeroPad), row.expected);
    }
}

TEST(ArenaNamer, ReindexNumbersInListOrder)
{
    QList<MediaClip> clips{MediaClip::forFile("/a/b.mov"), MediaClip::forFile("/a/a.mov"),
                           MediaClip::forFile("/a/c d.png")};
    clips[0].cueIndex = 5;
    clips[1].cueIndex = 9;
    clips[2].cueIndex = 2;
    const QList<QUuid> ids{clips[0].id, clips[1].id, clips[2].id};
    ArenaNamer::reindex(clips, "gig", false);
    EXPECT_EQ((QList<qint64>{clips[0].cueIndex, clips[1].cueIndex, clips[2].cueIndex}),
              (QList<qint64>{1, 2, 3}));
    EXPECT_EQ(clips[0].arenaName, "1_gig_b");
    EXPECT_EQ(clips[2].arenaName, "3_gig_c_d");
    EXPECT_EQ((QList<QUuid>{clips[0].id, clips[1].id, clips[2].id}), ids);

    QList<MediaClip> none;
    ArenaNamer::reindex(none, "x", true);
    EXPECT_TRUE(none.isEmpty());
}
