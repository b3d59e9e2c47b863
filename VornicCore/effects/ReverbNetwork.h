#pragma once

#include "VornicCore/effects/DelayLine.h"
#include "VornicCore/effects/RoomPreset.h"
#include "VornicCore/realtime/RealTime.h"

#include <array>
#include <cstddef>
#include <vector>

namespace vornic {

/// The wet sound of a room: early reflections, then a feedback delay network of 16 lines that an
/// orthogonal (Hadamard) matrix mixes, each with a one-pole low-pass in its loop (after J.-M. Jot's
/// absorbent filters), so that the tail is dense, decays as the preset says and darkens on the way.
///
/// A pulse in both channels gives a response of unit energy, mean of the two channels. Sound below
/// about 90 Hz is kept out: no constant offset ever circulates. Memory is allocated at construction
/// only. Thread: real-time, once it is made.
class ReverbNetwork {
  public:
    /// The most frames that one call of process() takes.
    static constexpr std::size_t chunk = 32;
    /// Sound whose magnitude stays at or below this (-140 dBFS) counts as silence.
    static constexpr float silence = 1e-7F;

    ReverbNetwork();

    /// Becomes the given room, with an empty tail.
    void load(Room room) VORNIC_REALTIME;

    /// Empties the tail.
    void clear() VORNIC_REALTIME;

    /// Makes the wet sound of `count` frames (1 to `chunk`) of finite input. The input arrays hold
    /// `chunk` frames, of which those from `count` on are ignored; so do the outputs.
    void process(std::size_t count, const float* left, const float* right, float* wetLeft,
                 float* wetRight) VORNIC_REALTIME;

    /// True when nothing has entered and nothing has circulated for longer than the longest path:
    /// from silence in, silence comes out.
    [[nodiscard]] bool isSilent() const VORNIC_REALTIME { return quietFrames_ > memoryFrames_; }

  private:
    static constexpr std::size_t lines = RoomPreset::lines;
    static constexpr std::size_t diffusers = RoomPreset::diffusers;
    using Chunk = std::array<float, chunk>;

    struct Tap {
        std::size_t delay = 0;
        float gain = 0.0F;
        bool crossed = false;
    };

    /// Everything about one room that takes logarithms to know, worked out at construction.
    struct Coefficients {
        std::array<float, lines> gain{};
        std::array<float, lines> pole{};
        std::array<Tap, RoomPreset::reflections> left{};
        std::array<Tap, RoomPreset::reflections> right{};
        float lowPass = 0.0F;
        float lateGain = 0.0F;
    };

    /// What a channel passes before it enters the room.
    struct Channel {
        DelayLine early;
        std::array<DelayLine, diffusers> diffusion;
        float lowPass = 0.0F;
        float highPass = 0.0F;
    };

    static Coefficients coefficients(const RoomPreset& preset);
    static void diffuse(DelayLine& line, std::size_t count, Chunk& sound) VORNIC_REALTIME;
    void condition(Channel& channel, std::size_t count, const float* in,
                   Chunk& out) const VORNIC_REALTIME;
    void readLines(std::size_t count, std::array<Chunk, lines>& sound) VORNIC_REALTIME;
    bool writeLines(std::size_t count, const Chunk& left, const Chunk& right,
                    std::array<Chunk, lines>& sound) VORNIC_REALTIME;

    std::array<Coefficients, 3> rooms_;
    const Coefficients* now_ = nullptr;
    Channel left_;
    Channel right_;
    std::vector<DelayLine> lines_;
    float highPass_;
    std::array<float, lines> damping_{};
    std::size_t memoryFrames_ = 0;
    std::size_t quietFrames_ = 0;
};

} // namespace vornic
