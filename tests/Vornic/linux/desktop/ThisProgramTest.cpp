#include "Vornic/linux/desktop/ThisProgram.h"

#include "tests/support/Environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace vornic {
namespace {

using ::testing::ElementsAre;

TEST(Relaunch, keepsTheArguments) {
    EXPECT_THAT(relaunchCommand("/usr/bin/vornic", {"--hidden", "--board", "my board"}),
                ElementsAre("/usr/bin/vornic", "--hidden", "--board", "my board"));
}

TEST(Relaunch, throughAGroupEveryWordIsTakenLiterally) {
    EXPECT_THAT(
        relaunchCommand("/a b/vornic", {"it's", "$HOME"}, "input"),
        ElementsAre("/usr/bin/sg", "input", "-c", R"(exec '/a b/vornic' 'it'\''s' '$HOME')"));
}

TEST(Relaunch, opensNoFileASecondTime) {
    EXPECT_THAT(without({"--board", "/a/x.vornic", "--hidden", "/a/x.vornic"}, "/a/x.vornic"),
                ElementsAre("--board", "/a/x.vornic", "--hidden"));
    EXPECT_THAT(without({"--hidden"}, "/a/x.vornic"), ElementsAre("--hidden"));
}

/// How a child of this test ends that replaces itself.
int statusAfter(const std::vector<std::string>& command) {
    const pid_t child = fork();
    if (child == 0) {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &signals, nullptr);
        replaceProcess(command);
        _exit(42);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

TEST(Relaunch, takesThePlaceOfTheProcess) {
    const int status = statusAfter(relaunchCommand("/bin/sh", {"-c", "exit $1", "sh", "7"}));
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST(Relaunch, leavesNoSignalBlocked) {
    const int status = statusAfter(relaunchCommand("/bin/sh", {"-c", "kill -TERM $$; exit 3"}));
    EXPECT_TRUE(WIFSIGNALED(status));
}

TEST(Relaunch, comesBackWhereThereIsNoSuchProgram) {
    const int status = statusAfter(relaunchCommand("/no/such/program", {}));
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 42);
}

TEST(ThisProgram, theInstalledProgramLoadsNothingFromTheEnvironmentsFolders) {
    for (const char* const name :
         {"QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH", "QML_IMPORT_PATH", "QML2_IMPORT_PATH",
          "LD_PRELOAD", "LD_AUDIT", "LD_LIBRARY_PATH"}) {
        const Environment variable(name);
        variable.set("/home/somebody/plugins");
        keepOutForeignPlugins("/home/somebody/vornic/build/vornic");
        EXPECT_NE(std::getenv(name), nullptr) << "who builds it may want to " << name;
        keepOutForeignPlugins("/usr/bin/vornic");
        EXPECT_EQ(std::getenv(name), nullptr) << name;
    }
}

} // namespace
} // namespace vornic
