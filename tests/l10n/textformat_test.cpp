#include "l10n/textformat.h"

#include <gtest/gtest.h>

TEST(TextFormat, FillsPlaceholdersInOrder)
{
    EXPECT_EQ(fillTemplate("Checking %d/%d: %@", {qint64(3), qint64(12), QString("clip.mov")}),
              "Checking 3/12: clip.mov");
    EXPECT_EQ(fillTemplate("Unusual aspect %.2f.", {1.3333}), "Unusual aspect 1.33.");
    EXPECT_EQ(fillTemplate("\u2248 %.0f Mbps", {187.6}), "\u2248 188 Mbps");
    EXPECT_EQ(fillTemplate("%.0f", {0.5}), "0"); // printf rounds the binary value to even
    EXPECT_EQ(fillTemplate("%.0f", {2.5}), "2");
    EXPECT_EQ(fillTemplate("%.2f", {-0.004}), "-0.00");
    EXPECT_EQ(fillTemplate("100%% sure, %d%%", {qint64(5)}), "100% sure, 5%");
    EXPECT_EQ(fillTemplate("%@ is heavy", {QString("%d")}), "%d is heavy"); // no re-expansion
}

TEST(TextFormat, ForgivesMismatchedArguments)
{
    EXPECT_EQ(fillTemplate("a %d b %@", {qint64(1)}), "a 1 b %@");
    EXPECT_EQ(fillTemplate("plain", {qint64(1), QString("x")}), "plain");
    EXPECT_EQ(fillTemplate("%d", {2.9}), "2");
    EXPECT_EQ(fillTemplate("%@", {qint64(42)}), "42");
    EXPECT_EQ(fillTemplate("%.1f", {qint64(3)}), "3.0");
    EXPECT_EQ(fillTemplate("trailing %", {qint64(1)}), "trailing %");
    EXPECT_EQ(fillTemplate("%x %.f", {qint64(1)}), "%x %.f");
}

TEST(TextFormat, PlaceholdersOf)
{
    EXPECT_EQ(placeholdersOf("Loaded %d clips (%d missing)"), (QStringList{"%d", "%d"}));
    EXPECT_EQ(placeholdersOf("%@ at %.2f and %.0f, 100%%"), (QStringList{"%@", "%.2f", "%.0f"}));
    EXPECT_TRUE(placeholdersOf("none").isEmpty());
}
