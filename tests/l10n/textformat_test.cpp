#include "l10n/textformat.h"
#include "support/commalocale.h"

#include <QTemporaryDir>

#include <clocale>
#include <cstdio>

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

TEST(TextFormat, DecimalsKeepTheDotUnderACommaLocale)
{
    QTemporaryDir dir;
    const QString name = makeCommaLocale(dir.path());
    const QByteArray oldPath = qgetenv("LOCPATH");
    qputenv("LOCPATH", dir.path().toLocal8Bit());
    const std::string old = std::setlocale(LC_ALL, nullptr);
    if (name.isEmpty() || !std::setlocale(LC_ALL, name.toLatin1().constData()))
        GTEST_SKIP() << "no de_DE locale could be made (localedef, package locales)";
    char printed[16];
    std::snprintf(printed, sizeof printed, "%.2f", 1.5);
    const QString aspect = fillTemplate("Unusual aspect %.2f.", {1.3333});
    const QString rounded = fillTemplate("%.0f", {2.5});
    std::setlocale(LC_ALL, old.c_str());
    qputenv("LOCPATH", oldPath);
    EXPECT_STREQ(printed, "1,50"); // the locale is really in force
    EXPECT_EQ(aspect, "Unusual aspect 1.33.");
    EXPECT_EQ(rounded, "2");
}
