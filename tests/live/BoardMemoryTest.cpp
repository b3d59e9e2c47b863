// What boards take of the memory of the whole program.

#include "tests/live/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

namespace vornic {
namespace {

class BoardMemoryTest : public ProgramFixture {
  protected:
    /// A field of what the kernel says of the memory, in kB.
    static long memory(const ChildProcess& program, const std::string& field) {
        std::ifstream file("/proc/" + std::to_string(program.id()) + "/smaps_rollup");
        std::string line;
        while (std::getline(file, line)) {
            if (line.starts_with(field)) {
                return std::stol(line.substr(field.size()));
            }
        }
        return -1;
    }

    bool playsItsFirstBoard() {
        return waitFor([&] {
            return run({"status", "--json"}).output.find("\"lastRenderMillis\": null") ==
                   std::string::npos;
        });
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
    const long taken = memory(*program, "Pss:");
    std::printf("%ld kB\n", taken);
    EXPECT_LE(taken, 250 * 1024);
    EXPECT_THAT(readBytes(log()), testing::HasSubstr("\"Sound 56\" gets "));
    program->end(SIGTERM);
}

} // namespace
} // namespace vornic
