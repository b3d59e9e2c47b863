#include "Vornic/commands/OfflinePlayer.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::int64_t letterF = 3;
constexpr double blockMillis = 128 / 48.0;

class OfflinePlayerTest : public ::testing::Test {
  protected:
    OfflinePlayerTest() {
        board.sounds.push_back(SoundSpec("keys", "Keys", "#000000", StrokeSpec{}, std::nullopt,
                                         SwitchParts{}, Character{}));
        useSound(std::vector<float>(1000, 0.1F));
    }

    /// Every press plays this, a soft one at half its level.
    void useSound(const std::vector<float>& frames) {
        auto fresh = std::make_shared<VoiceBank>();
        std::vector<float> soft = frames;
        std::ranges::for_each(soft, [](float& frame) { frame *= 0.5F; });
        for (const bool stabilised : {false, true}) {
            fresh->add(VoiceBank::key("keys", stabilised, Velocity::soft), {soft});
            fresh->add(VoiceBank::key("keys", stabilised, Velocity::medium), {frames});
            fresh->add(VoiceBank::key("keys", stabilised, Velocity::hard), {frames});
        }
        bank = std::move(fresh);
    }

    OfflineReport play(const std::vector<KeyEvent>& events) {
        PlaySettings settings;
        const auto shared = std::make_shared<const Board>(board);
        settings.played = {.board = shared, .rendered = shared, .bank = bank};
        settings.stage = stage;
        FileOutput output(file);
        return OfflinePlayer(options).play(
            events, std::make_shared<const PlaySettings>(settings), output,
            [this](const std::string& problem) { problems.push_back(problem); });
    }

    std::vector<float> written() const { return loadAudio(file).value_or(std::vector<float>()); }
    std::size_t firstSound() const {
        const std::vector<float> frames = written();
        return static_cast<std::size_t>(
            std::ranges::find_if(frames, [](float x) { return x != 0.0F; }) - frames.begin());
    }

    ScratchFolder folder;
    std::filesystem::path file = folder / "played.wav";
    Board board{"test", "Test", "", "#000000", BuildParts{}, {}, {}};
    StageSpec stage;
    std::shared_ptr<const VoiceBank> bank;
    OfflinePlayer::Options options{.seed = 1, .raw = true};
    std::vector<std::string> problems;
};

TEST_F(OfflinePlayerTest, anEventSoundsInTheFirstBlockAtOrAfterItsTime) {
    for (const auto& [millis, block] : {std::pair{0.0, 0U},
                                        {0.01, 1U},
                                        {3 * blockMillis, 3U},
                                        {3 * blockMillis + 0.001, 4U},
                                        {500.0, 188U}}) {
        play({{millis, letterF, true}});
        EXPECT_EQ(firstSound(), block * 128) << millis;
    }
}

TEST_F(OfflinePlayerTest, countsPressesAndWhatBecameOfThem) {
    const OfflineReport report =
        play({{0, letterF, true}, {20, letterF, false}, {40, 49, true}, {60, 49, false}});
    EXPECT_EQ(report.keys, 2);
    EXPECT_EQ(report.started, 2);
    EXPECT_EQ(report.dropped, 0);
    EXPECT_EQ(report.stolen, 0);
    const std::vector<float> frames = written();
    EXPECT_EQ(static_cast<std::size_t>(report.frames), frames.size());
    EXPECT_GT(report.peak, 0.1F);
}

TEST_F(OfflinePlayerTest, everyKeyOfABurstIsStartedOrDropped) {
    const OfflineReport report = play(std::vector<KeyEvent>(1000, {0, letterF, true}));
    EXPECT_EQ(report.keys, 1000);
    EXPECT_GT(report.stolen, 0);
    EXPECT_GT(report.dropped, 0);
    EXPECT_EQ(report.started + report.dropped, 1000);
}

