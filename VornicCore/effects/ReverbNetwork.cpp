#include "VornicCore/effects/ReverbNetwork.h"

#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic {

namespace {

// Long enough for the latest early reflection (21.75 ms) and one chunk.
constexpr std::size_t earlyCapacity = 1200;
constexpr std::size_t diffuserCapacity = 384;
constexpr std::size_t lineCapacity = 2048;
// Allpass gain: 0.6 spreads a click over a few milliseconds without colouring the room.
constexpr float diffuserGain = 0.6F;
constexpr double highPassHz = 90.0;

constexpr std::array wetRooms{Room::desk, Room::studio, Room::wood};

std::size_t indexOf(Room room) VORNIC_REALTIME {
    const auto* found = std::ranges::find(wetRooms, room);
    return found == wetRooms.end() ? 0 : static_cast<std::size_t>(found - wetRooms.begin());
}

float onePole(double hz) {
    return static_cast<float>(1.0 - std::exp(-2.0 * std::numbers::pi * hz / DSP::sampleRate));
}

// The gain by which a sound must fall in `frames` to fall by 60 dB in `seconds`.
double loopGain(std::size_t frames, double seconds) {
    return std::pow(10.0, -3.0 * static_cast<double>(frames) / (seconds * DSP::sampleRate));
}

// The pole p of (1 - p) / (1 - p/z) whose gain at `hz` is `gain`: with r = gain squared and
// c = cos w, (1 - p)^2 = r (1 - 2pc + p^2).
double poleFor(double gain, double hz) {
    const double r = gain * gain;
    const double c = std::cos(2.0 * std::numbers::pi * hz / DSP::sampleRate);
    const double b = 1.0 - r * c;
    const double a = 1.0 - r;
    return a > 0.0 ? (b - std::sqrt(b * b - a * a)) / a : 0.0;
}

// One radix-2 step of the fast Walsh-Hadamard transform over whole chunks of sound.
template <std::size_t Lines, typename Chunk>
void butterflies(std::array<Chunk, Lines>& sound, std::size_t stride) VORNIC_REALTIME {
    for (std::size_t first = 0; first < Lines; first += 2 * stride) {
        for (std::size_t line = first; line < first + stride; ++line) {
            Chunk& a = sound[line];
            Chunk& b = sound[line + stride];
            for (std::size_t i = 0; i < ReverbNetwork::chunk; ++i) {
                const float sum = a[i] + b[i];
                b[i] = a[i] - b[i];
                a[i] = sum;
            }
        }
    }
}

// Runs the one-pole low-passes of four lines. Such a filter waits for its own last output: four
// side by side keep the processor busy, and as plain variables they stay in registers.
template <typename Chunk>
void damp(std::size_t count, const float* gain, const float* pole, float* state,
          Chunk* sound) VORNIC_REALTIME {
    const float gainA = gain[0];
    const float gainB = gain[1];
    const float gainC = gain[2];
    const float gainD = gain[3];
    const float poleA = pole[0];
    const float poleB = pole[1];
    const float poleC = pole[2];
    const float poleD = pole[3];
    float a = state[0];
    float b = state[1];
    float c = state[2];
    float d = state[3];
    for (std::size_t i = 0; i < count; ++i) {
        a = gainA * sound[0][i] + poleA * a;
        b = gainB * sound[1][i] + poleB * b;
        c = gainC * sound[2][i] + poleC * c;
        d = gainD * sound[3][i] + poleD * d;
        sound[0][i] = a;
        sound[1][i] = b;
        sound[2][i] = c;
        sound[3][i] = d;
    }
    state[0] = a;
    state[1] = b;
    state[2] = c;
    state[3] = d;
}

} // namespace

ReverbNetwork::Coefficients ReverbNetwork::coefficients(const RoomPreset& preset) {
    Coefficients result;
    // The matrix of ones and minus ones grows energy by the number of lines.
    const double mixing = 1.0 / std::sqrt(static_cast<double>(lines));
    for (std::size_t i = 0; i < lines; ++i) {
        const double low = loopGain(preset.delays[i], preset.decay);
        const double high = loopGain(preset.delays[i], preset.highDecay);
        const double pole = poleFor(high / low, RoomPreset::highHz);
        result.pole[i] = static_cast<float>(pole);
        result.gain[i] = static_cast<float>(mixing * low * (1.0 - pole));
    }
    const double earlyGain = std::sqrt(preset.earlyShare / preset.earlyEnergy);
    const auto tap = [earlyGain](const WallReflection& reflection) {
        return Tap{.delay = static_cast<std::size_t>(
                       std::lround(reflection.delayMs * DSP::sampleRate / 1000.0)),
                   .gain = static_cast<float>(earlyGain * reflection.gain),
                   .crossed = reflection.crossed};
    };
    std::ranges::transform(preset.left, result.left.begin(), tap);
    std::ranges::transform(preset.right, result.right.begin(), tap);
    result.lowPass = onePole(preset.lowPassHz);
    result.lateGain = static_cast<float>(std::sqrt((1.0 - preset.earlyShare) / preset.lateEnergy));
    return result;
}

ReverbNetwork::ReverbNetwork()
    : left_{.early = DelayLine(earlyCapacity),
            .diffusion = {DelayLine(diffuserCapacity), DelayLine(diffuserCapacity),
                          DelayLine(diffuserCapacity)}},
      right_(left_), lines_(lines, DelayLine(lineCapacity)), highPass_(onePole(highPassHz)) {
    std::ranges::transform(wetRooms, rooms_.begin(),
                           [](Room room) { return coefficients(roomPreset(room)); });
    load(Room::desk);
}

