#include "VornicCore/base/ReadableText.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(ReadableText, leavesOrdinaryTextAlone) {
    for (const std::string text : {"", "Deep keys", "Größe ♪ 漢字 \xf0\x9f\x8e\xb9", "\xc2\xa0"}) {
        EXPECT_EQ(readable(text), text);
    }
}

TEST(ReadableText, hidesWhatWouldControlATerminal) {
    EXPECT_EQ(readable("a\x1b[2Jb\nc\r\x07\x7f"), "a?[2Jb?c???");
    EXPECT_EQ(readable("a\xc2\x9b"
                       "2Jb"),
              "a?2Jb")
        << "the two-byte escape";
    EXPECT_EQ(readable(std::string_view("a\0b", 3)), "a?b");
}

TEST(ReadableText, shortensBetweenCharacters) {
    EXPECT_EQ(readable("abcdef", 6), "abcdef");
    EXPECT_EQ(readable("abcdef", 5), "abcde...");
    EXPECT_EQ(readable("abc\xc3\xa4", 4), "abc...");
    EXPECT_EQ(readable("\x80\x80\x80", 1), "...");
    EXPECT_EQ(readable(std::string(1'000'000, 'x')).size(), 63U);
}

} // namespace
} // namespace vornic
