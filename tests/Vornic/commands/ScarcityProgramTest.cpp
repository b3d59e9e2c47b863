// The real program where the system gives it too little: it says so and ends with 1.

#include "tests/live/ChildProcess.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using testing::HasSubstr;

class ScarcityProgramTest : public testing::Test {
  protected:
    ScarcityProgramTest() { writeClickPack(scratch_ / "packs"); }

    /// What the program says that is started under `limit`, a setting of the shell's `ulimit`.
    std::string said(const std::string& limit, const std::vector<std::string>& arguments) {
        const std::string log = (scratch_ / "log").string();
        std::filesystem::remove(log);
        std::vector<std::string> command{"sh", "-c", "ulimit " + limit + " && exec \"$@\"", "sh",
                                         VORNIC_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        command.insert(command.end(), {"--packs", (scratch_ / "packs").string()});
        ChildProcess program(command,
                             {{"XDG_DATA_HOME", (scratch_ / "data").string()},
                              {"XDG_CONFIG_HOME", (scratch_ / "config").string()},
                              {"XDG_CACHE_HOME", (scratch_ / "cache").string()}},
                             log);
        EXPECT_EQ(program.wait(), 1) << limit << "\n" << readBytes(log);
        return readBytes(log);
    }
    std::vector<std::string> typing() const {
        return {"type", "--text", "Hello there.", "--out", (scratch_ / "typed.wav").string()};
    }
    std::filesystem::path file(const char* name) const { return scratch_ / name; }

    ScratchFolder scratch_;
};

TEST_F(ScarcityProgramTest, tooFewFilesAreSaid) {
    EXPECT_THAT(said("-n 16", typing()), HasSubstr("too few files"));
    EXPECT_THAT(said("-n 16", {}), HasSubstr("too few files"));
}

#ifndef __SANITIZE_ADDRESS__ // which maps terabytes itself
TEST_F(ScarcityProgramTest, tooLittleAddressSpaceIsSaid) {
    EXPECT_THAT(said("-v 500000", {}), HasSubstr("too little address space"));
}
#endif

TEST_F(ScarcityProgramTest, aFileThatMayNotGrowIsSaidAndLeavesNothing) {
    EXPECT_THAT(said("-f 8", typing()), HasSubstr("typed.wav"));
    EXPECT_FALSE(std::filesystem::exists(file("typed.wav")));
    EXPECT_THAT(said("-f 1", {"export", "spring", file("out.vornic").string()}),
                HasSubstr("File too large"));
    EXPECT_FALSE(std::filesystem::exists(file("out.vornic")));
}

} // namespace
} // namespace vornic