TEST_F(OfflinePlayerTest, theTimeOfTheEventsIsThePaceOfTheHands) {
    board.feel.speedSensitivity = 1;
    std::vector<KeyEvent> fast;
    std::vector<KeyEvent> slow;
    for (int key = 0; key < 40; ++key) {
        fast.push_back({60.0 * key, letterF, true});
        slow.push_back({340.0 * key, letterF, true});
    }
    const auto endsWith = [this](const std::vector<KeyEvent>& events) {
        play(events);
        const std::vector<float> frames = written();
        const auto last = static_cast<std::size_t>(std::ceil(events.back().millis / blockMillis));
        return static_cast<double>(frames.at(last * 128 + 64));
    };
    EXPECT_LT(endsWith(fast), 0.7 * endsWith(slow));
}

TEST_F(OfflinePlayerTest, equalSeedsGiveEqualFiles) {
    const auto bytes = [this](std::uint64_t seed) {
        options = {.seed = seed, .raw = false};
        play({{0, letterF, true}, {200, 12, true}, {400, 49, true}});
        return readBytes(file);
    };
    const std::string first = bytes(7);
    EXPECT_EQ(first, bytes(7));
    EXPECT_NE(first, bytes(8));
}

TEST_F(OfflinePlayerTest, volumeAndRoomAreForWhatIsNotRaw) {
    const auto peakAt = [this](double volume, bool raw) {
        options = {.seed = 1, .raw = raw, .volume = volume};
        return play({{0, letterF, true}}).peak;
    };
    const float whole = peakAt(1.0, false);
    EXPECT_LT(peakAt(0.25, false), 0.5F * whole);
    EXPECT_EQ(peakAt(0.0, false), 0.0F);
    EXPECT_EQ(peakAt(0.0, true), peakAt(1.0, true));

    options = {.seed = 1, .raw = false, .volume = 1.0};
    stage.room = Room::dry;
    play({{0, letterF, true}});
    const std::size_t dry = written().size();
    stage.room = Room::studio;
    play({{0, letterF, true}});
    EXPECT_GT(written().size(), dry + 4800);
}

TEST_F(OfflinePlayerTest, endsWhenTheLastSoundHasDiedAway) {
    const OfflineReport raw = play({{100, letterF, true}});
    EXPECT_GE(raw.frames, 4800 + 1000 * 9 / 10);
    EXPECT_LE(raw.frames, 4800 + 1000 * 12 / 10 + 2 * 128);

    // A pause between two keys is no end; and a room may answer after a while.
    options.raw = false;
    stage.room = Room::dry;
    const OfflineReport pause = play({{0, letterF, true}, {3000, letterF, true}});
    EXPECT_EQ(pause.started, 2);
    EXPECT_GE(pause.frames, 3000 * 48 + 9600);
    EXPECT_LE(pause.frames, 3000 * 48 + 9600 + 4800);
}

TEST_F(OfflinePlayerTest, theLongestTailEndsAnyway) {
    Assignment low;
    low.pitch = -70;
    board.groups[KeyGroup::alphas] = low;
    useSound(std::vector<float>(48000, 0.1F));
    const OfflineReport report = play({{1000, letterF, true}});
    const double seconds = 1.0 + OfflinePlayer::longestTailSeconds;
    EXPECT_NEAR(static_cast<double>(report.frames) / 48000.0, seconds, 0.01);
}

TEST_F(OfflinePlayerTest, nothingTypedIsAShortSilence) {
    const OfflineReport report = play({});
    EXPECT_EQ(report.keys, 0);
    EXPECT_EQ(report.peak, 0.0F);
    EXPECT_EQ(static_cast<std::size_t>(report.frames), written().size());
    EXPECT_LT(report.frames, 9600);
}

TEST_F(OfflinePlayerTest, saysWhyAKeyStaysSilent) {
    Assignment loud;
    loud.gainDb = 1e300;
    board.groups[KeyGroup::alphas] = loud;
    const OfflineReport report = play({{0, letterF, true}, {50, letterF, true}, {90, 49, true}});
    EXPECT_EQ(report.keys, 3);
    EXPECT_EQ(report.started, 1);
    EXPECT_THAT(problems, ElementsAre(HasSubstr("gainDb")));
}

TEST_F(OfflinePlayerTest, aFileThatCannotBeWrittenIsAnErrorThatNamesIt) {
    file = folder / "missing" / "played.wav";
    try {
        play({{0, letterF, true}});
        FAIL() << "it was written";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr(file.string()));
    }
}

} // namespace
} // namespace vornic
