// Files that somebody made to do harm, or that a broken disk has left.

#include "VornicCore/board/BoardFile.h"
#include "tests/VornicCore/board/RandomBoard.h"
#include "tests/VornicCore/render/MapSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <functional>

namespace vornic {
namespace {

using testing::HasSubstr;

std::string goodFile() {
    return BoardFile::encode(RandomBoard(3).board(), std::vector<std::string>{"user/a"},
                             MapSource({{"user/a", {0.5F, -0.5F}}}));
}

std::string reasonAgainst(std::string_view data) {
    try {
        BoardFile::decode(data);
    } catch (const DecodeError& error) {
        return error.what();
    }
    return {};
}

/// `text` with the first `from` in it replaced.
std::string with(std::string text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(HostileBoardFile, everyTruncationFails) {
    const std::string good = goodFile();
    ASSERT_EQ(reasonAgainst(good), "");
    for (std::size_t length = 0; length < good.size(); ++length) {
        ASSERT_NE(reasonAgainst(std::string_view(good).substr(0, length)), "") << length;
    }
}

TEST(HostileBoardFile, aDocumentOfAMillionLevelsFails) {
    const std::size_t levels = 1'000'000;
    EXPECT_THAT(reasonAgainst(std::string(levels, '[')), HasSubstr("levels deep"));
    const std::string deep =
        R"({"x": )" + std::string(levels, '[') + std::string(levels, ']') + ",";
    EXPECT_THAT(reasonAgainst(with(goodFile(), "{", deep)), HasSubstr("levels deep"));
}

TEST(HostileBoardFile, aMemberThatOccursTwiceFails) {
    const std::string good = goodFile();
    EXPECT_THAT(reasonAgainst(with(good, R"("format")", R"("version": 1, "format")")),
                HasSubstr("version: this member occurs twice"));
    EXPECT_THAT(reasonAgainst(with(good, R"("user/a")", R"("user/a": "", "user/a")")),
                HasSubstr("samples.user/a: this member occurs twice"));
    EXPECT_THAT(reasonAgainst(with(good, R"("colorHex")", R"("colorHex": "", "colorHex")")),
                HasSubstr("this member occurs twice"));
}

TEST(HostileBoardFile, textThatIsNotUtf8Fails) {
    for (const std::string bad : {"\xff", "\xc3", "\xed\xa0\x80", "\xc0\x80", "\xf5\x80\x80\x80"}) {
        EXPECT_THAT(reasonAgainst(with(goodFile(), R"("user/a")", "\"user/" + bad + "\"")),
                    HasSubstr("not valid JSON"));
    }
    EXPECT_NE(reasonAgainst("\xEF\xBB\xBF" + goodFile()), "") << "a byte order mark";
    std::string wide;
    for (const char each : goodFile()) {
        wide += each;
        wide += '\0';
    }
    EXPECT_NE(reasonAgainst(wide), "") << "UTF-16";
}

TEST(HostileBoardFile, whatIsNoNumberFails) {
    const std::string good = goodFile();
    for (const std::string number : {"NaN", "Infinity", "1e400", "-1e400", "0x10", "01", "+1"}) {
        EXPECT_NE(reasonAgainst(with(good, R"("version": 1)", R"("version": )" + number)), "")
            << number;
    }
}

TEST(HostileBoardFile, otherDocumentsFail) {
    for (const std::string text : {"", " ", "null", "7", "[]", "{}", "\"vornic-board\"", "RIFF",
                                   R"({"format": "vornic-board"})"}) {
        EXPECT_NE(reasonAgainst(text), "") << text;
    }
}

TEST(HostileBoardFile, whatFollowsTheDocumentFails) {
    EXPECT_NE(reasonAgainst(goodFile() + "{}"), "");
    EXPECT_NE(reasonAgainst(goodFile() + std::string(1, '\0')), "");
}

TEST(HostileBoardFile, aFileBeyondTheLimitFailsUnread) {
    std::string good = goodFile();
    good.resize(BoardFile::largest, ' ');
    EXPECT_EQ(reasonAgainst(good), "") << "blanks at the end are harmless";
    good += ' ';
    EXPECT_EQ(reasonAgainst(good), "the document: larger than 67108864 bytes");
}

TEST(HostileBoardFile, moreRecordingsThanAFileCanHoldAreRefused) {
    MapSource source({});
    std::vector<std::string> ids;
    for (int i = 0; i < 3; ++i) {
        ids.push_back("user/" + std::to_string(i));
        source.recordings[ids.back()] = std::vector<float>(10'000'000);
    }
    try {
        BoardFile::encode(Board(), ids, source);
        ADD_FAILURE();
    } catch (const EncodeError& error) {
        EXPECT_STREQ(error.what(), "samples: larger than 67108864 bytes");
    }
}

/// The most memory that this process ever had, in bytes.
std::size_t peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

/// A file of the largest size, most of it a repetition in the place of the recordings.
std::string largestFile(const std::function<std::string(std::size_t)>& piece) {
    std::string file = with(goodFile(), R"("user/a": "/z8BwA==")", "@");
    const std::size_t place = file.find('@');
    std::string filling;
    filling.reserve(BoardFile::largest);
    for (std::size_t number = 0;; ++number) {
        const std::string next = piece(number);
        if (file.size() + filling.size() + next.size() > BoardFile::largest) {
            break;
        }
        filling += next;
    }
    filling.pop_back();
    return file.replace(place, 1, filling);
}

/// The peak after reading a file of such pieces.
std::size_t memoryFor(const std::function<std::string(std::size_t)>& piece) {
    reasonAgainst(largestFile(piece));
    return peakMemory();
}

// Each in a test of its own, since a peak never comes down.
#ifdef __SANITIZE_ADDRESS__
// The sanitizer keeps what was freed for a while.
constexpr std::size_t bound = 30 * BoardFile::largest;
#else
constexpr std::size_t bound = 10 * BoardFile::largest;
#endif

TEST(HostileBoardFile, millionsOfRecordingsStayWithinBoundedMemory) {
    EXPECT_LT(
        memoryFor([](std::size_t number) { return "\"" + std::to_string(number) + "\":\"\","; }),
        bound);
}

TEST(HostileBoardFile, longRecordingsStayWithinBoundedMemory) {
    EXPECT_LT(memoryFor([](std::size_t number) {
                  return "\"" + std::to_string(number) + "\":\"" + std::string(4'000'000, 'A') +
                         "\",";
              }),
              bound);
}

TEST(HostileBoardFile, millionsOfListsStayWithinBoundedMemory) {
    EXPECT_LT(
        memoryFor([](std::size_t number) { return "\"" + std::to_string(number) + "\":[[]],"; }),
        bound);
}

} // namespace
} // namespace vornic
