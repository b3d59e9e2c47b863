#include "VornicCore/recordings/RecordedBank.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vornic {

namespace {

std::vector<std::vector<float>> recordingsOf(const StrokeSpec& stroke,
                                             const RecordingLookup& recording) {
    const bool onlySolo = std::ranges::any_of(stroke.layers, &LayerSpec::solo);
    std::vector<std::vector<float>> recordings;
    for (const LayerSpec& layer : stroke.layers) {
        if (layer.muted || (onlySolo && !layer.solo)) {
            continue;
        }
        for (const std::string& id : layer.samples) {
            if (auto samples = recording(id)) {
                recordings.push_back(*std::move(samples));
            }
        }
    }
    return recordings;
}

} // namespace

VoiceBank recordedBank(const Board& board, const RecordingLookup& recording) {
    VoiceBank bank;
    for (const SoundSpec& sound : board.sounds) {
        const auto presses = recordingsOf(sound.press, recording);
        for (const bool stabilised : {false, true}) {
            for (const Velocity velocity : allVelocities) {
                bank.add(VoiceBank::key(sound.id, stabilised, velocity), presses);
            }
        }
        if (sound.release) {
            bank.add(VoiceBank::releaseKey(sound.id), recordingsOf(*sound.release, recording));
        }
    }
    return bank;
}

} // namespace vornic
