// Whether a microphone is in use, told by a real sound server while real programs record.

#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class MicrophoneUseTest : public ::testing::Test {
  protected:
    /// Another program that records from `target` until the test ends it.
    std::unique_ptr<ChildProcess> record(const std::string& target,
                                         std::vector<std::string> options = {}) const {
        std::vector<std::string> command{"pw-record", "--target", target};
        command.insert(command.end(), options.begin(), options.end());
        command.push_back(scratch / "recording.wav");
        return std::make_unique<ChildProcess>(command, ChildProcess::Environment{},
                                              scratch / "record.log");
    }

    bool becomes(const MicrophoneUse& microphone, bool inUse) {
        return waitFor([&] {
            scheduler.run();
            return microphone.inUse() == inUse;
        });
    }

    ScratchFolder scratch;
    QueueScheduler scheduler;
};

TEST_F(MicrophoneUseTest, isToldWhileAnotherProgramRecords) {
    SoundServer connection;
    PipeWireMicrophoneUse microphone(scheduler, connection);
    int changes = 0;
    microphone.onChange = [&changes] { ++changes; };
    microphone.start();
    ASSERT_TRUE(waitFor([&] { return microphone.canCheck(); }));
    EXPECT_FALSE(microphone.inUse());
    const auto recorder = record("vornic-test-source");
    EXPECT_TRUE(becomes(microphone, true));
    EXPECT_TRUE(waitFor([&] {
        scheduler.run();
        return changes == 1;
    }));
    recorder->end(SIGTERM);
    EXPECT_TRUE(becomes(microphone, false));
    EXPECT_TRUE(waitFor([&] {
        scheduler.run();
        return changes == 2;
    }));
}

TEST_F(MicrophoneUseTest, isToldOfARecordingThatBeganBefore) {
    SoundServer connection;
    PipeWireMicrophoneUse first(scheduler, connection);
    first.start();
    const auto recorder = record("vornic-test-source");
    ASSERT_TRUE(becomes(first, true));
    PipeWireMicrophoneUse second(scheduler, connection);
    second.start();
    EXPECT_TRUE(becomes(second, true));
}

TEST_F(MicrophoneUseTest, theMonitorOfAnOutputAndAMeterDoNotCount) {
    SoundServer connection;
    PipeWireMicrophoneUse microphone(scheduler, connection);
    microphone.start();
    // Each is seen to run before its answer counts: the recorder that ends the wait came later.
    const auto monitor =
        record("vornic-test-sink", {"-P", "{ stream.capture.sink = true node.name = a-monitor }"});
    const auto meter =
        record("vornic-test-source", {"-P", "{ stream.monitor = true node.name = a-meter }"});
    const auto runs = [this](const std::string& node) {
        return waitFor([&] {
            ChildProcess look(
                {"sh", "-c", "pw-cli info \"$0\" | grep -q 'state: \"running\"'", node}, {},
                scratch / "look.log");
            return look.wait() == 0;
        });
    };
    ASSERT_TRUE(runs("a-monitor"));
    ASSERT_TRUE(runs("a-meter"));
    EXPECT_FALSE(microphone.inUse());
    const auto recorder = record("vornic-test-source");
    EXPECT_TRUE(becomes(microphone, true));
    recorder->end(SIGTERM);
    EXPECT_TRUE(becomes(microphone, false));
}

TEST_F(MicrophoneUseTest, thisProcessesOwnRecordingDoesNotCount) {
    SoundServer connection;
    PipeWireMicrophoneUse microphone(scheduler, connection);
    microphone.start();
    SinkCapture own({.sink = "vornic-test-source",
                     .isSink = false,
                     .remote = {},
                     .quantum = 128,
                     .seconds = 5.0});
    ASSERT_TRUE(own.waitUntilRunning());
    const auto recorder = record("vornic-test-source");
    ASSERT_TRUE(becomes(microphone, true));
    recorder->end(SIGTERM);
    EXPECT_TRUE(becomes(microphone, false)) << "only this process is left";
    EXPECT_TRUE(microphone.inUseByAnybody());
}

TEST_F(MicrophoneUseTest, withoutAServerNothingIsInUseAndItsReturnIsNoticed) {
    PrivateSoundServer server;
    SoundServer connection(server.remote());
    PipeWireMicrophoneUse microphone(scheduler, connection);
    microphone.start();
    EXPECT_FALSE(microphone.inUse());
    EXPECT_FALSE(microphone.canCheck());
    server.start();
    server.addSource("mic");
    EXPECT_TRUE(waitFor([&] { return microphone.canCheck(); }));
    server.kill();
    EXPECT_TRUE(waitFor([&] { return !microphone.canCheck(); }));
    server.start();
    server.addSource("mic");
    EXPECT_TRUE(waitFor([&] { return microphone.canCheck(); }));
}

} // namespace
} // namespace vornic
