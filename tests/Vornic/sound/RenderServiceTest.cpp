#include "Vornic/sound/RenderService.h"

#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vornic {

namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

Board named(const std::string& name) {
    Board board = boardOf({});
    board.name = name;
    return board;
}

/// Builds boards only when the test lets it, and notes their names.
class GatedBuilder {
  public:
    RenderedBoard build(const Board& board) {
        std::unique_lock lock(mutex_);
        begun_.push_back(board.name);
        changed_.notify_all();
        changed_.wait(lock, [&] { return released_ > finished_; });
        ++finished_;
        return {.bank = std::make_shared<VoiceBank>(), .messages = {board.name}};
    }

    void release(std::size_t builds) {
        const std::scoped_lock lock(mutex_);
        released_ += builds;
        changed_.notify_all();
    }

    std::vector<std::string> begun() const {
        const std::scoped_lock lock(mutex_);
        return begun_;
    }

  private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::string> begun_;
    std::size_t released_ = 0;
    std::size_t finished_ = 0;
};

class RenderServiceTest : public testing::Test {
  protected:
    ManualClock clock;
    ManualScheduler scheduler;
    GatedBuilder builder;
    std::shared_ptr<const SampleSource> library =
        std::make_shared<MapSource>(MapSource::Recordings());
    std::vector<std::string> delivered;
    std::vector<double> seconds;
    RenderService service{clock, scheduler, [this](const Board& board, const SampleSource&) {
                              RenderedBoard result = builder.build(board);
                              clock.advance(0.25);
                              return result;
                          }};

    void request(const std::string& name, milliseconds delay = milliseconds(150),
                 RenderPurpose purpose = RenderPurpose::played) {
        service.render(
            named(name), library, delay,
            [this](RenderedBoard board, double took) {
                delivered.push_back(board.messages.front());
                seconds.push_back(took);
            },
            purpose);
    }
    bool deliveredSomething() {
        const std::size_t before = delivered.size();
        return waitFor([&] {
            scheduler.run();
            return delivered.size() > before;
        });
    }
    // The build posts whether or not it was overtaken.
    bool ranPosted(std::size_t count) {
        std::size_t ran = 0;
        return waitFor([&] {
            ran += scheduler.run();
            return ran >= count;
        });
    }
    bool begins(const std::string& name) {
        return waitFor([&] {
            const auto begun = builder.begun();
            return !begun.empty() && begun.back() == name;
        });
    }
    ~RenderServiceTest() override { builder.release(100); }
};

TEST_F(RenderServiceTest, rendersOnceTheDelayHasPassed) {
    builder.release(1);
    request("a");
    scheduler.advance(milliseconds(149));
    EXPECT_EQ(scheduler.timers(), 1U);
    EXPECT_THAT(builder.begun(), IsEmpty());
    scheduler.advance(milliseconds(1));
    EXPECT_EQ(scheduler.timers(), 0U);
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(delivered, ElementsAre("a"));
    EXPECT_THAT(seconds, ElementsAre(testing::DoubleNear(0.25, 1e-9)));
}

TEST_F(RenderServiceTest, twoRequestsWithinTheDelayBuildAndDeliverTheSecondOnly) {
    builder.release(2);
    request("first");
    scheduler.advance(milliseconds(100));
    request("second");
    scheduler.advance(milliseconds(100));
    EXPECT_THAT(builder.begun(), IsEmpty());
    scheduler.advance(milliseconds(50));
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(delivered, ElementsAre("second"));
    EXPECT_THAT(builder.begun(), ElementsAre("second"));
    EXPECT_EQ(scheduler.timers(), 0U);
}

TEST_F(RenderServiceTest, tenEditsInARowRenderOnce) {
    builder.release(10);
    for (int edit = 0; edit < 10; ++edit) {
        request(std::to_string(edit));
        scheduler.advance(milliseconds(20));
    }
    scheduler.advance(milliseconds(1000));
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(builder.begun(), ElementsAre("9"));
    EXPECT_THAT(delivered, ElementsAre("9"));
}

TEST_F(RenderServiceTest, aRequestDuringABuildLetsItFinishButDropsItsResult) {
    request("old", milliseconds(0));
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("old"));
    request("new", milliseconds(0));
    scheduler.advance(milliseconds(0));
    builder.release(2);
    ASSERT_TRUE(ranPosted(2));
    EXPECT_THAT(builder.begun(), ElementsAre("old", "new"));
    EXPECT_THAT(delivered, ElementsAre("new"));
}

TEST_F(RenderServiceTest, aPendingRequestAlreadyDropsTheResultOfABuild) {
    request("old", milliseconds(0));
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("old"));
    request("new");
    builder.release(1);
    ASSERT_TRUE(ranPosted(1));
    EXPECT_THAT(delivered, IsEmpty());
    builder.release(1);
    scheduler.advance(milliseconds(150));
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(delivered, ElementsAre("new"));
}

TEST_F(RenderServiceTest, dropsAResultThatWaitsForTheMainThread) {
    builder.release(1);
    request("old", milliseconds(0));
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("old"));
    // By the time it is posted, the next request has been made.
    request("new");
    ASSERT_TRUE(ranPosted(1));
    EXPECT_THAT(delivered, IsEmpty());
}

TEST_F(RenderServiceTest, doesNotBuildARequestThatWasOvertakenWhileItWaited) {
    request("old", milliseconds(0));
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("old"));
    request("between", milliseconds(0));
    scheduler.advance(milliseconds(0));
    request("new");
    builder.release(1);
    ASSERT_TRUE(ranPosted(1));
    builder.release(2);
    scheduler.advance(milliseconds(150));
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(builder.begun(), ElementsAre("old", "new"));
    EXPECT_THAT(delivered, ElementsAre("new"));
}

