#include "Vornic/typing/KeystrokeDriver.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/keys/KeyDifference.h"
#include "VornicCore/keys/KeyLayout.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/sampler/VoiceStage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

constexpr double releaseGain = 0.8;
/// How much of the shape's deviation from a plain stroke reaches the voice.
constexpr double shapeGainShare = 0.3;
constexpr double shapeRateShare = 0.5;
/// Beyond six octaves a stroke is no stroke any more, and a voice could last for minutes.
constexpr double lowestRate = 1.0 / 64.0;
constexpr double highestRate = 64.0;

bool playsRelease(ReleaseMode mode, const Board& board) {
    switch (mode) {
    case ReleaseMode::off:
        return false;
    case ReleaseMode::on:
        return true;
    case ReleaseMode::inherit:
        return board.releaseByDefault;
    }
    return false;
}

/// 0 for a value that is none.
double keysDiffer(const Board& board) {
    return board.feel.keysDiffer > 0 ? std::min(board.feel.keysDiffer, 1.0) : 0.0;
}

std::span<const Sample> poolOf(const PlayedBoard& played, const std::string& key) {
    return played.bank ? played.bank->pool(key) : std::span<const Sample>();
}

/// How loud a press looks: three strengths, and what its keys were given.
float loudness(Velocity strength, double gainDb) {
    constexpr double softest = 0.55;
    const double share = static_cast<double>(strength) / static_cast<double>(Velocity::hard);
    return static_cast<float>(
        std::clamp((softest + (1.0 - softest) * share) * std::pow(10.0, gainDb / 20.0), 0.0, 1.0));
}

/// The variations of a press of `sound`. While that is yet to be rendered, the key goes on to play
/// the one it had before: a key is never silent because of an edit.
std::span<const Sample> pressOf(const SoundSpec& sound, std::int64_t keyCode, Velocity velocity,
                                const PlayedBoard& played) {
    const bool stabilised = KeySet::isStabilised(keyCode);
    const auto wanted = poolOf(played, VoiceBank::key(sound.id, stabilised, velocity));
    if (!wanted.empty() || !played.rendered || played.rendered == played.board) {
        return wanted;
    }
    const auto before = played.rendered->resolve(keyCode);
    return before ? poolOf(played, VoiceBank::key(before->sound->id, stabilised, velocity))
                  : wanted;
}

} // namespace

KeystrokeDriver::KeystrokeDriver(SoundEngine& engine, const Clock& clock, std::uint64_t seed,
                                 std::function<void(const std::string&)> report)
    : engine_(engine), clock_(clock), generator_(seed), report_(std::move(report)) {}

void KeystrokeDriver::apply(std::shared_ptr<const PlaySettings> settings) {
    settings_ = std::move(settings);
}

Strike KeystrokeDriver::key(std::int64_t keyCode, bool down, std::uint64_t nanos) {
    if (down) {
        count(pressed_);
    }
    if (settings_ && settings_->silenced) {
        if (down) {
            count(quiet_);
        }
    } else if (settings_ && settings_->played.board) {
        return play(*settings_, keyCode, down, nanos);
    } else if (down) {
        count(noSound_);
    }
    return {};
}

