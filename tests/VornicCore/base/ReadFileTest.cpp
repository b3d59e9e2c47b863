#include "VornicCore/base/ReadFile.h"

#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

namespace vornic {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

/// What is said about a file that cannot be read; absent when it can.
std::optional<std::string> refusal(const std::filesystem::path& file, std::uintmax_t largest = 10) {
    try {
        readTextFile(file, largest);
        return std::nullopt;
    } catch (const ReadError& error) {
        return error.what();
    }
}

TEST(ReadFileTest, readsWhatIsThereUpToTheLimit) {
    const ScratchFolder folder;
    EXPECT_EQ(readTextFile(folder.write("ten", "0123456789"), 10), "0123456789");
    EXPECT_EQ(readTextFile(folder.write("none", ""), 0), "");
    EXPECT_THAT(*refusal(folder.write("eleven", "0123456789x")),
                AllOf(HasSubstr((folder / "eleven").string()), HasSubstr("larger than 10 bytes")));
}

TEST(ReadFileTest, aNamedPipeIsRefusedWithoutWaitingForAWriter) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder / "pipe", folder / "link");
    EXPECT_THAT(*refusal(folder / "pipe"), HasSubstr("it is no regular file"));
    EXPECT_THAT(*refusal(folder / "link"), HasSubstr("it is no regular file"));
}

TEST(ReadFileTest, devicesThatNeverEndAndFoldersAreRefused) {
    const ScratchFolder folder;
    EXPECT_THAT(*refusal("/dev/zero"), HasSubstr("it is no regular file"));
    EXPECT_THAT(*refusal(folder.path()), HasSubstr("it is a folder"));
}

TEST(ReadFileTest, whatTheSystemRefusesHasItsCode) {
    const ScratchFolder folder;
    try {
        readTextFile(folder / "lost", 10);
        FAIL();
    } catch (const ReadError& error) {
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
        EXPECT_THAT(error.what(), HasSubstr((folder / "lost").string()));
    }
}

TEST(ReadFileTest, linksAreFollowed) {
    const ScratchFolder folder;
    std::filesystem::create_symlink(folder.write("real", "text"), folder / "link");
    EXPECT_EQ(readTextFile(folder / "link", 10), "text");
}

TEST(ReadFileTest, theDescriptorEndsWithTheFile) {
    const ScratchFolder folder;
    const std::filesystem::path path = folder.write("real", "text");
    int descriptor = -1;
    {
        const FileToRead file(path, 10);
        descriptor = file.descriptor();
        EXPECT_EQ(file.size(), 4U);
        EXPECT_GE(lseek(descriptor, 0, SEEK_CUR), 0);
    }
    EXPECT_LT(lseek(descriptor, 0, SEEK_CUR), 0);
}

} // namespace
} // namespace vornic