TEST_F(RenderServiceTest, rendersOneBoardAtATime) {
    request("first", milliseconds(0));
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("first"));
    request("second", milliseconds(0));
    scheduler.advance(milliseconds(0));
    EXPECT_THAT(builder.begun(), ElementsAre("first"));
    builder.release(1);
    ASSERT_TRUE(begins("second"));
    builder.release(1);
    ASSERT_TRUE(deliveredSomething());
}

TEST_F(RenderServiceTest, aRequestForAnotherPurposeOvertakesNothing) {
    builder.release(3);
    request("current");
    request("reference", milliseconds(0), RenderPurpose::compared);
    request("guest", milliseconds(150), RenderPurpose::lookedAt);
    EXPECT_EQ(scheduler.timers(), 3U);
    scheduler.advance(milliseconds(150));
    ASSERT_TRUE(ranPosted(3));
    EXPECT_THAT(delivered, testing::UnorderedElementsAre("current", "reference", "guest"));
}

TEST_F(RenderServiceTest, ofThoseThatWaitWhatPlaysGoesFirst) {
    request("first", milliseconds(0), RenderPurpose::lookedAt);
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("first"));
    request("guest", milliseconds(0), RenderPurpose::lookedAt);
    request("reference", milliseconds(0), RenderPurpose::compared);
    request("current", milliseconds(0));
    scheduler.advance(milliseconds(0));
    EXPECT_THAT(builder.begun(), ElementsAre("first")) << "one at a time";
    builder.release(4);
    ASSERT_TRUE(ranPosted(4));
    EXPECT_THAT(builder.begun(), ElementsAre("first", "current", "reference", "guest"));
    EXPECT_THAT(delivered, ElementsAre("current", "reference", "guest"));
}

TEST_F(RenderServiceTest, whatIsDroppedIsNeitherBuiltNorDelivered) {
    request("guest", milliseconds(0), RenderPurpose::lookedAt);
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(begins("guest"));
    request("waiting", milliseconds(0), RenderPurpose::compared);
    scheduler.advance(milliseconds(0));
    request("pending", milliseconds(150));
    service.drop(RenderPurpose::played);
    service.drop(RenderPurpose::compared);
    service.drop(RenderPurpose::lookedAt);
    EXPECT_EQ(scheduler.timers(), 0U);
    request("next", milliseconds(0));
    scheduler.advance(milliseconds(0));
    builder.release(4);
    ASSERT_TRUE(deliveredSomething());
    EXPECT_THAT(builder.begun(), ElementsAre("guest", "next"));
    EXPECT_THAT(delivered, ElementsAre("next"));
}

TEST(RenderServiceThread, isNamedAndStepsBackBehindTheKeys) {
    const ManualClock clock;
    ManualScheduler scheduler;
    std::array<char, 16> name{};
    int niceness = 0;
    const int before = getpriority(PRIO_PROCESS, 0);
    RenderService service(clock, scheduler, [&](const Board&, const SampleSource&) {
        // A helper of its own, as boards are built with.
        std::jthread([&] {
            pthread_getname_np(pthread_self(), name.data(), name.size());
            niceness = getpriority(PRIO_PROCESS, 0);
        }).join();
        return RenderedBoard{.bank = std::make_shared<VoiceBank>(), .messages = {}};
    });
    bool done = false;
    service.render(named("a"), std::make_shared<MapSource>(MapSource::Recordings()),
                   milliseconds(0), [&](const RenderedBoard&, double) { done = true; });
    scheduler.advance(milliseconds(0));
    ASSERT_TRUE(waitFor([&] {
        scheduler.run();
        return done;
    }));
    EXPECT_STREQ(name.data(), "vornic.render");
    EXPECT_GT(niceness, before);
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), before) << "nobody else steps back";
}

TEST(RenderServiceEnd, deliversNothingAfterIt) {
    const ManualClock clock;
    ManualScheduler scheduler;
    int calls = 0;
    {
        RenderService service(clock, scheduler, [](const Board&, const SampleSource&) {
            return RenderedBoard{.bank = std::make_shared<VoiceBank>(), .messages = {}};
        });
        const auto library = std::make_shared<MapSource>(MapSource::Recordings());
        const auto count = [&](const RenderedBoard&, double) { ++calls; };
        service.render(named("a"), library, milliseconds(0), count);
        scheduler.advance(milliseconds(0));
        service.render(named("b"), library, milliseconds(50), count);
    }
    EXPECT_EQ(scheduler.timers(), 0U);
    scheduler.advance(milliseconds(100));
    scheduler.run();
    EXPECT_EQ(calls, 0);
}

TEST(RenderServiceEnd, waitsForTheBuildUnderWay) {
    const ManualClock clock;
    ManualScheduler scheduler;
    std::atomic<bool> inside = false;
    std::atomic<bool> finished = false;
    {
        RenderService service(clock, scheduler, [&](const Board&, const SampleSource&) {
            inside = true;
            std::this_thread::yield();
            finished = true;
            return RenderedBoard{.bank = std::make_shared<VoiceBank>(), .messages = {}};
        });
        service.render(named("a"), std::make_shared<MapSource>(MapSource::Recordings()),
                       milliseconds(0), [](const RenderedBoard&, double) {});
        scheduler.advance(milliseconds(0));
        ASSERT_TRUE(waitFor([&] { return inside.load(); }));
    }
    EXPECT_TRUE(finished);
}

} // namespace

} // namespace vornic
