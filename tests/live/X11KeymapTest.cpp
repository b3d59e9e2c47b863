// The legends of a real X server's keyboard, while its layout changes.

#include "Vornic/linux/keymap/X11Keymap.h"

#include "tests/live/ChildProcess.h"
#include "tests/live/PrivateXServer.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <poll.h>

namespace vornic {
namespace {

constexpr std::uint32_t leftmostLetter = 16; // Q on a US keyboard

class X11KeymapTest : public ::testing::Test {
  protected:
    X11KeymapTest() {
        keymap.onLegends = [this](const KeyLegends& told) {
            legends = told;
            ++changes;
        };
    }

    void setLayout(const std::string& layout) {
        ChildProcess({"setxkbmap", "-display", server.display(), "-layout", layout}, {},
                     folder / "setxkbmap.log")
            .wait();
    }

    bool waitForLetter(const std::string& letter) {
        return waitFor([&] {
            pollfd readable{.fd = keymap.fileDescriptor(), .events = POLLIN, .revents = 0};
            poll(&readable, 1, 10);
            keymap.dispatch();
            const auto found = legends.find(leftmostLetter);
            return found != legends.end() && found->second == letter;
        });
    }

    ScratchFolder folder;
    PrivateXServer server;
    X11Keymap keymap{server.display()};
    KeyLegends legends;
    int changes = 0;
};

TEST_F(X11KeymapTest, theFirstDispatchTellsTheLegends) {
    keymap.dispatch();
    EXPECT_EQ(legends[leftmostLetter], "Q");
    EXPECT_EQ(changes, 1);
}

TEST_F(X11KeymapTest, aNewLayoutIsTold) {
    keymap.dispatch();
    setLayout("fr");
    EXPECT_TRUE(waitForLetter("A"));
    setLayout("us");
    EXPECT_TRUE(waitForLetter("Q"));
}

TEST_F(X11KeymapTest, aServerThatDiesIsLetGoOf) {
    keymap.dispatch();
    server.kill();
    EXPECT_TRUE(waitFor([&] {
        keymap.dispatch();
        return keymap.fileDescriptor() == -1;
    }));
    keymap.dispatch();
    EXPECT_EQ(legends[leftmostLetter], "Q");
}

TEST(X11Keymap, withoutAServerThereIsNothingToWaitFor) {
    X11Keymap keymap(":4711");
    EXPECT_EQ(keymap.fileDescriptor(), -1);
    keymap.dispatch();
}

} // namespace
} // namespace vornic
