// The real key reader, started by a connection to its socket, between emulated keyboards, a login
// manager and polkit of the test's, and clients.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/keys/EvdevKeyTap.h"
#include "Vornic/linux/keys/ReaderKeyboards.h"
#include "Vornic/linux/keys/UdevInputDevices.h"
#include "tests/Vornic/linux/keys/FakeKeyboards.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/evdev/FakeLogin.h"
#include "tests/live/evdev/MockKeyboards.h"
#include "tests/live/evdev/StartKeyReader.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A client that is this very process.
struct Client {
    explicit Client(const std::string& socket) : reader(socket, none) {
        tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            (down ? pressed : released).push_back(keyCode);
            times.push_back(nanos);
        };
    }
    bool describes(const std::string& description) {
        return waitFor([&] {
            tap.refresh();
            tap.dispatch();
            return tap.description() == description;
        });
    }

    MonotonicClock clock;
    FakeKeyboards none;
    ReaderKeyboards reader;
    EvdevKeyTap tap{clock, reader, [this] { return reader.granted(); }};
    std::vector<std::int64_t> pressed;
    std::vector<std::int64_t> released;
    std::vector<std::uint64_t> times;
};

class KeyReaderTest : public ::testing::Test {
  protected:
    KeyReaderTest() { keyboards.plug(5); }

    std::string socket() const { return (scratch / "keys").string(); }
    fs::path log() const { return scratch / "reader.log"; }
    static std::string self() { return fs::canonical("/proc/self/exe").string(); }

    /// The reader, once somebody connects; it lets in what is at `installed`.
    void serve(const std::string& installed) {
        reader = startKeyReader(socket(), installed, log());
    }

    /// How often the reader has the first keyboard open.
    std::size_t opened() const {
        const fs::path node = keyboards.place(5);
        std::size_t count = 0;
        std::error_code gone;
        for (const auto& entry :
             fs::directory_iterator("/proc/" + std::to_string(reader->id()) + "/fd", gone)) {
            if (fs::read_symlink(entry, gone) == node) {
                ++count;
            }
        }
        return count;
    }

    void type(int keyboard, std::uint16_t code) {
        keyboards.send(keyboard, code, 1, clock.nanos());
        keyboards.send(keyboard, code, 0, clock.nanos());
    }

    /// What the client that stands for the installed program says of its standing.
    std::string outcome(const ChildProcess::Environment& environment = {}) {
        const fs::path said = scratch / "client.log";
        fs::remove(said);
        ChildProcess({VORNIC_INNOCENT_CLIENT, "hear", socket()}, environment, said.string()).wait();
        return readBytes(said);
    }

    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{count_, arguments_};
    ScratchFolder scratch;
    MonotonicClock clock;
    MockKeyboards keyboards;
    FakeLogin login;
    std::unique_ptr<ChildProcess> reader;
};

TEST_F(KeyReaderTest, handsKeysToTheInstalledProgramWithTheKernelsStamps) {
    serve(self());
    Client client(socket());
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys")) << readBytes(log());
    EXPECT_EQ(login.askedAbout, static_cast<unsigned>(::getpid()));
    EXPECT_EQ(opened(), 1U);
    const std::uint64_t before = clock.nanos() - 50'000'000;
    keyboards.send(5, KEY_A, 1, before);
    keyboards.send(5, KEY_A, 2, before + 10'000'000);
    keyboards.send(5, KEY_A, 0, before + 20'000'000);
    ASSERT_TRUE(waitFor([&] {
        client.tap.dispatch();
        return !client.released.empty();
    }));
    EXPECT_THAT(client.pressed, ElementsAre(0));
    EXPECT_THAT(client.times,
                ElementsAre(before / 1000 * 1000, (before + 20'000'000) / 1000 * 1000));
    // Another keyboard, and the first one unplugged.
    keyboards.plug(6);
    ASSERT_TRUE(client.describes("2 of 2 keyboards, read by vornic-keys"));
    keyboards.unplug(5);
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    type(6, KEY_S);
    EXPECT_TRUE(waitFor([&] {
        client.tap.dispatch();
        return client.released.size() == 2;
    }));
    EXPECT_THAT(client.pressed, ElementsAre(0, 1));
}

