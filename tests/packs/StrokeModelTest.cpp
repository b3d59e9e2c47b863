#include "packs/model/StrokeModel.h"

#include "tests/support/ScratchFolder.h"

#include "packs/analysis/ClassFeatures.h"
#include "packs/model/Draws.h"
#include "packs/model/KeyPlaces.h"
#include "packs/model/ModelledPack.h"
#include "packs/recorded/StrokeShape.h"
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vornic::packs {
namespace {

namespace fs = std::filesystem;

PackTable tableOf(const std::string& id) {
    std::string error;
    const auto table = readPackTable(fs::path(VORNIC_PACK_TABLES) / (id + ".json"), error);
    EXPECT_TRUE(table) << error;
    return table.value_or(PackTable());
}

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(StrokeModel, givesEqualStrokesForEqualTables) {
    const PackTable table = tableOf("deep");
    EXPECT_EQ(makeStrokes(table, "space"), makeStrokes(table, "space"));
}

TEST(StrokeModel, givesOtherStrokesForAnotherSeed) {
    PackTable table = tableOf("deep");
    const auto before = makeStrokes(table, "space");
    table.seed += 1;
    EXPECT_NE(makeStrokes(table, "space").front(), before.front());
}

TEST(StrokeModel, knowsNoOtherClasses) {
    EXPECT_TRUE(makeStrokes(tableOf("deep"), "escape").empty());
    EXPECT_TRUE(keyPlaces("escape").empty());
}

TEST(StrokeModel, aClickComesInSeveralBurstsBeforeTheBottom) {
    const auto features = classFeaturesOf(makeStrokes(tableOf("clicky"), "regular"));
    EXPECT_GE(features.scalars.at("n_events").median, 3);
    EXPECT_GT(features.events.front().centroidHz.median, 5000);
    EXPECT_GT(features.events.front().centroidHz.median, features.events.at(3).centroidHz.median);
}

TEST(StrokeModel, modesStandOutOfTheResidue) {
    PackTable table = tableOf("soft");
    for (ModeTable& mode : table.find("regular")->modes) {
        mode.part = 0.85;
        mode.cents = 0;
    }
    const double strong =
        classFeaturesOf(makeStrokes(table, "regular")).scalars.at("tonality_db").median;
    for (ModeTable& mode : table.find("regular")->modes) {
        mode.part = 0;
    }
    const double none =
        classFeaturesOf(makeStrokes(table, "regular")).scalars.at("tonality_db").median;
    EXPECT_GT(strong, none + 0.3);
}

TEST(StrokeModel, aLevelOfTheTableIsTheStrokes) {
    PackTable table = tableOf("deep");
    const auto levelOf = [&] {
        return classFeaturesOf(makeStrokes(table, "regular")).level->median;
    };
    const double before = levelOf();
    table.find("regular")->levelDb += 6;
    EXPECT_NEAR(levelOf(), before + 6, 0.01);
}

TEST(ModelledPack, isMadeOfTheSameBytesEveryTime) {
    const ScratchFolder folder;
    PackTable table = tableOf("clicky");
    std::erase_if(table.classes, [](const ClassTable& keyClass) {
        return keyClass.name != "regular" && keyClass.name != "space";
    });
    for (const char* place : {"one", "two"}) {
        const ModelledPack pack = makePack(table, folder / place);
        EXPECT_EQ(pack.error, "");
        EXPECT_EQ(pack.written, 32U);
    }
    std::size_t files = 0;
    for (const auto& entry : fs::directory_iterator(folder / "one")) {
        ++files;
        EXPECT_EQ(bytesOf(entry.path()), bytesOf(folder / "two" / entry.path().filename()));
    }
    EXPECT_EQ(files, 33U);
}

TEST(ModelledPack, replacesWhatWasThere) {
    const ScratchFolder folder;
    fs::create_directories(folder / "pack");
    folder.write("pack/regular-99.wav", "left over");
    PackTable table = tableOf("deep");
    std::erase_if(table.classes,
                  [](const ClassTable& keyClass) { return keyClass.name != "regular"; });
    EXPECT_EQ(makePack(table, folder / "pack").error, "");
    EXPECT_FALSE(fs::exists(folder / "pack/regular-99.wav"));
}

TEST(ModelledPack, needsARegularPress) {
    const ScratchFolder folder;
    PackTable table = tableOf("deep");
    table.classes.clear();
    EXPECT_NE(makePack(table, folder / "pack").error, "");
    EXPECT_FALSE(fs::exists(folder / "pack/pack.json"));
}

TEST(Draws, areSpreadEvenlyOverTheStrokes) {
    constexpr std::size_t count = 20;
    std::vector<double> drawn;
    for (std::size_t i = 0; i < count; ++i) {
        drawn.push_back(Draws(7, i, count).even(3));
    }
    std::ranges::sort(drawn);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_NEAR(drawn[i], (static_cast<double>(i) + 0.5) / count, 0.5 / count);
    }
}

TEST(Draws, normalHasTheQuantilesOfTheNormalDistribution) {
    EXPECT_NEAR(normalQuantile(0.5), 0, 1e-6);
    EXPECT_NEAR(normalQuantile(0.8413447), 1, 1e-5);
    EXPECT_NEAR(normalQuantile(0.1586553), -1, 1e-5);
    EXPECT_EQ(normalQuantile(0.999), normalQuantile(0.98));
}

} // namespace
} // namespace vornic::packs
