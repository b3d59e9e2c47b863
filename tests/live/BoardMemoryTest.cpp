// What boards take of the memory of the whole program, and what they leave behind in it.

#include "tests/live/ProcessFacts.h"
#include "tests/live/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <string>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class BoardMemoryTest : public ProgramFixture {
  protected:
    bool playsItsFirstBoard() {
        return waitFor(
            [&] {
                return run({"status", "--json"}).output.find("\"lastRenderMillis\": null") ==
                       std::string::npos;
            },
            60s);
    }
};

TEST_F(BoardMemoryTest, aBoardOfFiftySevenSoundsFits) {
    const auto file = scratch / "large.vornic";
    ASSERT_EQ(run({"export", "deep", file.string(), "--packs", VORNIC_BUILT_PACKS}).status, 0);
    auto document = nlohmann::json::parse(readBytes(file));
    auto& sounds = document["board"]["sounds"];
    const auto first = sounds[0];
    while (sounds.size() < 57) {
        auto sound = first;
        sound["id"] = "sound-" + std::to_string(sounds.size());
        sound["name"] = "Sound " + std::to_string(sounds.size());
        // Long ones, and no two alike.
        sound["press"]["chain"]["sustainDb"] = 24.0;
        sound["press"]["chain"]["pitch"] = -12.0 - 0.01 * static_cast<double>(sounds.size());
        sounds.push_back(sound);
    }
    scratch.write("large.vornic", document.dump());
    const auto program =
        start({"--hidden", "--packs", VORNIC_BUILT_PACKS, "--board", file.string()}, log());
    ASSERT_TRUE(says("Vornic is listening")) << readBytes(log());
    ASSERT_TRUE(playsItsFirstBoard());
    const double taken = factsOf(program->id()).memoryMB;
    std::printf("%.1f MB\n", taken);
    EXPECT_LE(taken, 250);
    EXPECT_THAT(readBytes(log()), testing::HasSubstr("\"Sound 56\" gets "));
    program->end(SIGTERM);
}

TEST_F(BoardMemoryTest, thirtySixChangesOfTheBoardLeaveNothingBehind) {
    const auto program = start({"--hidden", "--packs", VORNIC_BUILT_PACKS}, log());
    ASSERT_TRUE(says("Vornic is listening")) << readBytes(log());
    ASSERT_TRUE(playsItsFirstBoard());
    const std::string first = run({"board"}).output;
    // What rendering took is given back in a moment: the least counts.
    double before = factsOf(program->id()).ownMB;
    waitFor(
        [&] {
            before = std::min(before, factsOf(program->id()).ownMB);
            return false;
        },
        2s);
    // Six times round the six boards.
    for (int change = 0; change < 36; ++change) {
        ASSERT_EQ(run({"board", "next"}).status, 0);
    }
    EXPECT_EQ(run({"board"}).output, first);
    const double changed = factsOf(program->id()).ownMB;
    double after = changed;
    // A bank (of the largest board 12 MB) may still wait for the voices that play it; thirty-six of
    // them would be more than 300.
    constexpr double most = 16;
    EXPECT_TRUE(waitFor(
        [&] {
            after = factsOf(program->id()).ownMB;
            return after <= before + most;
        },
        10s));
    std::printf("%.1f MB before, %.1f MB at once, %.1f MB after\n", before, changed, after);
    program->end(SIGTERM);
}

} // namespace
} // namespace vornic
