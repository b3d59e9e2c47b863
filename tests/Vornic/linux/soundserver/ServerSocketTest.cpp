#include "Vornic/linux/soundserver/ServerSocket.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// Sets the variables that say where the server is, and puts the former values back.
class ServerSocketTest : public ::testing::Test {
  protected:
    ServerSocketTest() {
        for (const char* name : names) {
            const char* value = std::getenv(name);
            former.emplace_back(value == nullptr ? "" : value);
            unsetenv(name);
        }
    }
    ~ServerSocketTest() override {
        for (std::size_t i = 0; i < names.size(); ++i) {
            setenv(names[i], former[i].c_str(), 1);
        }
    }
    ServerSocketTest(const ServerSocketTest&) = delete;
    ServerSocketTest& operator=(const ServerSocketTest&) = delete;

    const std::vector<const char*> names = {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR",
                                            "XDG_RUNTIME_DIR", "USERPROFILE"};
    std::vector<std::string> former;
};

TEST_F(ServerSocketTest, liesInTheUsersRuntimeFolder) {
    setenv("XDG_RUNTIME_DIR", "/run/user/1000", 1);
    EXPECT_EQ(ServerSocket::path(""), "/run/user/1000/pipewire-0");
    EXPECT_EQ(ServerSocket::path("studio"), "/run/user/1000/studio");
}

TEST_F(ServerSocketTest, theServersOwnVariablesComeFirst) {
    setenv("XDG_RUNTIME_DIR", "/run/user/1000", 1);
    setenv("PIPEWIRE_RUNTIME_DIR", "/run/pipewire", 1);
    setenv("PIPEWIRE_REMOTE", "other-0", 1);
    EXPECT_EQ(ServerSocket::path(""), "/run/pipewire/other-0");
    EXPECT_EQ(ServerSocket::path("mine"), "/run/pipewire/mine");
}

TEST_F(ServerSocketTest, anAbsolutePathStandsForItself) {
    setenv("XDG_RUNTIME_DIR", "/run/user/1000", 1);
    EXPECT_EQ(ServerSocket::path("/tmp/private/pipewire-0"), "/tmp/private/pipewire-0");
}

} // namespace
} // namespace vornic
