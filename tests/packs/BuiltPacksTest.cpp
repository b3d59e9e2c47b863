// The packs as the build made them.

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/packs/SoundPack.h"
#include "tests/support/Required.h"

#include "packs/recorded/StrokeShape.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numeric>
#include <set>

namespace vornic::packs {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::vector<SoundPack> builtPacks() {
    return SoundPack::all(VORNIC_BUILT_PACKS);
}

// Those whose strokes are all made by the model.
std::vector<SoundPack> modelledPacks() {
    std::vector<SoundPack> packs = builtPacks();
    std::erase_if(packs, [](const SoundPack& pack) {
        return pack.manifest.credit.find("not recorded") == std::string::npos;
    });
    return packs;
}

std::vector<fs::path> pressesOf(const SoundPack& pack) {
    std::vector<fs::path> files;
    for (const auto& [keyClass, presses] : pack.files) {
        files.insert(files.end(), presses.begin(), presses.end());
    }
    return files;
}

std::vector<std::vector<float>> loaded(const std::vector<fs::path>& files) {
    std::vector<std::vector<float>> strokes;
    for (const fs::path& file : files) {
        strokes.push_back(required(loadAudio(file)));
    }
    return strokes;
}

// Largest magnitude of the normalised cross-correlation within 1 ms.
double likeness(const std::vector<float>& a, const std::vector<float>& b) {
    const auto energy = [](const std::vector<float>& x) {
        return std::inner_product(x.begin(), x.end(), x.begin(), 0.0);
    };
    double most = 0;
    for (std::size_t lag = 0; lag <= millisecond; ++lag) {
        for (const auto& [first, second] : {std::pair(&a, &b), std::pair(&b, &a)}) {
            const std::size_t count = std::min(first->size() - lag, second->size());
            const double sum = std::inner_product(
                second->begin(), second->begin() + static_cast<std::ptrdiff_t>(count),
                first->begin() + static_cast<std::ptrdiff_t>(lag), 0.0);
            most = std::max(most, std::abs(sum));
        }
    }
    return most / std::sqrt(energy(a) * energy(b));
}

double mostAlike(const std::vector<std::vector<float>>& strokes) {
    double most = 0;
    for (std::size_t i = 0; i < strokes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            most = std::max(most, likeness(strokes[i], strokes[j]));
        }
    }
    return most;
}

TEST(BuiltPacks, areSix) {
    std::vector<std::string> ids;
    for (const SoundPack& pack : builtPacks()) {
        ids.push_back(pack.id());
    }
    EXPECT_THAT(ids, ElementsAre("deep", "soft", "plastic", "metal", "clicky", "spring"));
}

TEST(BuiltPacks, sayThatTheyAreModelledAndAfterWhat) {
    EXPECT_GE(modelledPacks().size(), 5U);
    for (const SoundPack& pack : modelledPacks()) {
        EXPECT_THAT(pack.manifest.credit, testing::StartsWith("Modelled after measurements of "))
            << pack.id();
    }
}

TEST(BuiltPacks, holdEnoughStrokesOfEveryClass) {
    for (const SoundPack& pack : modelledPacks()) {
        EXPECT_GE(pack.files.at(KeyClass::regular).size(), 24U) << pack.id();
        EXPECT_GE(pack.files.at(KeyClass::space).size(), 6U) << pack.id();
        EXPECT_GE(pack.files.at(KeyClass::enter).size(), 6U) << pack.id();
        EXPECT_GE(pack.files.at(KeyClass::backspace).size(), 6U) << pack.id();
        EXPECT_GE(pack.files.at(KeyClass::modifier).size(), 8U) << pack.id();
        EXPECT_GE(pack.releaseFiles.size(), 24U) << pack.id();
    }
}

TEST(BuiltPacks, soundAtOnceLastLongEnoughAndNeverClip) {
    for (const SoundPack& pack : modelledPacks()) {
        for (const auto& stroke : loaded(pressesOf(pack))) {
            EXPECT_GE(stroke.size(), 160 * millisecond) << pack.id();
        }
        std::vector<fs::path> files = pressesOf(pack);
        files.insert(files.end(), pack.releaseFiles.begin(), pack.releaseFiles.end());
        for (const fs::path& file : files) {
            const auto stroke = required(loadAudio(file));
            EXPECT_LE(decibels(static_cast<double>(peak(stroke))), -0.99) << file;
            EXPECT_GE(decibels(static_cast<double>(peak(stroke))), -45) << file;
            EXPECT_LE(std::abs(stroke.back()), 1e-4F) << file;
            EXPECT_LE(std::abs(stroke.front()), 1e-4F) << file;
            const float loud = peak(stroke) / 32;
            const auto heard =
                std::ranges::find_if(stroke, [&](float x) { return std::abs(x) > loud; });
            EXPECT_LE(heard - stroke.begin(), 30 * std::ptrdiff_t{millisecond}) << file;
        }
    }
}

TEST(BuiltPacks, strokesOfOnePackAreNoCopiesOfEachOther) {
    for (const SoundPack& pack : modelledPacks()) {
        EXPECT_LT(mostAlike(loaded(pack.files.at(KeyClass::regular))), 0.95) << pack.id();
        EXPECT_LT(mostAlike(loaded(pack.files.at(KeyClass::space))), 0.95) << pack.id();
        EXPECT_LT(mostAlike(loaded(pack.releaseFiles)), 0.95) << pack.id();
    }
}

TEST(BuiltPacks, differInLevelAsTheKeysOfAKeyboardDo) {
    for (const SoundPack& pack : modelledPacks()) {
        std::vector<double> levels;
        for (const auto& stroke : loaded(pack.files.at(KeyClass::regular))) {
            levels.push_back(decibels(rms(stroke)));
        }
        const auto [least, most] = std::ranges::minmax(levels);
        EXPECT_GT(most - least, 3) << pack.id();
        EXPECT_LT(most - least, 20) << pack.id();
    }
}

TEST(BuiltPacks, takeLittleRoom) {
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(VORNIC_BUILT_PACKS)) {
        bytes += entry.is_regular_file() ? entry.file_size() : 0;
    }
    EXPECT_LE(bytes, 12'000'000U);
}

} // namespace
} // namespace vornic::packs
