// When frames may start, told by the reckoning alone: the moments are the test's.
#include "Platform/Linux/Direct3D/FrameRhythm.h"

#include <gtest/gtest.h>

namespace {

using Platform::Direct3D::FrameRhythm;
using namespace std::chrono_literals;
using Moment = FrameRhythm::Moment;

constexpr auto period = 100ms;
constexpr Moment start = Moment{} + 1h;

class FrameRhythmTest : public testing::Test {
protected:
    FrameRhythmTest() {
        rhythm.SetPeriod(period, start);
        rhythm.Taken(start);
    }
    /// A frame is shown at a moment and the next one begins with its signal.
    Moment NextAfter(Moment shown) {
        EXPECT_TRUE(rhythm.FrameShown(shown));
        const Moment next = rhythm.Next();
        EXPECT_GE(next, shown);
        rhythm.Taken(next);
        return next;
    }

    FrameRhythm rhythm{start};
};

TEST_F(FrameRhythmTest, WithoutInputOneFrameComesEachPeriod) {
    Moment now = start;
    for (int i = 1; i < 20; ++i) {
        now = NextAfter(now + 30ms);
        EXPECT_EQ(now, start + i * period);
    }
}

TEST_F(FrameRhythmTest, AfterInputTheNextTwoSignalsDontWaitForTheirPeriod) {
    rhythm.FrameShown(start + 30ms);
    EXPECT_TRUE(rhythm.Hurry(start + 40ms));
    EXPECT_EQ(rhythm.Next(), start + 40ms);
    rhythm.Taken(start + 40ms);
    EXPECT_EQ(NextAfter(start + 70ms), start + 70ms);
    EXPECT_GT(NextAfter(start + 100ms), start + 100ms) << "the third one does";
}

TEST_F(FrameRhythmTest, InputWhileAFrameIsBeingDrawnHurriesTheTwoAfterIt) {
    EXPECT_FALSE(rhythm.Hurry(start + 10ms)) << "no signal is pending";
    EXPECT_EQ(NextAfter(start + 30ms), start + 30ms);
    EXPECT_EQ(NextAfter(start + 60ms), start + 60ms);
    EXPECT_GT(NextAfter(start + 90ms), start + 90ms);
}

TEST_F(FrameRhythmTest, AHurryWithinTwoPeriodsOfAnotherMakesNoFrameMore) {
    rhythm.Hurry(start);
    NextAfter(start);
    NextAfter(start);
    rhythm.Hurry(start + 10ms);
    rhythm.FrameShown(start + 10ms);
    EXPECT_EQ(rhythm.Next(), start + period) << "the third signal, two periods ahead of its place";
}

TEST_F(FrameRhythmTest, TwoPeriodsAfterAHurryAnotherHasItsFullEffect) {
    rhythm.Hurry(start);
    NextAfter(start);
    NextAfter(start);
    const Moment later = start + 2 * period;
    rhythm.Hurry(later);
    EXPECT_EQ(NextAfter(later), later);
    EXPECT_EQ(NextAfter(later + 1ms), later + 1ms);
    EXPECT_GT(NextAfter(later + 2ms), later + 2ms);
}

TEST_F(FrameRhythmTest, InputWithoutEndMakesNoMoreFramesThanTheDisplayShows) {
    constexpr int periods = 500;
    int frames = 0;
    for (Moment now = start; now < start + periods * period; now += 1ms) {
        if ((now - start) % 8ms == 0ms) rhythm.Hurry(now);
        rhythm.FrameShown(now);  // a frame takes no time at all
        if (rhythm.Next() > now) continue;
        rhythm.Taken(now);
        ++frames;
    }
    EXPECT_LE(frames, periods + 2);
    EXPECT_GE(frames, periods - 1) << "and no fewer";
}

TEST_F(FrameRhythmTest, FramesThatCameEarlyAreMadeUpForByLongerPeriodsAndThenTheRhythmIsTheOldOne) {
    rhythm.Hurry(start);
    NextAfter(start);
    Moment now = NextAfter(start);
    for (int i = 3; i < 20; ++i) {
        const Moment next = NextAfter(now);
        EXPECT_GE(next - now, period);
        EXPECT_LE(next - now, period * 5 / 4);
        EXPECT_LE(next, start + i * period);
        now = next;
    }
    EXPECT_EQ(now, start + 19 * period);
}

TEST_F(FrameRhythmTest, AHurryDoesNotDoubleASignalThatLiesThere) {
    rhythm.FrameShown(start);
    const Moment next = rhythm.Next();
    EXPECT_FALSE(rhythm.Hurry(next + 5ms));
    EXPECT_EQ(rhythm.Next(), next);
    EXPECT_FALSE(rhythm.FrameShown(next + 6ms));
}

TEST_F(FrameRhythmTest, ADeviceThatTakesLongerThanAPeriodIsNeverHeldBack) {
    Moment now = start;
    for (int i = 0; i < 10; ++i) {
        const Moment shown = now + period + 20ms;
        if (i == 4) rhythm.Hurry(shown);
        now = NextAfter(shown);
        EXPECT_EQ(now, shown);
    }
}

TEST_F(FrameRhythmTest, AWindowThatGoesOutOfSightWithAnInputIsInNoHurry) {
    rhythm.Hurry(start);
    rhythm.SetPeriod(3s, start);
    EXPECT_EQ(NextAfter(start), start + 3s);
}

TEST_F(FrameRhythmTest, AShorterPeriodForgivesWhatCameEarlyInALongOne) {
    rhythm.SetPeriod(3s, start);
    rhythm.Hurry(start);
    NextAfter(start);
    NextAfter(start);
    rhythm.FrameShown(start);
    EXPECT_GE(rhythm.Next(), start + 3s);
    EXPECT_TRUE(rhythm.SetPeriod(period, start + 10ms));
    EXPECT_EQ(rhythm.Next(), start + period);
}

TEST_F(FrameRhythmTest, WithoutInputNoFrameIsOutdated) {
    EXPECT_FALSE(rhythm.IsOutdated());
    NextAfter(start);
    EXPECT_FALSE(rhythm.IsOutdated());
}

TEST_F(FrameRhythmTest, TheFrameInWhichInputComesAndTheNextAreOutdatedAndItsAnswerIsNot) {
    rhythm.Hurry(start + 10ms);
    EXPECT_TRUE(rhythm.IsOutdated());
    NextAfter(start + 20ms);
    EXPECT_TRUE(rhythm.IsOutdated()) << "the input is handled in this one";
    NextAfter(start + 30ms);
    EXPECT_FALSE(rhythm.IsOutdated());
    NextAfter(start + 40ms);
    EXPECT_FALSE(rhythm.IsOutdated());
}

TEST_F(FrameRhythmTest, InputBetweenTwoFramesOutdatesTheOneThatHandlesIt) {
    rhythm.FrameShown(start + 10ms);
    rhythm.Hurry(start + 20ms);
    rhythm.Taken(start + 20ms);
    EXPECT_TRUE(rhythm.IsOutdated());
    NextAfter(start + 30ms);
    EXPECT_FALSE(rhythm.IsOutdated());
}

TEST_F(FrameRhythmTest, AnAnswerIsNeverOutdatedWhateverComesMeanwhile) {
    rhythm.Hurry(start);
    NextAfter(start);
    NextAfter(start);
    rhythm.Hurry(start + 1ms);
    EXPECT_FALSE(rhythm.IsOutdated());
    NextAfter(start + 2ms);
    EXPECT_TRUE(rhythm.IsOutdated()) << "that is for the next answer";
}

TEST_F(FrameRhythmTest, OfFramesUnderInputWithoutEndEverySecondIsAnAnswer) {
    Moment now = start;
    int outdated = 0;
    for (int i = 0; i < 100; ++i) {
        rhythm.Hurry(now);
        rhythm.Hurry(now + 1ms);
        if (rhythm.IsOutdated()) ++outdated;
        now = NextAfter(now + 2ms);
    }
    EXPECT_NEAR(outdated, 50, 1);
}

TEST_F(FrameRhythmTest, AFrameThatWasGivenUpLeavesItsPlaceToTheNext) {
    EXPECT_TRUE(rhythm.FrameGivenUp(start + 10ms));
    EXPECT_EQ(rhythm.Next(), start + 10ms);
    EXPECT_FALSE(rhythm.FrameGivenUp(start + 11ms)) << "its signal is pending";
    EXPECT_FALSE(rhythm.FrameShown(start + 11ms));
    rhythm.Taken(start + 12ms);
    EXPECT_EQ(NextAfter(start + 30ms), start + period) << "as if it had never been begun";
}

TEST_F(FrameRhythmTest, FramesGivenUpUnderInputWithoutEndCostTheDisplayNone) {
    constexpr int periods = 500;
    int shown = 0;
    for (Moment now = start; now < start + periods * period; now += 1ms) {
        if ((now - start) % 8ms == 0ms) rhythm.Hurry(now);
        if (rhythm.IsOutdated()) {
            rhythm.FrameGivenUp(now);
        } else if (rhythm.FrameShown(now)) {
            ++shown;
        }
        if (rhythm.Next() <= now) rhythm.Taken(now);
    }
    EXPECT_LE(shown, periods + 2);
    EXPECT_GE(shown, periods - 2);
}

TEST_F(FrameRhythmTest, AGivenUpFrameThatIsShownAllTheSameTakesItsPlace) {
    rhythm.FrameGivenUp(start + 10ms);
    EXPECT_TRUE(rhythm.GivenUpFrameShown(start + 30ms));
    EXPECT_EQ(rhythm.Next(), start + period);
    rhythm.Taken(start + period);
    EXPECT_FALSE(rhythm.GivenUpFrameShown(start + period)) << "the next one has begun";
}

TEST_F(FrameRhythmTest, AFrameThatDidNotBeginWithASignalIsNeverOutdated) {
    rhythm.FrameShown(start + 10ms);
    rhythm.Hurry(start + 20ms);
    EXPECT_FALSE(rhythm.IsOutdated());
}

TEST_F(FrameRhythmTest, AWindowThatGoesOutOfSightHasNoAnswerToGive) {
    rhythm.Hurry(start);
    rhythm.SetPeriod(3s, start);
    EXPECT_FALSE(rhythm.IsOutdated());
}

}  // namespace
