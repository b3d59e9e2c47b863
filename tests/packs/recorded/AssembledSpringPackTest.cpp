// The pack as the build made it from the installed recordings.

#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/board/BuiltInBoards.h"
#include "VornicCore/packs/SoundPack.h"
#include "VornicCore/render/BuildBoard.h"
#include "tests/support/Required.h"

#include "packs/recorded/StrokeShape.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace vornic::packs {
namespace {

namespace fs = std::filesystem;

SoundPack springPack() {
    const auto pack = SoundPack::load(fs::path(VORNIC_BUILT_PACKS) / "spring");
    EXPECT_TRUE(pack);
    return pack.value_or(SoundPack{});
}

// Every file with the stroke it holds.
std::vector<std::pair<fs::path, Stroke>> allFiles(const SoundPack& pack) {
    std::vector<std::pair<fs::path, Stroke>> files;
    for (const auto& [keyClass, presses] : pack.files) {
        for (const fs::path& file : presses) {
            files.emplace_back(file, Stroke::press);
        }
    }
    for (const fs::path& file : pack.releaseFiles) {
        files.emplace_back(file, Stroke::release);
    }
    return files;
}

TEST(AssembledSpringPack, hasStrokesOfEveryClass) {
    const SoundPack pack = springPack();
    EXPECT_EQ(pack.id(), "spring");
    EXPECT_EQ(pack.files.size(), 5U);
    EXPECT_GE(pack.files.at(KeyClass::regular).size(), 24U);
    EXPECT_GE(pack.releaseFiles.size(), 24U);
}

TEST(AssembledSpringPack, everyStrokeSoundsAtOnceAndWithinRange) {
    for (const auto& [file, kind] : allFiles(springPack())) {
        const auto samples = required(loadAudio(file));
        // A release may begin with the spring's return, faint before the key cap's stop.
        EXPECT_LE(strokeOnset(samples, kind),
                  kind == Stroke::press ? millisecond * 3 / 2 : 20 * millisecond)
            << file;
        EXPECT_GE(samples.size(), 160 * millisecond) << file;
        const double peakDb = decibels(static_cast<double>(peak(samples)));
        EXPECT_LE(peakDb, -0.99) << file;
        EXPECT_GE(peakDb, -20) << file;
        EXPECT_FALSE(holdsSecondStroke(samples)) << file;
        EXPECT_LT(std::abs(samples.back()), 1e-4F) << file;
    }
}

TEST(AssembledSpringPack, levelsAreConsistent) {
    const SoundPack pack = springPack();
    for (const auto& [keyClass, presses] : pack.files) {
        for (const fs::path& file : presses) {
            EXPECT_NEAR(strokeLevel(required(loadAudio(file))), -24,
                        keyClass == KeyClass::regular ? 0.1 : 3)
                << file;
        }
    }
    for (const fs::path& file : pack.releaseFiles) {
        EXPECT_NEAR(strokeLevel(required(loadAudio(file))), -30, 0.1) << file;
    }
}

TEST(AssembledSpringPack, isAtMostTwelveMegabytes) {
    std::uintmax_t bytes = 0;
    for (const auto& [file, kind] : allFiles(springPack())) {
        bytes += fs::file_size(file);
    }
    EXPECT_LE(bytes, 12'000'000U);
}

TEST(AssembledSpringPack, fillsEveryPoolOfItsBoard) {
    const std::vector packs{springPack()};
    const SampleLibrary library(packs);
    const std::vector<Board> boards = BuiltInBoards::make(packs);
    ASSERT_EQ(boards.size(), 1U);
    const RenderedBoard rendered = buildBoard(boards.front(), library, 2);
    EXPECT_THAT(rendered.messages, ::testing::IsEmpty());
    for (const SoundSpec& sound : boards.front().sounds) {
        const auto variations = static_cast<std::size_t>(sound.variations);
        for (const Velocity velocity : allVelocities) {
            EXPECT_EQ(rendered.bank->pool(VoiceBank::key(sound.id, false, velocity)).size(),
                      variations)
                << sound.id;
        }
        EXPECT_EQ(rendered.bank->pool(VoiceBank::releaseKey(sound.id)).size(), variations)
            << sound.id;
    }
    // The wide keys' sounds have pools of their own for the rattle of their stabilisers.
    for (const char* const sound : {"space", "enter", "back", "mods"}) {
        EXPECT_FALSE(rendered.bank->pool(VoiceBank::key(sound, true, Velocity::medium)).empty())
            << sound;
    }
}

} // namespace
} // namespace vornic::packs
