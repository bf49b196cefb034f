#include "l10n/l10n.h"
#include "session/packstatus.h"

#include <QSet>

#include <gtest/gtest.h>

TEST(PackStatus, EnglishTexts)
{
    const L10n en(AppLanguage::english);
    const std::pair<PackStatus, const char *> rows[] = {
        {PackStatus::checking(3, 12, "clip.mov"), "Checking 3/12: clip.mov"},
        {PackStatus::projectLoaded(10, 2), "Loaded 10 clips (2 missing)"},
        {PackStatus::ready(4), "Ready: 4 clips"},
        {PackStatus::saved("Cuebox_2026-11-16T21-42-48Z"),
         "Pack saved: Cuebox_2026-11-16T21-42-48Z"},
        {PackStatus::converting(1, 2, "a.mov"), "Converting 1/2: a.mov"},
        {PackStatus::converted(5), "Converted 5 files"},
        {PackStatus::projectSaved("Show.cuebox.json"), "Project saved: Show.cuebox.json"},
        {PackStatus::watching("Drop"), "Watching: Drop"},
        {PackStatus::exporting(2, 9, "02_a.mov"), "Exporting 2/9: 02_a.mov"},
        {PackStatus::scanning(), "Scanning…"},
        {PackStatus::empty(), "No media files found"},
        {PackStatus::renamed(), "Names updated"},
        {PackStatus::addFirst(), "Add clips first"},
        {PackStatus::noProblems(), "No yellow/red clips to convert"},
        {PackStatus::noAudioToStrip(), "No clips with audio"},
        {PackStatus::idle(), ""},
        {PackStatus::error("Cancelled"), "Cancelled"},
    };
    for (const auto &[status, expected] : rows)
        EXPECT_EQ(status.text(en), QString::fromUtf8(expected));
}

TEST(PackStatus, SameValueRendersInEveryLanguage)
{
    const PackStatus status = PackStatus::checking(3, 12, "clip.mov");
    const PackStatus failure = PackStatus::error("Disk full: 02_x.mov");
    QSet<QString> texts;
    for (AppLanguage language : kAllLanguages) {
        const L10n strings(language);
        const QString text = status.text(strings);
        EXPECT_TRUE(text.contains("3") && text.contains("12") && text.contains("clip.mov"))
            << qPrintable(text);
        texts.insert(text);
        EXPECT_EQ(PackStatus::idle().text(strings), "");
        EXPECT_EQ(failure.text(strings), "Disk full: 02_x.mov");
    }
    EXPECT_EQ(texts.size(), 6); // each language has its own wording
    EXPECT_EQ(PackStatus::ready(4).text(L10n(AppLanguage::german)),
              L10n(AppLanguage::german).format(u"scan.ready", {qint64(4)}));
}
