#include "VornicCore/board/BoardJson.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <latch>

namespace vornic {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class AppModelBoardsTest : public ModelFixture {
  protected:
    /// What is in the file once it has been written.
    nlohmann::json settings() {
        scheduler.advance(300ms);
        waitForDisk();
        return nlohmann::json::parse(readBytes(scratch / "config/settings.json"));
    }
    /// Until it has everything that was handed over.
    void waitForDisk() {
        bool done = false;
        model->whenWritten([&](const std::string&) { done = true; });
        EXPECT_TRUE(eventually([&] { return done; }));
    }
    std::vector<float> wave(Velocity velocity = Velocity::medium) const {
        const auto samples = model->editorWave(velocity);
        return {samples.begin(), samples.end()};
    }
    void setRattle(double rattle) {
        model->edit([&](Board& board) { board.stabs.rattle = rattle; });
    }
};

TEST_F(AppModelBoardsTest, aFreshInstallationHasTheDefaultsAndWritesNothing) {
    start();
    EXPECT_TRUE(model->soundsOn());
    EXPECT_TRUE(model->quietDuringCalls());
    EXPECT_FALSE(model->advanced());
    EXPECT_EQ(model->volume(), 0.7);
    EXPECT_EQ(model->sound().volume(), 0.7);
    EXPECT_EQ(model->outputKind(), OutputKind::automatic);
    EXPECT_EQ(model->stage(), StageSpec());
    scheduler.advance(2000ms);
    EXPECT_FALSE(std::filesystem::exists(scratch / "config"));
    EXPECT_FALSE(std::filesystem::exists(scratch / "data"));
}

TEST_F(AppModelBoardsTest, everythingIsAsItWasAtTheNextStart) {
    start();
    model->setSoundsOn(false);
    model->setQuietDuringCalls(false);
    model->setAdvanced(true);
    model->setVolume(0.25);
    model->setOutputKind(OutputKind::headphones);
    model->setStage({.placement = Placement::close, .room = Room::wood});
    setRattle(0.5);
    model->setTweaks({.deeper = 1});
    const Board board = *model->board();
    restart();
    EXPECT_FALSE(model->soundsOn());
    EXPECT_EQ(model->silence(), Silence::off);
    EXPECT_FALSE(model->quietDuringCalls());
    EXPECT_TRUE(model->advanced());
    EXPECT_EQ(model->volume(), 0.25);
    EXPECT_EQ(model->sound().volume(), 0.25);
    EXPECT_EQ(model->outputKind(), OutputKind::headphones);
    EXPECT_EQ(model->stage().room, Room::wood);
    ASSERT_NE(model->board(), nullptr);
    EXPECT_EQ(*model->board(), board);
    EXPECT_EQ(model->tweaks().deeper, 1);
}

TEST_F(AppModelBoardsTest, deletingTheCurrentBoardSelectsAnotherAndRemembersThat) {
    start();
    model->newBoard();
    EXPECT_THAT(settings()["board"].get<std::string>(), StartsWith("mine-"));
    EXPECT_EQ(model->boards().size(), 2U);
    model->deleteBoard();
    EXPECT_EQ(model->board()->id, "spring");
    EXPECT_EQ(settings()["board"], "spring");
    EXPECT_EQ(model->boards().size(), 1U);
}

TEST_F(AppModelBoardsTest, aRememberedBoardThatIsGoneFallsBackToTheDefault) {
    scratch.write("config/settings.json", R"({"board": "mine-00000000"})");
    start();
    ASSERT_NE(model->board(), nullptr);
    EXPECT_EQ(model->board()->id, "spring");
    EXPECT_EQ(settings()["board"], "mine-00000000") << "its file may come back";
}

TEST_F(AppModelBoardsTest, whatTheCommandLineSaysCountsForThisRunOnly) {
    auto wanted = options();
    wanted.volume = 0.1;
    wanted.outputKind = OutputKind::speakers;
    wanted.stage = [](StageSpec& stage) { stage.room = Room::studio; };
    Board elsewhere = BoardStore(SoundPack::all(wanted.packs), {}).builtIn().front();
    elsewhere.name = "Elsewhere";
    wanted.board = scratch.write("elsewhere.json", encodeBoard(elsewhere)).string();
    model.reset();
    model = std::make_unique<AppModel>(platform(), wanted);
    start();
    EXPECT_EQ(model->volume(), 0.1);
    EXPECT_EQ(model->stage().room, Room::studio);
    EXPECT_EQ(model->board()->name, "Elsewhere");
    model->setAdvanced(true);
    EXPECT_EQ(settings(), nlohmann::json::parse(R"({"advanced": true})"));
    model->setVolume(0.9);
    EXPECT_EQ(settings(), nlohmann::json::parse(R"({"advanced": true, "volume": 0.9})"));
}

TEST_F(AppModelBoardsTest, goesRoundTheListOfBoards) {
    start();
    model->newBoard();
    const std::string mine = model->board()->id;
    EXPECT_TRUE(model->selectNeighbour(1));
    EXPECT_EQ(model->board()->id, "spring");
    EXPECT_TRUE(model->selectNeighbour(-1));
    EXPECT_EQ(model->board()->id, mine);
    EXPECT_TRUE(model->selectNeighbour(-1));
    EXPECT_EQ(model->board()->id, "spring");
}

TEST_F(AppModelBoardsTest, theAdjustedBoardIsWhatPlays) {
    ASSERT_TRUE(startToPlay());
    const std::vector<float> plain = wave();
    EXPECT_FALSE(plain.empty());
    model->setTweaks({.crisper = 1});
    scheduler.advance(1000ms);
    EXPECT_TRUE(eventually([&] { return wave() != plain; }));
    EXPECT_EQ(model->board()->character, Character());
}

TEST_F(AppModelBoardsTest, theWaveOfTheEditorIsThatOfTheChosenSound) {
    ASSERT_TRUE(startToPlay());
    const std::vector<float> keys = wave();
    EXPECT_FALSE(keys.empty());
    EXPECT_NE(wave(Velocity::hard), keys);
    StudioState studio = model->studio();
    studio.editingRelease = true;
    model->setStudio(studio);
    EXPECT_EQ(wave(), keys) << "the clicks have no release";
    studio.editingRelease = false;
    studio.editingSoundID = "gone";
    model->setStudio(studio);
    EXPECT_EQ(wave(), keys);
}

TEST_F(AppModelBoardsTest, comparingPlaysTheVersionThatTheUserStartedFrom) {
    ASSERT_TRUE(startToPlay());
    const auto start = model->sound().bank();
    setRattle(0.9);
    scheduler.advance(150ms);
    ASSERT_TRUE(eventually([&] { return model->sound().bank() != start; }));
    const auto edited = model->sound().bank();
    model->setComparing(true);
    EXPECT_EQ(model->sound().bank(), start);
    model->setComparing(false);
    EXPECT_EQ(model->sound().bank(), edited);
    model->setComparing(true);
    setRattle(0.8);
    EXPECT_FALSE(model->comparing()) << "whoever edits wants to hear it";
}

TEST_F(AppModelBoardsTest, replacedBanksAreFreedHoweverTheyWereReplaced) {
    ASSERT_TRUE(startToPlay());
    std::vector<std::weak_ptr<const VoiceBank>> banks;
    const auto noteTheNext = [&] {
        const auto before = banks.empty() ? nullptr : banks.back().lock();
        scheduler.advance(150ms);
        const bool came =
            eventually([&] { return model->sound().bank() != before && !model->rendering(); });
        banks.push_back(model->sound().bank());
        return came;
    };
    const auto file = scratch / "sent.vornic";
    ASSERT_TRUE(exportBoard(file));
    ASSERT_TRUE(noteTheNext());
    for (int round = 1; round <= 3; ++round) {
        setRattle(0.2 * round);
        ASSERT_TRUE(noteTheNext());
        for (const bool comparing : {true, false, true, false}) {
            model->setComparing(comparing);
        }
        ASSERT_TRUE(previewBoard(file));
        ASSERT_TRUE(noteTheNext());
        model->files().drop();
        model->setVolume(0.1 * round); // nothing of this concerns the bank
        model->setStage({.placement = round == 2 ? Placement::close : Placement::desk});
        model->newBoard();
        ASSERT_TRUE(noteTheNext());
    }
    EXPECT_TRUE(eventually([&] {
        clock.advance(1.0);
        scheduler.advance(1000ms);
        return model->sound().retiredBanks() == 0;
    }));
    // A bank may have been noted twice, while the next one was not there yet.
    EXPECT_TRUE(std::ranges::all_of(banks, [&](const auto& bank) {
        return bank.expired() || bank.lock() == model->sound().bank();
    }));
}

TEST_F(AppModelBoardsTest, anEditThatNeedsNoRenderingIsHeardWithTheNextKey) {
    ASSERT_TRUE(startToPlay());
    model->setStage({.placement = Placement::close, .room = Room::dry});
    const auto bank = model->sound().bank();
    model->edit([](Board& board) { board.keys[std::to_string(FakeTap::key)].pan = 1.0; });
    ASSERT_TRUE(keysFollow());
    tap.press();
    ASSERT_TRUE(eventually([&] { return model->sound().core().pushedEvents() == 1; }));
    const auto block = output.render(512, clock.nanos());
    EXPECT_LT(std::abs(*std::ranges::max_element(block.left)), 1e-6F);
    EXPECT_GT(std::abs(*std::ranges::max_element(block.right)), 0.02F);
    EXPECT_EQ(model->sound().bank(), bank) << "nothing is rendered yet";
}

TEST_F(AppModelBoardsTest, adragOfASliderRendersOnceItRests) {
    std::atomic<int> builds{0};
    auto counted = options();
    counted.builder = [&](const Board& board, const SampleSource& library) {
        ++builds;
        return RenderService::build(board, library);
    };
    model.reset();
    model = std::make_unique<AppModel>(platform(), counted);
    ASSERT_TRUE(startToPlay());
    ASSERT_EQ(builds, 1);
    for (int step = 0; step < 10; ++step) {
        setRattle(0.5 + step / 100.0);
        scheduler.advance(100ms);
    }
    scheduler.run();
    EXPECT_EQ(builds, 1);
    const auto before = model->sound().bank();
    scheduler.advance(150ms);
    ASSERT_TRUE(eventually([&] { return model->sound().bank() != before; }));
    EXPECT_EQ(builds, 2);
    model.reset();
}

TEST_F(AppModelBoardsTest, keysAreHeardAndCountedWhileTheFirstBoardIsStillRendering) {
    std::latch rendering(1);
    std::latch go(1);
    auto slow = options();
    slow.builder = [&](const Board& board, const SampleSource& library) {
        rendering.count_down();
        go.wait();
        return RenderService::build(board, library);
    };
    model.reset();
    model = std::make_unique<AppModel>(platform(), slow);
    start();
    scheduler.advance(0ms);
    rendering.wait();
    for (int press = 1; press <= 100; ++press) {
        tap.press();
        ASSERT_TRUE(eventually([&] { return model->keys().keysHeard() == press; }));
    }
    EXPECT_TRUE(eventually([&] { return model->activity().lastCode() == FakeTap::key; }));
    EXPECT_EQ(model->lastRenderSeconds(), std::nullopt);
    go.count_down();
    EXPECT_TRUE(eventually([&] {
        tap.press();
        return heard();
    }));
    model.reset();
}

TEST_F(AppModelBoardsTest, aBoardGoesIntoAFileAndComesBackAsAnother) {
    start();
    setRattle(0.5);
    const Board sent = *model->board();
    const auto file = scratch / "sent.vornic";
    ASSERT_TRUE(exportBoard(file));
    EXPECT_FALSE(model->lastError());
    ASSERT_TRUE(importBoard(file));
    EXPECT_NE(model->board()->id, sent.id);
    EXPECT_EQ(model->board()->name, sent.name);
    EXPECT_EQ(model->board()->stabs.rattle, 0.5);
    EXPECT_FALSE(model->board()->builtIn);
    EXPECT_EQ(settings()["board"], model->board()->id);
    EXPECT_EQ(model->boards().size(), 3U);
}

TEST_F(AppModelBoardsTest, theUsersRecordingsTravelWithTheBoard) {
    start();
    const SampleInfo mine = model->library().addUser("Knock", LayerPart::bottomOut, std::nullopt,
                                                     std::vector<float>(4800, 0.25F));
    model->edit([&](Board& board) {
        board.sounds.front().press.layers.front().samples = {mine.id, "spring/regular-01"};
    });
    ASSERT_TRUE(exportBoard(scratch / "sent.vornic"));
    ASSERT_TRUE(importBoard(scratch / "sent.vornic"));
    const auto& samples = model->board()->sounds.front().press.layers.front().samples;
    ASSERT_EQ(samples.size(), 2U);
    EXPECT_NE(samples[0], mine.id);
    EXPECT_THAT(samples[0], StartsWith("user/"));
    EXPECT_EQ(samples[1], "spring/regular-01");
    EXPECT_TRUE(model->library().samples(samples[0]));
}

TEST_F(AppModelBoardsTest, whatCannotBeExchangedIsSaidInTheAgreedWords) {
    start();
    const std::string before = model->board()->id;
    EXPECT_FALSE(importBoard(scratch / "missing.vornic"));
    EXPECT_EQ(model->lastError(), "Couldn't read that file.");
    EXPECT_THAT(log.all(), HasSubstr((scratch / "missing.vornic").string()));
    EXPECT_FALSE(importBoard(scratch.write("notes.vornic", "{}")));
    EXPECT_EQ(model->lastError(), "That isn't a Vornic board file.");
    EXPECT_FALSE(exportBoard(scratch / "no/such/folder.vornic"));
    EXPECT_EQ(model->lastError(), "Couldn't save the board: No such file or directory");
    EXPECT_EQ(model->board()->id, before);
    EXPECT_EQ(model->boards().size(), 1U);
}

TEST_F(AppModelBoardsTest, aDamagedSettingsFileAndADamagedBoardAreNamed) {
    scratch.write("config/settings.json", "{");
    scratch.write("data/Boards/half.json", "{");
    start();
    EXPECT_THAT(log.all(), HasSubstr((scratch / "config/settings.damaged.json").string()));
    EXPECT_THAT(log.all(), HasSubstr((scratch / "data/Boards/half.json").string()));
    ASSERT_TRUE(model->lastError());
    model->dismissError();
    EXPECT_FALSE(model->lastError());
}

TEST_F(AppModelBoardsTest, aFullDiskGivesAMessageAndChangesNothingThatWasThere) {
    start();
    model->newBoard();
    model->setVolume(0.5);
    ASSERT_EQ(settings()["volume"], 0.5);
    {
        const SmallDisk disk(10);
        model->setVolume(0.25);
        waitForDisk();
        EXPECT_EQ(model->lastError(), "Couldn't save the settings: File too large");
        setRattle(0.9);
        waitForDisk();
        EXPECT_THAT(log.all(), HasSubstr("Couldn't save the board: File too large"));
    }
    EXPECT_EQ(model->volume(), 0.25);
    EXPECT_EQ(model->board()->stabs.rattle, 0.9);
    EXPECT_EQ(nlohmann::json::parse(readBytes(scratch / "config/settings.json"))["volume"], 0.5);
    restart();
    EXPECT_EQ(model->volume(), 0.25) << "at the end there was room again";
    EXPECT_EQ(model->board()->stabs.rattle, 0.9);
}

TEST_F(AppModelBoardsTest, aVolumeBeyondItsRangeCountsAsTheNearestEnd) {
    start();
    model->setVolume(7);
    EXPECT_EQ(model->volume(), 1);
    model->setVolume(std::nan(""));
    EXPECT_EQ(model->volume(), 1);
}

TEST_F(AppModelBoardsTest, theDiagnosticsFollowTheMachine) {
    output.facts.latencyMillis = 12.5;
    output.facts.bufferFrames = 128;
    ASSERT_TRUE(startToPlay());
    ASSERT_TRUE(eventually([&] {
        tap.press();
        return output.isRunning();
    }));
    scheduler.advance(1000ms);
    EXPECT_EQ(model->diagnostics().deviceMillis, 12.5);
    EXPECT_EQ(model->diagnostics().deviceBuffer, 128);
    EXPECT_TRUE(model->diagnostics().engineRunning);
    EXPECT_TRUE(model->diagnostics().lastRenderMillis);
}

TEST_F(AppModelBoardsTest, saysOnceThatTheAudioThreadIsAnOrdinaryOneNow) {
    ASSERT_TRUE(startToPlay());
    EXPECT_FALSE(model->diagnostics().realTimeLost);
    output.lostRealTime = true;
    scheduler.advance(3000ms);
    EXPECT_TRUE(model->diagnostics().realTimeLost);
    const std::string said = log.all();
    const std::size_t first = said.find("has lost its priority");
    EXPECT_NE(first, std::string::npos) << said;
    EXPECT_EQ(said.find("has lost its priority", first + 1), std::string::npos);
}

} // namespace
} // namespace vornic
