// The built-in boards beside each other, as a user hears them who tries one after the other.

#include "Vornic/commands/TypeCommand.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include <ebur128.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vornic::packs {
namespace {

namespace fs = std::filesystem;

struct Stereo {
    std::vector<float> samples; // interleaved
    float peak = 0;
};

Stereo typed(const std::string& board, std::uint64_t seed) {
    const ScratchFolder folder;
    TypeRequest request;
    request.text = "The quick brown fox jumps over the lazy dog, again and again.";
    request.board = board;
    request.seed = seed;
    request.out = folder / "typed.wav";
    request.packs = VORNIC_BUILT_PACKS;
    typeIntoFile(request);
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, decltype(&sf_close)> file(
        sf_open(request.out.c_str(), SFM_READ, &info), &sf_close);
    Stereo stereo;
    EXPECT_EQ(info.channels, 2);
    stereo.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(file.get(), stereo.samples.data(), info.frames);
    for (const float x : stereo.samples) {
        stereo.peak = std::max(stereo.peak, std::abs(x));
    }
    return stereo;
}

// EBU R 128 programme loudness.
double loudness(const Stereo& stereo) {
    ebur128_state* state = ebur128_init(2, 48000, EBUR128_MODE_I);
    ebur128_add_frames_float(state, stereo.samples.data(), stereo.samples.size() / 2);
    double lufs = 0;
    ebur128_loudness_global(state, &lufs);
    ebur128_destroy(&state);
    return lufs;
}

TEST(BuiltInBoards, lieWithinThreeLoudnessUnitsAndNeverClip) {
    std::map<std::string, double> lufs;
    for (const char* board : {"deep", "soft", "plastic", "metal", "clicky", "spring"}) {
        // What is chosen at random takes part in it, so three times.
        for (const std::uint64_t seed : {1U, 2U, 3U}) {
            const Stereo stereo = typed(board, seed);
            lufs[board] += loudness(stereo) / 3;
            EXPECT_LT(stereo.peak, 0.99F) << board;
        }
    }
    const auto [least, most] =
        std::ranges::minmax_element(lufs, {}, [](const auto& entry) { return entry.second; });
    EXPECT_LE(most->second - least->second, 3)
        << most->first << " " << most->second << ", " << least->first << " " << least->second;
    for (const auto& [board, value] : lufs) {
        std::cout << board << ": " << value << " LUFS\n";
        EXPECT_GT(value, -40) << board;
    }
}

} // namespace
} // namespace vornic::packs
