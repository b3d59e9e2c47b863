#pragma once

#include "tests/live/ChildProcess.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// The whole program, with a home of its own and a board of clicks.
class ProgramFixture : public ::testing::Test {
  protected:
    ProgramFixture() { writeClickPack(packs()); }

    std::filesystem::path log() const { return scratch / "vornic.log"; }
    std::filesystem::path packs() const { return scratch / "packs"; }

    /// Starts the program; what it says goes to `output`.
    std::unique_ptr<ChildProcess> start(std::vector<std::string> arguments,
                                        const std::filesystem::path& output,
                                        ChildProcess::Environment environment = {}) {
        arguments.insert(arguments.begin(), VORNIC_PROGRAM);
        // What one test switches off stays off, as the user wants it.
        environment.emplace_back("XDG_CONFIG_HOME", (scratch / "config").string());
        environment.emplace_back("XDG_DATA_HOME", (scratch / "data").string());
        return std::make_unique<ChildProcess>(arguments, environment, output.string());
    }

    /// Starts it with the board of clicks.
    std::unique_ptr<ChildProcess> startWithClicks(std::vector<std::string> arguments = {},
                                                  ChildProcess::Environment environment = {}) {
        arguments.insert(arguments.end(), {"--packs", packs().string()});
        return start(arguments, log(), std::move(environment));
    }

    /// The same, so that it listens.
    std::unique_ptr<ChildProcess> startListening(std::vector<std::string> arguments = {},
                                                 ChildProcess::Environment environment = {}) {
        auto program = startWithClicks(std::move(arguments), std::move(environment));
        EXPECT_TRUE(says("Vornic is listening")) << readBytes(log());
        return program;
    }

    struct Outcome {
        int status = 0;
        std::string output;
    };
    /// Runs the program to its end.
    Outcome run(const std::vector<std::string>& arguments) {
        const std::filesystem::path output = scratch / "command.log";
        std::filesystem::remove(output);
        const int status = start(arguments, output)->wait();
        return {status, readBytes(output)};
    }

    bool says(const std::string& text) {
        return waitFor([&] { return readBytes(log()).find(text) != std::string::npos; });
    }

    bool hasSaidTwice(const std::string& text) const {
        const std::string said = readBytes(log());
        const std::size_t first = said.find(text);
        return first != std::string::npos && said.find(text, first + 1) != std::string::npos;
    }
    bool saysTwice(const std::string& text) {
        return waitFor([&] { return hasSaidTwice(text); });
    }

    ScratchFolder scratch;
};

} // namespace vornic
