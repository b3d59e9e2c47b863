#include "Vornic/recording/SoundMaker.h"

#include <algorithm>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr auto tickInterval = 100ms;
constexpr std::uint64_t second = 1'000'000'000;
constexpr std::uint64_t lookInterval = second / 2;
constexpr const char* recordingName = "My keyboard";

} // namespace

SoundMaker::SoundMaker(const Services& services, Events events)
    : scheduler_(services.scheduler), clock_(services.clock), events_(std::move(events)),
      recorder_(services.microphone), imports_(services.scheduler, services.decoder),
      import_(services.library) {
    recorder_.onLost = [this](const std::string& message) {
        lost_ = message;
        stopRecording(true);
    };
}

void SoundMaker::startRecording() {
    if (recorder_.isRecording() || isStarting_) {
        return;
    }
    round_.renew();
    isStarting_ = true;
    changed();
    recorder_.requestAccess(round_.guard([this](bool granted) {
        round_.renew();
        isStarting_ = false;
        if (granted) {
            begin();
        } else {
            events_.failed(ImportMessages::accessDenied);
            changed();
        }
    }));
}

void SoundMaker::begin() {
    if (!recorder_.start(static_cast<double>(longestSeconds))) {
        events_.failed(ImportMessages::noMicrophone);
        events_.noted(recorder_.problem());
        changed();
        return;
    }
    timeWasUp_ = false;
    remark_.clear();
    startNanos_ = clock_.nanos();
    lookedNanos_ = startNanos_;
    level_ = 0.0F;
    secondsLeft_ = longestSeconds;
    heard_.clear();
    live_ = {};
    timer_ = scheduler_.every(tickInterval, [this] { tick(); });
    events_.recording(true);
    changed();
}

void SoundMaker::tick() {
    const std::uint64_t now = clock_.nanos();
    const auto elapsed = static_cast<std::int64_t>((now - startNanos_) / second);
    level_ = recorder_.level();
    secondsLeft_ = std::max<std::int64_t>(0, longestSeconds - elapsed);
    if (now - lookedNanos_ >= lookInterval) {
        lookedNanos_ = now;
        recorder_.hear(heard_);
        live_ = LiveStrokes::in(heard_, recorder_.inputRate(), recorder_.gaps());
    }
    changed();
    if (secondsLeft_ == 0) {
        // Not here: stopping destroys the timer that calls.
        scheduler_.post(round_.guard([this] {
            timeWasUp_ = true;
            stopRecording(true);
        }));
    }
}

void SoundMaker::stopRecording(bool keep) {
    round_.renew();
    if (isStarting_) {
        isStarting_ = false;
        recorder_.stop();
        changed();
    }
    if (!recorder_.isRecording()) {
        return;
    }
    timer_.reset();
    std::vector<float> samples = recorder_.stop();
    level_ = 0.0F;
    heard_ = {};
    events_.recording(false);
    if (keep) {
        startSession(std::move(samples), recordingName, recorder_.gaps());
    } else {
        changed();
    }
}

void SoundMaker::importRecording(const std::filesystem::path& file) {
    stopRecording(false);
    timeWasUp_ = false;
    lost_.clear();
    remark_.clear();
    importProgress_ = 0.0;
    imports_.start(
        file,
        [this](double share) {
            importProgress_ = share;
            changed();
        },
        [this](RecordingImport::Outcome outcome) { open(std::move(outcome)); });
    changed();
}

void SoundMaker::open(RecordingImport::Outcome outcome) {
    importProgress_.reset();
    const std::string lost = std::exchange(lost_, {});
    if (!outcome.remark.empty()) {
        events_.noted(outcome.remark);
    }
    const bool opened = outcome.session && outcome.cuts;
    if (outcome.error != ImportMessages::unreadableFile) {
        remark_ = outcome.remark;
    }
    if (opened) {
        import_.startSession(*std::move(outcome.session), *std::move(outcome.cuts));
    } else {
        events_.failed(outcome.error);
    }
    if (!lost.empty()) {
        // Otherwise the user has been told that there were no keystrokes in what was heard.
        opened ? events_.failed(lost) : events_.noted(lost);
    }
    changed();
}

void SoundMaker::cancelReading() {
    imports_.cancel();
    importProgress_.reset();
    changed();
}

void SoundMaker::startSession(std::vector<float> samples, const std::string& name,
                              std::vector<Gap> gaps) {
    importProgress_ = 1.0;
    imports_.start(std::move(samples), name, std::move(gaps),
                   [this](RecordingImport::Outcome outcome) { open(std::move(outcome)); });
    changed();
}

void SoundMaker::rename(const std::string& name) {
    import_.rename(name);
    changed();
}

void SoundMaker::select(std::size_t stroke, bool selected) {
    import_.select(stroke, selected);
    changed();
}

void SoundMaker::moveBegin(std::size_t stroke, std::int64_t place) {
    import_.moveBegin(stroke, place);
    changed();
}

void SoundMaker::moveEnd(std::size_t stroke, std::int64_t place) {
    import_.moveEnd(stroke, place);
    changed();
}

void SoundMaker::resetCut(std::size_t stroke) {
    import_.resetCut(stroke);
    changed();
}

void SoundMaker::setKeepsReleases(bool on) {
    import_.setKeepsReleases(on);
    changed();
}

std::optional<FinishedImport> SoundMaker::finishImport() {
    std::optional<FinishedImport> finished = import_.finishImport();
    if (finished && !finished->warning.empty()) {
        events_.failed(finished->warning);
    }
    changed();
    return finished;
}

void SoundMaker::cancelImport() {
    import_.cancelImport();
    changed();
}

} // namespace vornic
