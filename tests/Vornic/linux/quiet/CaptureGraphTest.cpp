#include "Vornic/linux/quiet/CaptureGraph.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr std::int64_t ownProcess = 100;
constexpr std::int64_t otherProcess = 200;

// Numbers of the server's objects.
constexpr std::uint32_t ownClient = 1;
constexpr std::uint32_t otherClient = 2;
constexpr std::uint32_t microphone = 10;
constexpr std::uint32_t speakers = 11;
constexpr std::uint32_t recorder = 20;
constexpr std::uint32_t link = 30;

/// A server with a microphone, an output, and another program's stream that runs.
struct CaptureGraphTest : ::testing::Test {
    CaptureGraphTest() {
        graph.setProcess(ownClient, ownProcess);
        graph.setProcess(otherClient, otherProcess);
        graph.setNode(microphone, {.mediaClass = "Audio/Source", .isRunning = true});
        graph.setNode(speakers, {.mediaClass = "Audio/Sink", .isRunning = true});
        graph.setNode(recorder, stream());
    }

    static GraphNode stream() {
        return {.mediaClass = "Stream/Input/Audio", .client = otherClient, .isRunning = true};
    }

    bool inUse() const { return graph.inUse(ownProcess); }

    CaptureGraph graph;
};

TEST_F(CaptureGraphTest, anotherProgramThatRecordsFromAMicrophoneUsesIt) {
    EXPECT_FALSE(inUse());
    graph.setLink(link, microphone, recorder);
    EXPECT_TRUE(inUse());
    graph.remove(link);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, theMonitorOfAnOutputIsNoMicrophone) {
    graph.setLink(link, speakers, recorder);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, aPausedStreamDoesNotCount) {
    graph.setLink(link, microphone, recorder);
    graph.setRunning(recorder, false);
    EXPECT_FALSE(inUse());
    graph.setRunning(recorder, true);
    EXPECT_TRUE(inUse());
}

TEST_F(CaptureGraphTest, aMeterDoesNotCount) {
    GraphNode meter = stream();
    meter.isMeter = true;
    graph.setNode(recorder, meter);
    graph.setLink(link, microphone, recorder);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, theProgramsOwnRecordingDoesNotCount) {
    GraphNode own = stream();
    own.client = ownClient;
    graph.setNode(recorder, own);
    graph.setLink(link, microphone, recorder);
    EXPECT_FALSE(inUse());
    graph.setNode(recorder + 1, stream());
    graph.setLink(link + 1, microphone, recorder + 1);
    EXPECT_TRUE(inUse());
}

TEST_F(CaptureGraphTest, aStreamOfAnUnknownClientCounts) {
    GraphNode unknown = stream();
    unknown.client = 77;
    graph.setNode(recorder, unknown);
    graph.setLink(link, microphone, recorder);
    EXPECT_TRUE(inUse());
}

TEST_F(CaptureGraphTest, whatPlaysDoesNotCount) {
    GraphNode player = stream();
    player.mediaClass = "Stream/Output/Audio";
    graph.setNode(recorder, player);
    graph.setLink(link, microphone, recorder);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, aClientOfTheJackInterfaceCounts) {
    graph.setNode(recorder, {.clientApi = "jack", .client = otherClient, .isRunning = true});
    graph.setLink(link, microphone, recorder);
    EXPECT_TRUE(inUse());
}

TEST_F(CaptureGraphTest, aVirtualSourceIsWhatFeedsIt) {
    constexpr std::uint32_t inner = 40;
    constexpr std::uint32_t denoised = 41;
    GraphNode feed = stream();
    feed.linkGroup = "filter-1";
    graph.setNode(inner, feed);
    graph.setNode(denoised,
                  {.mediaClass = "Audio/Source", .linkGroup = "filter-1", .isRunning = true});
    // The stream inside alone means that nobody listens.
    graph.setLink(link, microphone, inner);
    EXPECT_FALSE(inUse());
    graph.setLink(link + 1, denoised, recorder);
    EXPECT_TRUE(inUse());
    graph.setLink(link, speakers, inner);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, virtualSourcesInACircleEnd) {
    constexpr std::uint32_t inner = 40;
    constexpr std::uint32_t source = 41;
    GraphNode feed = stream();
    feed.linkGroup = "loop";
    graph.setNode(inner, feed);
    graph.setNode(source, {.mediaClass = "Audio/Source", .linkGroup = "loop", .isRunning = true});
    graph.setLink(link, source, inner);
    graph.setLink(link + 1, source, recorder);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, whatIsGoneDoesNotCount) {
    graph.setLink(link, microphone, recorder);
    graph.remove(microphone);
    EXPECT_FALSE(inUse());
    EXPECT_FALSE(graph.hasMicrophone());
    graph.setNode(microphone, {.mediaClass = "Audio/Source/Virtual"});
    EXPECT_TRUE(inUse());
    graph.remove(recorder);
    EXPECT_FALSE(inUse());
    graph.remove(recorder);
    graph.setRunning(recorder, true);
    EXPECT_FALSE(inUse());
}

TEST_F(CaptureGraphTest, onlySourcesAreMicrophones) {
    EXPECT_TRUE(graph.hasMicrophone());
    graph.remove(microphone);
    EXPECT_FALSE(graph.hasMicrophone());
}

} // namespace
} // namespace vornic