Strike KeystrokeDriver::play(const PlaySettings& settings, std::int64_t keyCode, bool down,
                             std::uint64_t nanos) {
    const Board& board = *settings.played.board;
    const auto resolved = board.resolve(keyCode);
    if (!resolved) {
        if (down) {
            count(noSound_);
        }
        return {};
    }
    const auto& [sound, assignment] = *resolved;

    Voice voice{};
    voice.nanos = nanos;
    voice.keyCode = keyCode;
    voice.differ = keysDiffer(board);
    voice.pan = assignment.pan
                    ? static_cast<float>(*assignment.pan)
                    : KeyLayout::pan(keyCode, settings.stage.width, layout(board.layout));
    voice.stage =
        settings.binaural ? VoiceStage::binaural(voice.pan, DSP::sampleRate) : VoiceStage::none;
    const double baseRate = static_cast<double>(
        KeyLayout::rate(keyCode) * std::exp2(static_cast<float>(assignment.pitch) / 12.0f));
    const double gainDb = assignment.gainDb + voice.differ * KeyDifference::levelDb(keyCode);
    const double baseGain = std::pow(10.0, gainDb / 20.0) * settings.played.gain;

    if (!down) {
        if (playsRelease(assignment.release, board)) {
            count(released_);
            voice.gain = baseGain * releaseGain;
            voice.rate = baseRate;
            playOneOf(poolOf(settings.played, VoiceBank::releaseKey(sound->id)), voice);
        }
        return {};
    }
    const StrokeShape shape = dynamics_.down(clock_.seconds(), generator_);
    voice.gain = ((static_cast<double>(shape.gain) - 1.0) * shapeGainShare + 1.0) * baseGain;
    voice.rate = baseRate * ((static_cast<double>(shape.rate) - 1.0) * shapeRateShare + 1.0);
    const Velocity strength = velocity(board);
    if (!playOneOf(pressOf(*sound, keyCode, strength, settings.played), voice)) {
        return {};
    }
    return {.loudness = loudness(strength, assignment.gainDb), .pan = voice.pan};
}

void KeystrokeDriver::count(Counter& counter) {
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

KeyCounts KeystrokeDriver::counts() const {
    KeyCounts counts;
    counts.pressed = pressed_.load(std::memory_order_relaxed);
    counts.released = released_.load(std::memory_order_relaxed);
    counts.dropped.quiet = quiet_.load(std::memory_order_relaxed);
    counts.dropped.noSound = noSound_.load(std::memory_order_relaxed);
    counts.dropped.noOutput = noOutput_.load(std::memory_order_relaxed);
    counts.dropped.notPlayable = notPlayable_.load(std::memory_order_relaxed);
    return counts;
}

Velocity KeystrokeDriver::velocity(const Board& board) const {
    // Slow typing strikes harder; a sensitivity of 0 always gives medium.
    const double slowness = 1.0 - dynamics_.speed();
    const double sensitivity = std::clamp(board.feel.speedSensitivity, 0.0, 1.0);
    const double x = sensitivity * (slowness - 0.5) * 1.6 + 0.5;
    if (x > 0.66) {
        return Velocity::hard;
    }
    return x >= 0.34 ? Velocity::medium : Velocity::soft;
}

bool KeystrokeDriver::playOneOf(std::span<const Sample> variations, const Voice& voice) {
    if (variations.empty()) {
        count(noSound_);
        return false;
    }
    if (!engine_.ensureRunning()) {
        count(noOutput_);
        return false;
    }
    auto pick = static_cast<std::size_t>(generator_.next(variations.size()));
    if (voice.differ > 0) {
        // Drawn only where it is needed: a board of equal keys draws what it always did.
        const double chance = generator_.uniform(0.0, 1.0);
        pick =
            KeyDifference::variation(voice.keyCode, voice.differ, chance, pick, variations.size());
    }
    if (!playable(voice)) {
        count(notPlayable_);
        return false;
    }
    if (engine_.core().play(variations[pick], static_cast<float>(voice.gain), voice.pan,
                            static_cast<float>(voice.rate), voice.nanos, voice.stage)) {
        ++played_;
        return true;
    }
    return false;
}

bool KeystrokeDriver::playable(const Voice& voice) {
    if (!std::isfinite(static_cast<float>(voice.gain))) {
        return refuse("gainDb");
    }
    if (!std::isfinite(voice.pan)) {
        return refuse("pan");
    }
    if (!(voice.rate >= lowestRate && voice.rate <= highestRate)) {
        return refuse("pitch");
    }
    return true;
}

bool KeystrokeDriver::refuse(const std::string& field) {
    if (refused_.insert(field).second) {
        report_("A key stays silent, because the " + field +
                " that its board gives it cannot be played.");
    }
    return false;
}

} // namespace vornic
