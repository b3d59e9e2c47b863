#include "VornicCore/effects/RoomReverb.h"

#include "VornicCore/effects/RoomPreset.h"

#include <algorithm>
#include <cmath>

namespace vornic {

namespace {

constexpr float fadeStep = 1.0F / static_cast<float>(RoomReverb::fadeFrames);
// Far above any mix of voices; what lies beyond is an error, not sound.
constexpr float loudestSend = 1e4F;

bool isQuiet(std::size_t frames, const float* sound) VORNIC_REALTIME {
    for (std::size_t i = 0; i < frames; ++i) {
        // A NaN is not quiet.
        if (!(std::abs(sound[i]) <= ReverbNetwork::silence)) {
            return false;
        }
    }
    return true;
}

void scale(std::size_t frames, float gain, float* sound) VORNIC_REALTIME {
    for (std::size_t i = 0; i < frames; ++i) {
        sound[i] *= gain;
    }
}

float admitted(float sample) VORNIC_REALTIME {
    return std::abs(sample) <= loudestSend ? sample : 0.0F;
}

} // namespace

void RoomReverb::enter(Room room, float send) VORNIC_REALTIME {
    room_ = room;
    if (room == Room::dry) {
        phase_ = Phase::bypassed;
        return;
    }
    network_.load(room);
    mix_ = static_cast<float>(roomPreset(room).mix);
    send_ = send;
    hearing_ = 1.0F;
    // The bypass ends only now that the room is complete.
    phase_ = send < 1.0F ? Phase::fadingIn : Phase::steady;
}

void RoomReverb::followTarget(bool silent) VORNIC_REALTIME {
    const Room target = room();
    if (phase_ == Phase::fresh) {
        enter(target, 1.0F);
    } else if (target != room_) {
        if (silent) {
            enter(target, 1.0F);
        } else if (phase_ == Phase::bypassed) {
            enter(target, 0.0F);
        } else {
            phase_ = Phase::fadingOut;
        }
    }
}

void RoomReverb::process(std::size_t frames, float* left, float* right) VORNIC_REALTIME {
    if (phase_ == Phase::bypassed && room() == Room::dry) {
        return;
    }
    const bool silent = isIdle() && isQuiet(frames, left) && isQuiet(frames, right);
    followTarget(silent);
    if (silent && phase_ != Phase::bypassed) {
        // Whatever fade was under way, nobody can hear where it stands.
        send_ = 1.0F;
        phase_ = Phase::steady;
        scale(frames, 1.0F - mix_, left);
        scale(frames, 1.0F - mix_, right);
        return;
    }
    for (std::size_t done = 0; done < frames && phase_ != Phase::bypassed;) {
        const std::size_t count = std::min(frames - done, ReverbNetwork::chunk);
        processChunk(count, left + done, right + done);
        done += count;
        if (phase_ == Phase::fadingIn && send_ >= 1.0F) {
            phase_ = Phase::steady;
        } else if (phase_ == Phase::fadingOut && hearing_ <= 0.0F) {
            enter(room(), 0.0F);
        }
    }
}

void RoomReverb::processChunk(std::size_t count, float* left, float* right) VORNIC_REALTIME {
    Chunk dry{};
    Chunk wet{};
    Chunk leftSend{};
    Chunk rightSend{};
    for (std::size_t i = 0; i < count; ++i) {
        if (phase_ == Phase::fadingIn) {
            send_ = std::min(send_ + fadeStep, 1.0F);
        } else if (phase_ == Phase::fadingOut) {
            hearing_ = std::max(hearing_ - fadeStep, 0.0F);
        }
        wet[i] = mix_ * hearing_;
        dry[i] = 1.0F - wet[i] * send_;
        leftSend[i] = send_ * admitted(left[i]);
        rightSend[i] = send_ * admitted(right[i]);
    }
    Chunk leftWet{};
    Chunk rightWet{};
    network_.process(count, leftSend.data(), rightSend.data(), leftWet.data(), rightWet.data());
    for (std::size_t i = 0; i < count; ++i) {
        left[i] = dry[i] * left[i] + wet[i] * leftWet[i];
        right[i] = dry[i] * right[i] + wet[i] * rightWet[i];
    }
}

void RoomReverb::reset() VORNIC_REALTIME {
    network_.clear();
    phase_ = Phase::fresh;
}

} // namespace vornic
