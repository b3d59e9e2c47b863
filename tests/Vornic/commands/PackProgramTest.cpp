// `vornic import` with packs of other programs, in the real program.

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/live/ChildProcess.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::SizeIs;

class PackProgramTest : public testing::Test {
  protected:
    PackProgramTest() {
        fs::create_directories(scratch_ / "tmp");
        writeClickPack(scratch_ / "packs");
        writePack("theirs/one", "One");
    }

    void writePack(const std::string& place, const std::string& name) const {
        std::vector<float> stroke(9600);
        for (std::size_t at = 96; at < stroke.size(); ++at) {
            stroke[at] = 0.5F * std::exp(-static_cast<float>(at) / 500.0F) *
                         std::sin(static_cast<float>(at) * 0.2F);
        }
        scratch_.write(place + "/config.json",
                       json{{"name", name},
                            {"key_define_type", "multi"},
                            {"sound", "a.wav"},
                            {"includes_numpad", false},
                            {"defines", {{"30", "a.wav"}, {"30-up", "a.wav"}, {"31", "gone.wav"}}}}
                           .dump());
        writeWAV(stroke, scratch_ / (place + "/a.wav"));
    }

    /// What the program prints, on both streams, with exit status `status`.
    std::string run(std::vector<std::string> arguments, int status = 0) {
        const fs::path log = scratch_ / ("log" + std::to_string(runs_++));
        arguments.insert(arguments.begin(), VORNIC_PROGRAM);
        arguments.insert(arguments.begin() + 2, {"--packs", (scratch_ / "packs").string()});
        ChildProcess program(arguments,
                             {{"XDG_DATA_HOME", (scratch_ / "data").string()},
                              {"TMPDIR", (scratch_ / "tmp").string()}},
                             log.string());
        EXPECT_EQ(program.wait(), status) << readBytes(log);
        return readBytes(log);
    }

    json boards() { return json::parse(run({"boards", "--json"})); }
    std::string path(const std::string& name) const { return (scratch_ / name).string(); }

    ScratchFolder scratch_;
    int runs_ = 0;
};

TEST_F(PackProgramTest, aPackBecomesABoardThatIsTheUsers) {
    const std::string said = run({"import", path("theirs/one")});
    EXPECT_THAT(said, AllOf(HasSubstr("\"One\" (Mechvibes)"), HasSubstr("licence: none stated"),
                            HasSubstr("1 key, 1 release, 1 recording"),
                            HasSubstr("missing: The file \"gone.wav\"."),
                            HasSubstr("Imported \"One\" as mine-")));
    const json list = boards();
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[1]["name"], "One");
    const std::string id = list[1]["id"];
    run({"stroke", "--board", id, "--sound", "s1", "--variant", "3", "--out", path("s.wav")});
    EXPECT_GT(fs::file_size(path("s.wav")), 2000U) << "it sounds";
    run({"export", id, path("one.vornic")});
    EXPECT_THAT(run({"import", path("one.vornic")}), HasSubstr("Imported \"One\""));
}

TEST_F(PackProgramTest, aDryRunSaysTheSameAndKeepsNothing) {
    const json report = json::parse(run({"import", path("theirs"), "--dry-run", "--json"}));
    ASSERT_THAT(report, SizeIs(1));
    EXPECT_EQ(report[0]["name"], "One");
    EXPECT_EQ(report[0]["keys"], 1);
    EXPECT_EQ(report[0]["board"], nullptr);
    EXPECT_THAT(boards(), SizeIs(1));
    EXPECT_FALSE(fs::exists(scratch_ / "data/Vornic/Samples/index.json"));
    run({"export", "spring", path("b.vornic")});
    EXPECT_THAT(run({"import", path("b.vornic"), "--dry-run"}), HasSubstr("(a Vornic board)"));
    EXPECT_THAT(boards(), SizeIs(1));
}

TEST_F(PackProgramTest, aFolderOfPacksIsTakenInTogetherAndADamagedOneNamed) {
    writePack("theirs/two", "Two");
    scratch_.write("theirs/three/config.json", "{\"defines\": ");
    scratch_.write("theirs/four.zip", "no archive");
    const std::string said = run({"import", path("theirs")});
    EXPECT_THAT(said, AllOf(HasSubstr("Imported \"One\""), HasSubstr("Imported \"Two\""),
                            HasSubstr("vornic: three/config.json: "), HasSubstr("four.zip: ")));
    EXPECT_TRUE(fs::is_empty(scratch_ / "tmp"));
    EXPECT_THAT(boards(), SizeIs(3));
}

TEST_F(PackProgramTest, whatIsNoPackIsRefused) {
    scratch_.write("text.txt", "hello");
    EXPECT_THAT(run({"import", path("text.txt")}, 1), HasSubstr("It is no sound pack"));
    EXPECT_THAT(run({"import", path("packs/spring/regular-01.wav")}, 1),
                HasSubstr("It is no sound pack"));
    EXPECT_THAT(boards(), SizeIs(1));
}

} // namespace
} // namespace vornic
