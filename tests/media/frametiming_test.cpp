#include "media/ffmpeg/frametiming.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

// Start times of `count` frames `step` ticks apart, each rounded to a whole tick.
std::vector<int64_t> beat(int count, double step, int64_t start = 0)
{
    std::vector<int64_t> times;
    for (int i = 0; i < count; ++i)
        times.push_back(start + std::llround(i * step));
    return times;
}

} // namespace

TEST(FrameTiming, ConstantRatesInAnyClockAreNeverVariable)
{
    struct Row {
        const char *name;
        std::vector<int64_t> times;
        double tick;
        bool variable;
        double average;
    };
    std::vector<int64_t> reordered = beat(50, 512); // B-frames arrive before the pictures they
    std::swap(reordered[3], reordered[4]);          // follow in time
    std::vector<int64_t> repeated = beat(50, 1001, 7000);
    repeated.insert(repeated.begin() + 10, repeated[10]);
    std::vector<int64_t> oneGap = beat(300, 40); // a dropped frame in 12 s: 1 of 299
    for (size_t i = 150; i < oneGap.size(); ++i)
        oneGap[i] += 40;
    std::vector<int64_t> alternating; // 20 and 60 ms in turn: 25 fps on average
    for (int i = 0; i < 50; ++i)
        alternating.push_back(i * 40 - (i % 2) * 20);
    std::vector<int64_t> ramp; // a screen recording slowing down from 60 to 20 fps
    for (int i = 0, t = 0; i < 60; ++i, t += 17 + i / 2)
        ramp.push_back(t);
    const Row rows[] = {
        {"25 fps, 1/12800", beat(50, 512), 1.0 / 12800, false, 25},
        {"29.97 fps in milliseconds", beat(90, 1001.0 / 30), 0.001, false, 29.97},
        {"23.976 fps, 1/90000", beat(48, 3753.75), 1.0 / 90000, false, 23.976},
        {"decoding order", reordered, 1.0 / 12800, false, 25},
        {"repeated timestamp", repeated, 1.0 / 30000, false, 29.97},
        {"one dropped frame", oneGap, 0.001, false, 299.0 / 12.0},
        {"20 and 60 ms", alternating, 0.001, true, 49.0 / 1.94},
        {"slowing screen recording", ramp, 0.001, true, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const FrameTiming::Verdict verdict = FrameTiming::judge(row.times, row.tick);
        EXPECT_TRUE(verdict.judged);
        EXPECT_EQ(verdict.variable, row.variable);
        if (row.average > 0) {
            EXPECT_NEAR(verdict.averageRate, row.average, row.average * 0.005);
        }
    }
}

TEST(FrameTiming, AverageOverTheWholeTrackWhenItsLengthIsKnown)
{
    std::vector<int64_t> alternating;
    for (int i = 0; i < 50; ++i)
        alternating.push_back(i * 40 - (i % 2) * 20);
    EXPECT_DOUBLE_EQ(FrameTiming::judge(alternating, 0.001, 1.96).averageRate, 50 / 1.96);
}

TEST(FrameTiming, TooFewOrHostileTimesNeverCrashOrFlag)
{
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
    EXPECT_FALSE(FrameTiming::judge({}, 0.001).judged);
    EXPECT_FALSE(FrameTiming::judge({0, 40}, 0.001).judged);
    EXPECT_FALSE(FrameTiming::judge({5, 5, 5, 5}, 0.001).judged); // one picture, repeated
    EXPECT_FALSE(FrameTiming::judge(beat(10, 40), 0).judged);     // no clock
    const FrameTiming::Verdict extremes = FrameTiming::judge({kMax, kMin + 1, 0, kMin, kMax}, 1);
    EXPECT_TRUE(extremes.judged);
    EXPECT_TRUE(std::isfinite(extremes.averageRate));
}
