#include "Vornic/selftest/SelfTest.h"

#include "Vornic/typing/PreviewPhrase.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

namespace vornic {

using namespace std::chrono_literals;

namespace {

/// The key source and the sound server answer a moment after the start; what they say decides
/// half of the lines.
constexpr auto untilAnswers = 500ms;

std::string yes(bool value) {
    return value ? "yes" : "no";
}

std::string fixed(double value, int decimals) {
    std::array<char, 340> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

double peak(const std::vector<float>& samples) {
    double most = 0;
    for (const double sample : samples) {
        most = std::max(most, std::abs(sample));
    }
    return most;
}

} // namespace

SelfTest::SelfTest(AppModel& model, Platform platform, Environment environment)
    : model_(model), platform_(std::move(platform)), environment_(std::move(environment)) {}

void SelfTest::start() {
    after(untilAnswers, &SelfTest::run);
}

void SelfTest::run() {
    sayWhatIsThere();
    render();
    tryOwnKeys();
    sayHowItStands();
    keysBefore_ = model_.keys().keysHeard();
    after(10'000ms, &SelfTest::countKeys);
    playPhrase();
    if (environment_.withMicrophone) {
        tryMicrophone();
    }
}

void SelfTest::sayWhatIsThere() {
    const Board* const board = model_.board();
    say("packs=" + std::to_string(model_.packs()) +
        " boards=" + std::to_string(model_.boards().size()) +
        " library=" + std::to_string(model_.library().count()) +
        " board=" + (board != nullptr ? board->name : "nothing") +
        " sounds=" + std::to_string(board != nullptr ? board->sounds.size() : 0));
}

void SelfTest::render() {
    const auto full = model_.renderNow().value_or(BoardPlayer::FullRender());
    say("full render " + fixed(full.seconds * 1000, 0) +
        " ms, pools=" + std::to_string(full.pools));
}

void SelfTest::tryOwnKeys() {
    const OwnKeys keys = environment_.ownKeys();
    say("quiet keys took " + std::to_string(keys.taken) +
        " of 4 (0 means AppKit beeped), focus on " +
        (keys.focus.empty() ? std::string("nothing") : keys.focus));
}

void SelfTest::sayHowItStands() {
    say("sandboxed=" + yes(environment_.sandboxed) + " folder=" + environment_.folder.string() +
        " writable=" + yes(folderIsWritable()) +
        " input monitoring=" + yes(model_.tapState() != TapState::needsPermission) +
        " tap=" + yes(model_.tapState() == TapState::listening) +
        " shortcut=" + yes(model_.keys().hotKeyRegistered()) +
        " mic state readable=" + yes(platform_.microphone.canCheck()));
}

bool SelfTest::folderIsWritable() const {
    const std::filesystem::path file = environment_.folder / ".selftest";
    const bool made = std::ofstream(file, std::ios::binary).put('x').flush().good();
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return made;
}

void SelfTest::playPhrase() {
    model_.keys().type(previewPhrase());
    after(2800ms, &SelfTest::sayWhatWasHeard);
}

void SelfTest::sayWhatWasHeard() {
    const SamplerCore& core = model_.sound().core();
    say("frames rendered=" + std::to_string(core.framesRendered()) +
        " keys started=" + std::to_string(core.keysStarted()) +
        " (phrase has 15) headphones=" + yes(model_.headphones()) + " binaural=" +
        yes(wantsBinaural(model_.stage().placement, model_.outputKind(), model_.headphones())));
}

void SelfTest::countKeys() {
    say("keys heard through the tap=" + std::to_string(model_.keys().keysHeard() - keysBefore_));
}

void SelfTest::tryMicrophone() {
    if (!environment_.microphone.requestAccess) {
        record(false);
        return;
    }
    environment_.microphone.requestAccess(
        lifetime_.guard([this](bool allowed) { record(allowed); }));
}

void SelfTest::record(bool allowed) {
    say("microphone allowed=" + yes(allowed));
    if (allowed) {
        recordingStarted_ = environment_.microphone.start && environment_.microphone.start(3.0);
        after(1500ms, &SelfTest::endRecording);
    }
}

void SelfTest::endRecording() {
    const bool inUse = platform_.microphone.inUseByAnybody();
    const Microphone& microphone = environment_.microphone;
    const std::vector<float> samples = microphone.stop ? microphone.stop() : std::vector<float>();
    say("recording started=" + yes(recordingStarted_) +
        " samples=" + std::to_string(samples.size()) + " peak=" + fixed(peak(samples), 4) +
        " mic in use while recording=" + yes(inUse));
}

void SelfTest::say(const std::string& line) {
    platform_.log.info("Vornic selftest: " + line);
}

void SelfTest::after(std::chrono::milliseconds delay, void (SelfTest::*step)()) {
    timers_.push_back(platform_.scheduler.after(delay, [this, step] { (this->*step)(); }));
}

} // namespace vornic
