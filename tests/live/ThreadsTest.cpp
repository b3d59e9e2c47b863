// Every thread of the running program is one that docs/threads.md tells of.

#include "tests/live/KeyTyper.h"
#include "tests/live/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <regex>
#include <set>
#include <string>

namespace vornic {
namespace {

using ::testing::Contains;

using ThreadsTest = ProgramFixture;

/// The names in the first column of the table, as the kernel keeps them: 15 characters at most.
std::set<std::string> toldThreads() {
    const std::string text = readBytes(VORNIC_SOURCE "/docs/threads.md");
    std::set<std::string> names;
    const std::regex row("\n\\| [^|`]*\\(`([^`]+)`");
    for (std::sregex_iterator at(text.begin(), text.end(), row), end; at != end; ++at) {
        names.insert((*at)[1].str().substr(0, 15));
    }
    return names;
}

std::multiset<std::string> runningThreads(pid_t process) {
    std::multiset<std::string> names;
    for (const auto& task :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::string name = readBytes(task.path() / "comm");
        if (!name.empty()) {
            names.insert(name.substr(0, name.find('\n')));
        }
    }
    return names;
}

TEST_F(ThreadsTest, eachIsToldOfAndHasItsName) {
    const auto program = startListening();
    KeyTyper typer;
    typer.type(KeyTyper::letter(0));
    typer.settle();
    // The main thread and, once sound was asked for, the library's own.
    ASSERT_TRUE(waitFor([&] { return runningThreads(program->id()).count("vornic") == 2; }));
    const std::set<std::string> told = toldThreads();
    ASSERT_GE(told.size(), 5U);
    for (const std::string& name : runningThreads(program->id())) {
        EXPECT_THAT(told, Contains(name));
    }
    EXPECT_EQ(runningThreads(program->id()).count("vornic"), 2U) << "a thread without a name";
    program->end(SIGTERM);
}

} // namespace
} // namespace vornic
