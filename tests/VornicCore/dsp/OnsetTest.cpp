#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vornic {
namespace {

TEST(Onset, ofSilenceIsTheBeginning) {
    EXPECT_EQ(DSP::onset({}), 0);
    EXPECT_EQ(DSP::onset(Buffer(100)), 0);
}

TEST(Onset, isTheFirstSampleOfThreeTenthsOfThePeak) {
    Buffer sound(100);
    sound[20] = 0.29F;
    sound[40] = -0.31F;
    sound[60] = 1.0F;
    EXPECT_EQ(DSP::onset(sound), 40);
}

TEST(Onset, comparesInSinglePrecision) {
    Buffer sound(10);
    sound[5] = 1.0F;
    // 0.3F is above 0.3: in double precision it would still be reached, one step below it not.
    sound[2] = 0.3F;
    EXPECT_EQ(DSP::onset(sound), 2);
    sound[2] = std::nextafter(0.3F, 0.0F);
    EXPECT_EQ(DSP::onset(sound), 5);
    // A peak whose product rounds: equal to the rounded product still counts.
    sound[5] = 0.7F;
    sound[2] = 0.3F * 0.7F;
    EXPECT_EQ(DSP::onset(sound), 2);
}

TEST(Onset, passesOverWhatIsNoNumber) {
    Buffer sound(10, static_cast<float>(notANumber));
    EXPECT_EQ(DSP::onset(sound), 0);
    sound[4] = 0.5F;
    EXPECT_EQ(DSP::onset(sound), 4);
}

} // namespace
} // namespace vornic
