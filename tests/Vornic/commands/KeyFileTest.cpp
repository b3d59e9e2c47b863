#include "Vornic/commands/KeyFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string messageFor(std::string_view text) {
    try {
        parseKeyFile(text);
    } catch (const KeyFileError& error) {
        return error.what();
    }
    return "no error";
}

TEST(KeyFile, readsOneEventALine) {
    EXPECT_THAT(parseKeyFile("0 down 49\n85.5\tup  49\n"),
                ElementsAre(KeyEvent{0.0, 49, true}, KeyEvent{85.5, 49, false}));
}

TEST(KeyFile, skipsCommentsAndEmptyLines) {
    EXPECT_THAT(parseKeyFile("# a phrase\n\n  \n10 down 0 # the letter a\r\n20 up 0"),
                ElementsAre(KeyEvent{10.0, 0, true}, KeyEvent{20.0, 0, false}));
}

TEST(KeyFile, ordersByTimeAndKeepsTheOrderOfLinesAtTheSameTime) {
    EXPECT_THAT(
        parseKeyFile("30 up 1\n10 down 1\n30 down 2\n"),
        ElementsAre(KeyEvent{10.0, 1, true}, KeyEvent{30.0, 1, false}, KeyEvent{30.0, 2, true}));
}

TEST(KeyFile, acceptsKeyCodesOutsideTheTable) {
    EXPECT_THAT(parseKeyFile("0 down -7"), ElementsAre(KeyEvent{0.0, -7, true}));
}

TEST(KeyFile, anEmptyFileHasNoEvents) {
    EXPECT_TRUE(parseKeyFile("").empty());
}

TEST(KeyFile, namesTheBadLine) {
    EXPECT_THAT(messageFor("0 down 49\n# fine\n5 sideways 49\n"), HasSubstr("line 3"));
    EXPECT_THAT(messageFor("soon down 49"), HasSubstr("line 1: \"soon\""));
    EXPECT_THAT(messageFor("0 down"), HasSubstr("line 1: expected"));
    EXPECT_THAT(messageFor("0 down 49 50"), HasSubstr("line 1: expected"));
    EXPECT_THAT(messageFor("0 down 4x9"), HasSubstr("\"4x9\" is no key code"));
    EXPECT_THAT(messageFor("\n0 down 99999999999999999999"), HasSubstr("line 2"));
}

TEST(KeyFile, refusesTimesThatAreNone) {
    for (const char* const line : {"-1 down 0", "nan down 0", "inf down 0", "1e999 down 0"}) {
        EXPECT_THAT(messageFor(line), HasSubstr("line 1")) << line;
    }
}

TEST(KeyFile, refusesTimesBeyondAnHour) {
    EXPECT_EQ(parseKeyFile("3600000 down 0").size(), 1u);
    EXPECT_THAT(messageFor("3600001 down 0"), HasSubstr("one hour"));
}

} // namespace
} // namespace vornic
