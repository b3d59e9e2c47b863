#include "Vornic/commands/OfflinePlayer.h"

#include "Vornic/ports/Clock.h"
#include "Vornic/sound/DeskReflection.h"
#include "Vornic/sound/SoundEngine.h"
#include "Vornic/typing/KeystrokeDriver.h"

#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

constexpr double framesPerMilli = 48.0;
/// Quieter than half the last bit of a 24-bit recording.
constexpr float silence = 0x1p-25f;
/// The room answers within this time, so a silence as long is the end.
constexpr std::int64_t silentFramesToEnd = 9600;

/// Shows whatever time the player sets.
class EventClock final : public Clock {
  public:
    std::uint64_t nanos() const override { return nanos_; }
    void setMillis(double millis) { nanos_ = static_cast<std::uint64_t>(millis * 1e6); }

  private:
    std::uint64_t nanos_ = 0;
};

} // namespace

OfflineReport OfflinePlayer::play(const std::vector<KeyEvent>& events,
                                  std::shared_ptr<const PlaySettings> settings, FileOutput& output,
                                  const std::function<void(const std::string&)>& report) const {
    EventClock clock;
    SoundEngine engine(output, clock, [](const std::function<void()>& work) { work(); },
                       {.idleLimits = {}, .raw = options_.raw});
    const DeskReflection reflection = deskReflection(settings->stage);
    engine.setReflection(reflection.level, reflection.damp);
    engine.setRoom(settings->stage.room);
    engine.setVolume(options_.volume);
    engine.setBank(settings->played.bank);
    KeystrokeDriver driver(engine, clock, options_.seed, report);
    driver.apply(std::move(settings));

    OfflineReport result;
    auto playUntil = [&, next = events.begin()](std::int64_t frame) mutable {
        for (; next != events.end() && next->millis * framesPerMilli <= static_cast<double>(frame);
             ++next) {
            clock.setMillis(next->millis);
            result.keys += next->down ? 1 : 0;
            driver.key(next->keyCode, next->down, 0);
        }
        return next == events.end();
    };

    const double lastMillis = events.empty() ? 0.0 : events.back().millis;
    const auto latestEnd =
        static_cast<std::int64_t>((lastMillis + longestTailSeconds * 1000.0) * framesPerMilli);
    std::int64_t silentFrames = 0;
    while (true) {
        const bool allPlayed = playUntil(output.frames());
        if (!output.renderBlock()) {
            throw std::runtime_error(output.problem());
        }
        silentFrames = output.blockPeak() > silence ? 0 : silentFrames + FileOutput::blockFrames;
        const SamplerCore& core = engine.core();
        const bool voicesDone = core.activeVoices() == 0 && core.fadingVoices() == 0;
        const bool quiet = options_.raw || silentFrames >= silentFramesToEnd;
        if (allPlayed && ((voicesDone && quiet) || output.frames() >= latestEnd)) {
            break;
        }
    }
    const SamplerCore& core = engine.core();
    result.started = core.keysStarted();
    result.stolen = core.voicesStolen();
    result.dropped = core.eventsDropped();
    result.frames = output.frames();
    result.peak = output.peak();
    if (!output.finish()) {
        throw std::runtime_error(output.problem());
    }
    return result;
}

} // namespace vornic