void ReverbNetwork::load(Room room) VORNIC_REALTIME {
    const RoomPreset& preset = roomPreset(room);
    now_ = &rooms_[indexOf(room)];
    memoryFrames_ = earlyCapacity;
    for (std::size_t i = 0; i < lines; ++i) {
        lines_[i].restart(preset.delays[i]);
        memoryFrames_ = std::max(memoryFrames_, preset.delays[i]);
    }
    for (std::size_t i = 0; i < diffusers; ++i) {
        left_.diffusion[i].restart(preset.leftDiffusers[i]);
        right_.diffusion[i].restart(preset.rightDiffusers[i]);
        memoryFrames_ += std::max(preset.leftDiffusers[i], preset.rightDiffusers[i]);
    }
    clear();
}

void ReverbNetwork::clear() VORNIC_REALTIME {
    for (Channel* channel : {&left_, &right_}) {
        channel->early.clear();
        for (DelayLine& diffuser : channel->diffusion) {
            diffuser.clear();
        }
        channel->lowPass = 0.0F;
        channel->highPass = 0.0F;
    }
    for (DelayLine& line : lines_) {
        line.clear();
    }
    damping_.fill(0.0F);
    quietFrames_ = memoryFrames_ + 1;
}

void ReverbNetwork::condition(Channel& channel, std::size_t count, const float* in,
                              Chunk& out) const VORNIC_REALTIME {
    float low = channel.highPass;
    float soft = channel.lowPass;
    for (std::size_t i = 0; i < count; ++i) {
        low += highPass_ * (in[i] - low);
        soft += now_->lowPass * (in[i] - low - soft);
        out[i] = soft;
    }
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(count), out.end(), 0.0F);
    channel.highPass = low;
    channel.lowPass = soft;
    channel.early.write(count, out.data());
}

void ReverbNetwork::diffuse(DelayLine& line, std::size_t count, Chunk& sound) VORNIC_REALTIME {
    Chunk delayed{};
    line.read(count, delayed.data());
    for (std::size_t i = 0; i < chunk; ++i) {
        const float inner = sound[i] + diffuserGain * delayed[i];
        sound[i] = delayed[i] - diffuserGain * inner;
        delayed[i] = inner;
    }
    line.write(count, delayed.data());
}

void ReverbNetwork::readLines(std::size_t count, std::array<Chunk, lines>& sound) VORNIC_REALTIME {
    for (std::size_t i = 0; i < lines; ++i) {
        lines_[i].read(count, sound[i].data());
        std::fill(sound[i].begin() + static_cast<std::ptrdiff_t>(count), sound[i].end(), 0.0F);
    }
    for (std::size_t i = 0; i < lines; i += 4) {
        damp(count, now_->gain.data() + i, now_->pole.data() + i, damping_.data() + i,
             sound.data() + i);
    }
}

bool ReverbNetwork::writeLines(std::size_t count, const Chunk& left, const Chunk& right,
                               std::array<Chunk, lines>& sound) VORNIC_REALTIME {
    // A largest value per frame of the chunk: the frames do not wait for each other.
    Chunk loudest{};
    for (std::size_t i = 0; i < lines; ++i) {
        const Chunk& in = i % 2 == 0 ? left : right;
        const float sign = i % 4 < 2 ? 1.0F : -1.0F;
        for (std::size_t frame = 0; frame < chunk; ++frame) {
            const float entering = sound[i][frame] + sign * in[frame];
            sound[i][frame] = entering;
            loudest[frame] = std::max(loudest[frame], std::abs(entering));
        }
        lines_[i].write(count, sound[i].data());
    }
    return std::ranges::max(loudest) <= silence;
}

void ReverbNetwork::process(std::size_t count, const float* left, const float* right,
                            float* wetLeft, float* wetRight) VORNIC_REALTIME {
    Chunk leftSound;
    Chunk rightSound;
    condition(left_, count, left, leftSound);
    condition(right_, count, right, rightSound);
    std::array<Chunk, lines> sound;
    readLines(count, sound);
    for (std::size_t stride = 1; stride < lines; stride *= 2) {
        butterflies(sound, stride);
    }
    // Two rows of an orthogonal matrix: each ear hears all lines, yet the two have nothing in
    // common.
    for (std::size_t i = 0; i < chunk; ++i) {
        wetLeft[i] = now_->lateGain * sound[5][i];
        wetRight[i] = now_->lateGain * sound[10][i];
    }
    for (const Tap& tap : now_->left) {
        (tap.crossed ? right_ : left_).early.addTap(tap.delay, tap.gain, count, wetLeft);
    }
    for (const Tap& tap : now_->right) {
        (tap.crossed ? left_ : right_).early.addTap(tap.delay, tap.gain, count, wetRight);
    }
    for (std::size_t i = 0; i < diffusers; ++i) {
        diffuse(left_.diffusion[i], count, leftSound);
        diffuse(right_.diffusion[i], count, rightSound);
    }
    const bool quiet = writeLines(count, leftSound, rightSound, sound);
    if (!quiet) {
        quietFrames_ = 0;
    } else if (!isSilent()) {
        quietFrames_ += count;
        if (isSilent()) {
            // From here on silence is exact.
            clear();
        }
    }
}

} // namespace vornic
