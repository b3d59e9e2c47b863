#include "VornicCore/base/ReplaceFile.h"

#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace vornic {
namespace {

std::span<const std::byte> asBytes(const std::string& text) {
    return std::as_bytes(std::span(text));
}

std::size_t entryCount(const ScratchFolder& folder) {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder.path()), {}));
}

TEST(ReplaceFile, makesANewFile) {
    const ScratchFolder folder;
    EXPECT_TRUE(replaceFile(folder / "a", asBytes("content")));
    EXPECT_EQ(readBytes(folder / "a"), "content");
    EXPECT_EQ(entryCount(folder), 1U);
}

TEST(ReplaceFile, anOpenReaderKeepsTheFormerContent) {
    const ScratchFolder folder;
    folder.write("a", "former");
    std::ifstream reader(folder / "a");
    ASSERT_TRUE(replaceFile(folder / "a", asBytes("newer")));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "former");
    EXPECT_EQ(readBytes(folder / "a"), "newer");
}

TEST(ReplaceFile, aFailureLeavesTheFormerFileAndNothingElse) {
    const ScratchFolder folder;
    // A folder that is not empty cannot be replaced by a file.
    folder.write("a/inside", "kept");
    EXPECT_FALSE(replaceFile(folder / "a", asBytes("content")));
    EXPECT_EQ(readBytes(folder / "a/inside"), "kept");
    EXPECT_EQ(entryCount(folder), 1U);
}

TEST(ReplaceFile, failsWithoutTheFolder) {
    const ScratchFolder folder;
    EXPECT_FALSE(replaceFile(folder / "missing/a", asBytes("content")));
}

TEST(ReplaceFile, saysWhatWentWrong) {
    const ScratchFolder folder;
    EXPECT_EQ(tryReplaceFile(folder / "a", asBytes("content")), std::error_code());
    EXPECT_EQ(tryReplaceFile(folder / "missing/a", asBytes("content")),
              std::errc::no_such_file_or_directory);
    // A file stands where a folder should.
    EXPECT_EQ(tryReplaceFile("/dev/full/a", asBytes("content")), std::errc::not_a_directory);
}

TEST(ReplaceFile, writersOfOneFileDoNotMix) {
    const ScratchFolder folder;
    const std::string first(100000, 'a');
    const std::string second(100000, 'b');
    {
        const auto writeOften = [&](const std::string& text) {
            for (int i = 0; i < 20; ++i) {
                EXPECT_TRUE(replaceFile(folder / "x", asBytes(text)));
            }
        };
        std::jthread one(writeOften, first);
        std::jthread two(writeOften, second);
    }
    const std::string seen = readBytes(folder / "x");
    EXPECT_TRUE(seen == first || seen == second);
    EXPECT_EQ(entryCount(folder), 1U);
}

} // namespace
} // namespace vornic
