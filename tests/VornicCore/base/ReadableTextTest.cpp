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

TEST(ReadableText, hidesWhatTurnsTheDirectionOfWriting) {
    EXPECT_EQ(readable("a\u202egnp.exe\u202c\u2066b\u2069\u200f\u061c"), "a?gnp.exe??b???");
    EXPECT_EQ(readable("a\u2028b\u2029c"), "a?b?c");
    EXPECT_EQ(readable("שלום \u200b\u200d–…‰"), "שלום \u200b\u200d–…‰") << "scripts that run so do";
}

TEST(PlainlyVisible, namesWhatIsNotSeen) {
    EXPECT_EQ(plainlyVisible("Größe ♪ 漢字 <b>&amp;</b>"), "Größe ♪ 漢字 <b>&amp;</b>");
    EXPECT_EQ(plainlyVisible("a\u202eb\u2066c\u061cd"), "a[U+202E]b[U+2066]c[U+061C]d");
    EXPECT_EQ(plainlyVisible("a\x1b[2J\xc2\x9b\x7f"), "a[U+001B][2J[U+009B][U+007F]");
    EXPECT_EQ(plainlyVisible(std::string_view("\0", 1)), "[U+0000]");
    EXPECT_EQ(plainlyVisible("\xe2\x80"), "\xe2\x80") << "a character that is cut off";
}

TEST(PlainlyVisible, keepsLinesWhereTheyAreWanted) {
    EXPECT_EQ(plainlyVisible("a\nb\u2028"), "a[U+000A]b[U+2028]");
    EXPECT_EQ(plainlyVisible("a\nb\r", Lines::kept), "a\nb[U+000D]");
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
