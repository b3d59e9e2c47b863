#include "VornicCore/render/JobLimits.h"

#include "VornicCore/base/ReadableText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

std::string text(double value) {
    if (std::isnan(value)) {
        return "not a number";
    }
    std::array<char, 32> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

/// Moves values into their limits and notes it.
class Limiter {
  public:
    explicit Limiter(const RenderJob& job)
        : stroke_("Sound \"" + readable(job.sound.name) + "\", " +
                  (job.isRelease ? "release" : "press")) {}

    void range(double& value, double lowest, double highest, std::string_view field) {
        const double neutral = std::clamp(0.0, lowest, highest);
        const double within = std::isnan(value) ? neutral : std::clamp(value, lowest, highest);
        if (within != value) {
            note(field, text(value), text(within));
            value = within;
        }
    }

    void either(double& value, double limit, std::string_view field) {
        range(value, -limit, limit, field);
    }

    template <typename Item>
    void count(std::vector<Item>& items, std::size_t most, std::string_view field) {
        if (items.size() > most) {
            note(field, std::to_string(items.size()) + " long", std::to_string(most) + " long");
            items.resize(most);
        }
    }

    void note(std::string_view field, const std::string& was, const std::string& is) {
        messages.push_back(stroke_ + ": " + std::string(field) + " is " + was + ", rendered as " +
                           is);
    }

    std::vector<std::string> messages;

  private:
    std::string stroke_;
};

void limit(Limiter& limiter, Equalizer& eq) {
    // Gains that are only too large are kept in range by every step that changes them.
    for (auto& [band, gain] : eq.gains) {
        if (std::isnan(gain)) {
            limiter.note("eq " + std::string(rawString(band)), "not a number", "0");
            gain = 0;
        }
    }
}

void limit(Limiter& limiter, ChainParams& chain) {
    constexpr double anyFrequency = 1e6;
    limit(limiter, chain.eq);
    limiter.either(chain.highPassHz, anyFrequency, "highPassHz");
    limiter.either(chain.lowPassHz, anyFrequency, "lowPassHz");
    limiter.either(chain.attackDb, JobLimits::gainDb, "attackDb");
    limiter.either(chain.sustainDb, JobLimits::gainDb, "sustainDb");
    limiter.count(chain.bodyModes, JobLimits::mostModes, "bodyModes");
    for (DSP::Mode& mode : chain.bodyModes) {
        limiter.either(mode.frequency, anyFrequency, "bodyModes frequency");
        limiter.range(mode.decayMs, 0, JobLimits::decayMs, "bodyModes decayMs");
        limiter.either(mode.gainDb, JobLimits::gainDb, "bodyModes gainDb");
    }
    limiter.range(chain.bodyMix, -1, 2, "bodyMix");
    limiter.range(chain.damping, -1, 2, "damping");
    limiter.either(chain.dampingStartMs, JobLimits::startMs, "dampingStartMs");
    limiter.range(chain.drive, -1, 2, "drive");
    limiter.either(chain.pitch, JobLimits::pitch, "pitch");
}

void limit(Limiter& limiter, StrokeSpec& stroke) {
    limiter.count(stroke.layers, JobLimits::mostLayers, "layers");
    for (std::size_t index = 0; index < stroke.layers.size(); ++index) {
        LayerSpec& layer = stroke.layers[index];
        const std::string name = "layer " + std::to_string(index + 1) + " ";
        limiter.either(layer.offsetMs, JobLimits::offsetMs, name + "offsetMs");
        limiter.either(layer.gainDb, JobLimits::gainDb, name + "gainDb");
        limiter.either(layer.pitch, JobLimits::pitch, name + "pitch");
    }
    limit(limiter, stroke.chain);
}

void limit(Limiter& limiter, Character& character, const std::string& whose) {
    limiter.either(character.depth, JobLimits::character, whose + " depth");
    limiter.either(character.snap, JobLimits::character, whose + " snap");
    limiter.either(character.ring, JobLimits::character, whose + " ring");
    limiter.either(character.size, JobLimits::character, whose + " size");
}

} // namespace

LimitedJob limited(RenderJob job) {
    Limiter limiter(job);
    if (!job.isRelease) {
        limit(limiter, job.sound.press);
    } else if (job.sound.release) {
        limit(limiter, *job.sound.release);
    }
    limit(limiter, job.sound.character, "the sound's character");
    limit(limiter, job.boardCharacter, "the board's character");
    limiter.either(job.variation, JobLimits::variation, "variation");
    if (job.stabs) {
        limiter.range(job.stabs->rattle, 0, JobLimits::rattle, "rattle");
    }
    const std::int64_t variations =
        std::clamp<std::int64_t>(job.sound.variations, 0, JobLimits::mostVariations);
    if (variations != job.sound.variations) {
        limiter.note("variations", std::to_string(job.sound.variations),
                     std::to_string(variations));
        job.sound.variations = variations;
    }
    return {.job = std::move(job), .messages = std::move(limiter.messages)};
}

} // namespace vornic
