#include "Vornic/app/Control.h"

#include "tests/support/ModelFixture.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vornic {
namespace {

using ::testing::HasSubstr;

class ControlTest : public ModelFixture {
  protected:
    void SetUp() override { start(); }

    ControlAnswer run(const RunningCopy::Words& words) {
        Control control(*model, scheduler, [this] { ++activations; });
        std::optional<ControlAnswer> said;
        control.run(words, [&](const ControlAnswer& answer) { said = answer; });
        EXPECT_TRUE(eventually([&] { return said.has_value(); }));
        return said.value_or(ControlAnswer{-1, ""});
    }
    bool startsToPlay() {
        scheduler.advance(std::chrono::milliseconds(0));
        return eventually(
            [&] { return model->tapState() == TapState::listening && model->lastRenderSeconds(); });
    }
    static ControlAnswer said(const std::string& text) { return {0, text}; }

    int activations = 0;
};

TEST_F(ControlTest, switchesTheSounds) {
    EXPECT_EQ(run({"off"}), said("Off · keys are silent"));
    EXPECT_FALSE(model->soundsOn());
    EXPECT_EQ(run({"off"}), said("Off · keys are silent"));
    EXPECT_EQ(run({"on"}), said("Buckling Spring · On the desk"));
    EXPECT_EQ(run({"toggle"}), said("Off · keys are silent"));
    EXPECT_EQ(run({"toggle"}), said("Buckling Spring · On the desk"));
}

TEST_F(ControlTest, choosesABoard) {
    model->newBoard();
    const std::string mine = model->board()->id;
    EXPECT_EQ(run({"board"}), said(mine + " New board"));
    EXPECT_EQ(run({"board", "next"}), said("spring Buckling Spring"));
    EXPECT_EQ(run({"board", "previous"}), said(mine + " New board"));
    EXPECT_EQ(run({"board", "spring"}), said("spring Buckling Spring"));
    EXPECT_EQ(run({"board", "lost"}),
              (ControlAnswer{1, "There is no board \"lost\". Boards: spring, " + mine + "."}));
    EXPECT_EQ(model->board()->id, "spring");
}

TEST_F(ControlTest, ofManyBoardsInARowOnlyTheLastIsChosen) {
    model->newBoard();
    model->newBoard();
    const std::string first = model->board()->id;
    const std::size_t count = model->boards().size();
    const std::uint64_t before = model->boardRevision();
    Control control(*model, scheduler, [] {});
    std::vector<std::string> said;
    for (int command = 0; command < 3000; ++command) {
        control.run({"board", "next"},
                    [&](const ControlAnswer& answer) { said.push_back(answer.text); });
    }
    EXPECT_TRUE(eventually([&] { return said.size() == 3000; }));
    EXPECT_EQ(model->boardRevision(), before + 1);
    EXPECT_EQ(3000 % count, 0U);
    EXPECT_EQ(model->board()->id, first) << "a thousand times round";
    EXPECT_EQ(said.back(), first + " " + model->board()->name);
    EXPECT_NE(said[0], said[1]) << "each is told what it chose";
}

TEST_F(ControlTest, aCommandThatTheDiskDoesNotTakeHasFailed) {
    const SmallDisk disk(10);
    EXPECT_EQ(run({"volume", "0.25"}),
              (ControlAnswer{1, "Couldn't save the settings: File too large"}));
    EXPECT_EQ(model->volume(), 0.25) << "for this run";
}

TEST_F(ControlTest, setsTheVolume) {
    EXPECT_EQ(run({"volume"}), said("0.7"));
    EXPECT_EQ(run({"volume", "0.25"}), said("0.25"));
    EXPECT_EQ(model->volume(), 0.25);
    for (const char* const wrong : {"", "loud", "1.01", "-0.1", "nan", "inf", "0.5x", " 0.5"}) {
        EXPECT_EQ(run({"volume", wrong}).status, 1) << wrong;
    }
    EXPECT_EQ(model->volume(), 0.25);
}

TEST_F(ControlTest, tellsTheState) {
    ASSERT_TRUE(eventually([&] { return model->tapState() == TapState::listening; }));
    EXPECT_EQ(run({"status"}), said("Buckling Spring · On the desk\nVolume 0.7"));
    const auto status = nlohmann::json::parse(run({"status", "--json"}).text);
    EXPECT_EQ(status["soundsOn"], true);
    EXPECT_TRUE(status["silence"].is_null());
    EXPECT_EQ(status["board"]["id"], "spring");
    EXPECT_EQ(status["volume"], 0.7);
    EXPECT_EQ(status["keys"], "listening");
    EXPECT_TRUE(status["deviceMillis"].is_null());
    secureInput.focused = true;
    model->refreshState();
    EXPECT_EQ(nlohmann::json::parse(run({"status", "--json"}).text)["silence"], "password");
}

TEST_F(ControlTest, everyKeyIsCountedAsStartedOrDroppedForAReason) {
    ASSERT_TRUE(startsToPlay());
    std::int64_t presses = 0;
    const auto press = [&] {
        EXPECT_TRUE(keysFollow());
        tap.press();
        ++presses;
        return eventually([&] { return model->keys().keysHeard() == presses; });
    };
    const auto status = [&] { return nlohmann::json::parse(run({"status", "--json"}).text); };
    ASSERT_TRUE(press());
    output.render(128, clock.nanos());
    // The sound server stalls.
    ASSERT_TRUE(press());
    clock.advance(1.0);
    ASSERT_TRUE(press());
    output.render(128, clock.nanos());
    // It ends, comes back, and a queued key is gone.
    ASSERT_TRUE(press());
    output.lose();
    ASSERT_TRUE(press());
    output.available = true;
    model->setSoundsOn(false);
    ASSERT_TRUE(press());
    model->setSoundsOn(true);
    model->edit([](Board& board) { board.keys[std::to_string(FakeTap::key)].pitch = 1e9; });
    ASSERT_TRUE(press());
    model->undo();
    for (int key = 0; key < 60; ++key) {
        ASSERT_TRUE(press());
    }
    model->sound().audition(std::vector<float>(100, 0.1F), 1.0F);
    ASSERT_TRUE(eventually([&] { return model->sound().auditions() == 1; }));
    output.render(128, clock.nanos());

    const auto now = status();
    const auto& dropped = now["dropped"];
    EXPECT_EQ(now["pressed"], presses);
    EXPECT_EQ(now["auditions"], 1);
    EXPECT_EQ(dropped["stalled"], 1);
    EXPECT_EQ(dropped["streamEnded"], 1);
    EXPECT_EQ(dropped["noOutput"], 1);
    EXPECT_EQ(dropped["quiet"], 1);
    EXPECT_EQ(dropped["notPlayable"], 1);
    EXPECT_GT(now["stolen"], 0);
    std::int64_t sum = 0;
    for (const auto& count : dropped) {
        sum += count.get<std::int64_t>();
    }
    EXPECT_EQ(now["pressed"].get<std::int64_t>() + now["released"].get<std::int64_t>() +
                  now["auditions"].get<std::int64_t>(),
              now["started"].get<std::int64_t>() + sum);
    EXPECT_EQ(sum, model->keyCounts().dropped.sum());
}

TEST_F(ControlTest, aSecondStartActivatesTheFirst) {
    EXPECT_EQ(run({"activate"}), ControlAnswer{});
    EXPECT_EQ(activations, 1);
}

TEST_F(ControlTest, refusesWhatItDoesNotKnow) {
    for (const RunningCopy::Words& words :
         {RunningCopy::Words{}, {"dance"}, {"on", "now"}, {"status", "x"}, {"board", "a", "b"}}) {
        EXPECT_EQ(run(words).status, 1);
    }
    EXPECT_EQ(activations, 0);
}

TEST_F(ControlTest, tellsTheStateWithoutAnyBoard) {
    std::filesystem::remove_all(scratch / "Packs");
    restart();
    EXPECT_TRUE(nlohmann::json::parse(run({"status", "--json"}).text)["board"].is_null());
    EXPECT_EQ(run({"board"}).status, 1);
    EXPECT_EQ(run({"board", "next"}).status, 1);
}

} // namespace
} // namespace vornic
