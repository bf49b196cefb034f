#include "session/watchintake.h"

#include <gtest/gtest.h>

namespace {

const FileStamp kPartial{100, 1};
const FileStamp kWhole{300, 2};
const FileStamp kGone{};

struct Step {
    qint64 atMs;
    FileStamp file; // the one file under test, as each look finds it
};

struct Case {
    const char *name;
    std::optional<FileStamp> probed; // set: the file is in the pack
    bool open;                       // the kernel says it is still open for writing
    std::vector<Step> looks;
    const char *outcome; // what the last look gives the file: "added", "changed", "gone" or ""
    qsizetype waiting;
};

} // namespace

TEST(WatchIntake, FilesTakenOnlyOnceTwoLooksFarEnoughApartAgree)
{
    const qint64 settle = WatchIntake::kSettleMs;
    const qint64 patience = WatchIntake::kOpenWriterPatienceMs;
    const QString f = QStringLiteral("/w/a.mov");
    const Case cases[] = {
        {"first sight waits", {}, false, {{0, kWhole}}, "", 1},
        {"just short of the settle time", {}, false, {{0, kWhole}, {settle - 1, kWhole}}, "", 1},
        {"settled", {}, false, {{0, kWhole}, {settle, kWhole}}, "added", 0},
        {"still growing", {}, false, {{0, kPartial}, {settle, kWhole}}, "", 1},
        {"grew, settled",
         {},
         false,
         {{0, kPartial}, {settle, kWhole}, {2 * settle, kWhole}},
         "added",
         0},
        {"open for writing", {}, true, {{0, kWhole}, {settle, kWhole}}, "", 1},
        {"open but untouched for long", {}, true, {{0, kWhole}, {patience, kWhole}}, "added", 0},
        {"vanished while waiting", {}, false, {{0, kPartial}, {settle, kGone}}, "", 0},
        {"pack file unchanged", kWhole, false, {{0, kWhole}, {settle, kWhole}}, "", 0},
        {"pack file replaced", kPartial, false, {{0, kWhole}, {settle, kWhole}}, "changed", 0},
        {"pack file being replaced", kPartial, false, {{0, kWhole}}, "", 1},
        {"pack file gone: no wait", kWhole, false, {{0, kGone}}, "gone", 0},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        WatchIntake intake;
        QHash<QString, FileStamp> probed;
        if (c.probed)
            probed.insert(f, *c.probed);
        WatchIntake::Outcome outcome;
        for (const Step &step : c.looks) {
            WatchIntake::Look look;
            look.atMs = step.atMs;
            if (step.file.exists())
                look.found.insert(f, step.file);
            if (c.probed)
                look.pack.insert(f, step.file);
            outcome = intake.take(look, probed, [&](const QString &) { return c.open; });
        }
        const auto only = [&](const char *kind) {
            return QLatin1String(c.outcome) == QLatin1String(kind) ? QStringList{f} : QStringList{};
        };
        EXPECT_EQ(outcome.added, only("added"));
        EXPECT_EQ(outcome.changed, only("changed"));
        EXPECT_EQ(outcome.gone, only("gone"));
        EXPECT_EQ(intake.waitingCount(), c.waiting);
    }
}