/// How long a key takes from the keyboard to `tap`, in the middle of 2,000, in microseconds.
double medianDelay(KeyTap& tap, MockKeyboards& keyboards) {
    const MonotonicClock clock;
    std::vector<double> delays;
    tap.onKey = [&](std::int64_t, bool, std::uint64_t nanos) {
        delays.push_back(static_cast<double>(clock.nanos() - nanos) / 1000);
    };
    for (std::size_t key = 1; key <= 2000; ++key) {
        keyboards.send(5, KEY_A, static_cast<std::int32_t>(key % 2), clock.nanos());
        pollfd wait{.fd = tap.fileDescriptor(), .events = POLLIN, .revents = 0};
        while (delays.size() < key && ::poll(&wait, 1, 10'000) > 0) {
            tap.dispatch();
        }
    }
    std::ranges::nth_element(delays, delays.begin() + 1000);
    return delays.size() == 2000 ? delays[1000] : 1e9;
}

TEST_F(KeyReaderTest, costsNextToNothing) {
    serve(self());
    Client client(socket());
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    UdevInputDevices devices;
    EvdevKeyTap direct{clock, devices, [] { return true; }};
    // One after the other, since both would be told of each key; again where the machine was busy.
    double extra = 0;
    EXPECT_TRUE(waitFor(
        [&] {
            const double through = medianDelay(client.tap, keyboards);
            client.tap.stop();
            EXPECT_TRUE(direct.start());
            const double directly = medianDelay(direct, keyboards);
            direct.stop();
            EXPECT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
            std::printf("directly %.1f us, through the reader %.1f us\n", directly, through);
            extra = through - directly;
            return extra <= 100;
        },
        std::chrono::seconds(60)))
        << extra;
}

TEST_F(KeyReaderTest, readsNothingWhileTheScreenIsLockedOrAnotherSessionActive) {
    serve(self());
    Client client(socket());
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    ASSERT_EQ(opened(), 1U);
    for (std::atomic<bool>* const fact : {&login.locked, &login.active}) {
        *fact = !*fact;
        login.tellSession();
        ASSERT_TRUE(client.describes("0 of 0 keyboards, read by vornic-keys"));
        EXPECT_EQ(opened(), 0U);
        EXPECT_EQ(client.tap.refresh(), TapState::listening) << "nobody has to be asked again";
        *fact = !*fact;
        login.tellSession();
        ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    }
    type(5, KEY_A);
    EXPECT_TRUE(waitFor([&] {
        client.tap.dispatch();
        return client.pressed == std::vector<std::int64_t>{0};
    }));
}

TEST_F(KeyReaderTest, closesEverythingTheMomentThePermissionIsWithdrawn) {
    login.allowed = false;
    serve(self());
    Client client(socket());
    EXPECT_FALSE(client.tap.start());
    EXPECT_EQ(client.tap.refresh(), TapState::needsPermission);
    EXPECT_EQ(opened(), 0U);
    login.allowed = true;
    login.tellPolicy();
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    EXPECT_EQ(client.tap.refresh(), TapState::listening);
    login.allowed = false;
    login.tellPolicy();
    EXPECT_TRUE(waitFor([&] { return opened() == 0; }));
    ASSERT_TRUE(client.describes("0 of 0 keyboards"));
    EXPECT_EQ(client.tap.refresh(), TapState::needsPermission);
}

TEST_F(KeyReaderTest, whoGivesNoAnswerHasSaidNoAndIsAskedAgain) {
    login.mute = 1;
    serve(self());
    Client client(socket());
    EXPECT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    EXPECT_EQ(login.asked, 2U);
}

TEST_F(KeyReaderTest, anotherUsersSessionIsNoneOfTheClients) {
    login.user = ::getuid() + 1;
    serve(self());
    Client client(socket());
    EXPECT_TRUE(client.describes("0 of 0 keyboards, read by vornic-keys"));
    EXPECT_EQ(login.asked, 0U) << "nobody types for it, whatever it may";
    EXPECT_EQ(opened(), 0U);
}

TEST_F(KeyReaderTest, oneClientAtATimeTheNextOneWhenItHasGone) {
    serve(self());
    Client first(socket());
    Client second(socket());
    first.tap.start();
    ASSERT_TRUE(first.describes("1 of 1 keyboard, read by vornic-keys"));
    ASSERT_TRUE(
        second.describes("0 of 0 keyboards, read by vornic-keys for another copy of Vornic"));
    EXPECT_EQ(second.tap.refresh(), TapState::listening) << "a copy of it hears";
    first.tap.stop();
    EXPECT_TRUE(second.describes("1 of 1 keyboard, read by vornic-keys"));
}

TEST_F(KeyReaderTest, closesEverythingWhenItsClientOrTheLoginManagerGoes) {
    serve(self());
    Client client(socket());
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    login.leave();
    ASSERT_TRUE(client.describes("0 of 0 keyboards, read by vornic-keys"));
    EXPECT_EQ(opened(), 0U);
    login.comeBack();
    ASSERT_TRUE(client.describes("1 of 1 keyboard, read by vornic-keys"));
    EXPECT_EQ(opened(), 1U);
    client.tap.stop();
    EXPECT_TRUE(waitFor([&] { return opened() == 0; }));
}

TEST_F(KeyReaderTest, aProgramThatIsNotTheInstalledOneIsRefused) {
    serve(VORNIC_INNOCENT_CLIENT);
    Client client(socket());
    EXPECT_FALSE(client.tap.start());
    EXPECT_EQ(client.tap.refresh(), TapState::needsPermission);
    EXPECT_THAT(readBytes(log()), HasSubstr("refused another program"));
    EXPECT_EQ(outcome(), "hearing\n");
}

TEST_F(KeyReaderTest, theInstalledProgramWithForeignCodeInItIsRefused) {
    serve(VORNIC_INNOCENT_CLIENT);
    EXPECT_EQ(outcome({{"LD_PRELOAD", VORNIC_FOREIGN_CODE}}), "refused\n");
    EXPECT_THAT(readBytes(log()), HasSubstr("foreign code in it"));
    EXPECT_EQ(opened(), 0U);
    EXPECT_EQ(outcome({{"LD_PRELOAD", ""}}), "hearing\n");
}

TEST_F(KeyReaderTest, whoConnectsAndThenStartsTheInstalledProgramStillHearsNothing) {
    serve(VORNIC_INNOCENT_CLIENT);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(socket(), address.sun_path);
    std::array<std::uint8_t, longestReaderPacket> packet{};
    ssize_t got = 0;
    // The reader may look while the process is this program still; then it is to be tried anew.
    const bool challenged = waitFor([&] {
        const int shared = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
        const pid_t innocent = ::fork();
        if (innocent == 0) {
            if (::connect(shared, reinterpret_cast<const sockaddr*>(&address), sizeof address) ==
                0) {
                ::execl(VORNIC_INNOCENT_CLIENT, "innocent-client", "sleep", nullptr);
            }
            ::_exit(1);
        }
        // Readable only once it is connected.
        while ((got = ::recv(shared, packet.data(), packet.size(), 0)) < 0 && errno == ENOTCONN) {
        }
        const bool asked = got > 0;
        if (asked) {
            // The other one could not: it does not know that it has this socket.
            EXPECT_EQ(::send(shared, packet.data(), static_cast<std::size_t>(got), 0), got);
            got = ::recv(shared, packet.data(), packet.size(), 0);
        }
        ::kill(innocent, SIGKILL);
        ::waitpid(innocent, nullptr, 0);
        ::close(shared);
        return asked;
    });
    EXPECT_TRUE(challenged) << readBytes(log());
    EXPECT_EQ(got, 0) << "it is shown out";
    EXPECT_EQ(login.asked, 0U);
}

} // namespace
} // namespace vornic
