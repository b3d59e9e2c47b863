#include "VornicCore/foreign/ExportPack.h"

#include "VornicCore/render/BuildBoard.h"
#include "tests/VornicCore/foreign/PackMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace vornic {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Recordings final : public SampleSource {
  public:
    std::optional<std::vector<float>> samples(const std::string& id) const override {
        return testStroke(id == "a" ? 400 : id == "b" ? 900 : 1800);
    }
};

/// Letters play one sound with releases, the space bar another, 3 dB down.
Board testBoard() {
    const auto stroke = [](std::vector<std::string> ids) {
        return StrokeSpec({LayerSpec(LayerPart::bottomOut, std::move(ids), 0, 0, 0)});
    };
    SoundSpec keys("keys", "Keys", "#FFFFFF", stroke({"a", "b"}), stroke({"c"}), {}, {});
    SoundSpec space("space", "Space", "#FFFFFF", stroke({"b"}), std::nullopt, {}, {});
    keys.variations = 4;
    space.variations = 1;
    Assignment usual;
    usual.sound = "keys";
    Assignment wide;
    wide.sound = "space";
    wide.gainDb = -3;
    Board board("mine-1", "Mine & <yours>", "", "#FFFFFF", {}, {keys, space},
                {{KeyGroup::alphas, usual}, {KeyGroup::space, wide}});
    board.releaseByDefault = true;
    board.credits = {"Made here"};
    return board;
}

std::set<std::vector<float>> poolOf(const VoiceBank& bank, const std::string& key) {
    std::set<std::vector<float>> strokes;
    for (const Sample& sample : bank.pool(key)) {
        strokes.emplace(sample.data, sample.data + sample.length);
    }
    return strokes;
}

template <typename List>
std::set<std::vector<float>> asSet(const List& list) {
    return {list.begin(), list.end()};
}

class ExportPackTest : public testing::TestWithParam<ExportFormat> {
  protected:
    ScratchFolder folder_;
    Board board_ = testBoard();
    RenderedBoard rendered_ = buildBoard(board_, Recordings(), 2);
};

TEST_P(ExportPackTest, whatIsReadBackIsEqualToTheLastBit) {
    const bool hasVelocities = GetParam() != ExportFormat::mechvibes;
    const ExportedPack exported = exportPack(board_, *rendered_.bank, GetParam(), folder_ / "out");
    EXPECT_GT(exported.keys, 100U);
    const ConvertedPack back = onlyPack(folder_ / "out");
    EXPECT_EQ(back.report.keys, exported.keys);
    EXPECT_EQ(back.report.releases, exported.keys - 1) << "the space bar has none";
    EXPECT_THAT(back.report.notes.missing, IsEmpty());
    const auto expected = [&](const std::string& sound, bool stabilised) {
        std::set<std::vector<float>> strokes =
            poolOf(*rendered_.bank, VoiceBank::key(sound, stabilised, Velocity::medium));
        if (hasVelocities) {
            for (const Velocity velocity : {Velocity::soft, Velocity::hard}) {
                strokes.merge(poolOf(*rendered_.bank, VoiceBank::key(sound, stabilised, velocity)));
            }
        }
        return strokes;
    };
    for (const std::int64_t key : {0, 11, 18, 122}) {
        EXPECT_EQ(asSet(recordingsOf(back, key)), expected("keys", false)) << key;
        EXPECT_EQ(asSet(recordingsOf(back, key, true)),
                  poolOf(*rendered_.bank, VoiceBank::releaseKey("keys")));
    }
    EXPECT_EQ(asSet(recordingsOf(back, 36)), expected("keys", true)) << "a stabilised key";
    EXPECT_EQ(asSet(recordingsOf(back, 49)), expected("space", true));
    if (hasVelocities) {
        EXPECT_THAT(exported.lost, IsEmpty());
    } else {
        EXPECT_THAT(exported.lost,
                    testing::ElementsAre(HasSubstr("Fn has no number"), HasSubstr("one velocity"),
                                         HasSubstr("no levels and pitches")));
    }
    EXPECT_EQ(readBytes(folder_ / "out/CREDITS.txt"), "Made here\n");
}

TEST_P(ExportPackTest, aFolderWithSomethingInItIsRefused) {
    folder_.write("out/theirs", "x");
    EXPECT_THROW(exportPack(board_, *rendered_.bank, GetParam(), folder_ / "out"),
                 std::runtime_error);
    EXPECT_EQ(readBytes(folder_ / "out/theirs"), "x");
}

INSTANTIATE_TEST_SUITE_P(Formats, ExportPackTest,
                         testing::Values(ExportFormat::sfz, ExportFormat::decent,
                                         ExportFormat::mechvibes),
                         [](const auto& format) { return std::string(rawString(format.param)); });

} // namespace
} // namespace vornic
