#include "Vornic/linux/keys/RepeatedKeys.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr std::uint32_t keyboard = 1;
constexpr std::uint32_t remapper = 2;
constexpr std::uint32_t secondRemapper = 3;
constexpr std::uint32_t codeA = 30;
constexpr std::uint32_t codeS = 31;
constexpr std::uint64_t start = 5'000'000'000;

struct RepeatedKeysTest : ::testing::Test {
    bool real(std::uint32_t code, bool down, std::uint64_t nanos) {
        return repeated.isRepetition(keyboard, false, code, down, nanos);
    }
    bool virtualKey(std::uint32_t code, bool down, std::uint64_t nanos,
                    std::uint32_t from = remapper) {
        return repeated.isRepetition(from, true, code, down, nanos);
    }
    RepeatedKeys repeated;
};

TEST_F(RepeatedKeysTest, aVirtualKeyboardRepeatsAfterTheOriginal) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_TRUE(virtualKey(codeA, true, start + 1000));
}

TEST_F(RepeatedKeysTest, aRealKeyboardNeverRepeats) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_FALSE(repeated.isRepetition(7, false, codeA, true, start + 1000));
    EXPECT_FALSE(virtualKey(codeS, true, start + 2000));
    EXPECT_FALSE(real(codeS, true, start + 3000));
}

TEST_F(RepeatedKeysTest, anotherKeyOrDirectionIsNoRepetition) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_FALSE(virtualKey(codeS, true, start + 1000));
    EXPECT_FALSE(virtualKey(codeA, false, start + 1000));
}

TEST_F(RepeatedKeysTest, eachEventIsRepeatedOnce) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_TRUE(virtualKey(codeA, true, start + 1000));
    EXPECT_FALSE(virtualKey(codeA, true, start + 2000));
}

TEST_F(RepeatedKeysTest, twoPressesAreRepeatedTwice) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_FALSE(real(codeA, true, start + 1000));
    EXPECT_TRUE(virtualKey(codeA, true, start + 2000));
    EXPECT_TRUE(virtualKey(codeA, true, start + 3000));
    EXPECT_FALSE(virtualKey(codeA, true, start + 4000));
}

TEST_F(RepeatedKeysTest, twoProgramsMayRepeatTheSameKey) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_TRUE(virtualKey(codeA, true, start + 1000));
    EXPECT_TRUE(virtualKey(codeA, true, start + 2000, secondRemapper));
}

TEST_F(RepeatedKeysTest, aProgramMayRepeatAnother) {
    EXPECT_FALSE(virtualKey(codeA, true, start));
    EXPECT_TRUE(virtualKey(codeA, true, start + 1000, secondRemapper));
}

TEST_F(RepeatedKeysTest, aProgramDoesNotRepeatItself) {
    EXPECT_FALSE(virtualKey(codeA, true, start));
    EXPECT_FALSE(virtualKey(codeA, true, start + 1000));
}

TEST_F(RepeatedKeysTest, theWindowIsClosed) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_TRUE(virtualKey(codeA, true, start + RepeatedKeys::windowNanos));
    EXPECT_FALSE(real(codeS, true, start));
    EXPECT_FALSE(virtualKey(codeS, true, start + RepeatedKeys::windowNanos + 1));
}

TEST_F(RepeatedKeysTest, nothingRepeatsWhatComesLater) {
    EXPECT_FALSE(real(codeA, true, start));
    EXPECT_FALSE(virtualKey(codeA, true, start - 1));
}

TEST_F(RepeatedKeysTest, aResetForgetsOriginals) {
    EXPECT_FALSE(real(codeA, true, start));
    repeated.reset();
    EXPECT_FALSE(virtualKey(codeA, true, start + 1000));
}

} // namespace
} // namespace vornic
