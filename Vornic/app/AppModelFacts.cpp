// What the model finds out about the system and says about it.

#include "Vornic/app/AppModel.h"
#include "Vornic/app/EditedSound.h"
#include "VornicCore/realtime/Latency.h"

namespace vornic {

const QuietRule* AppModel::quietRule() const {
    QuietFacts facts{.holding = watched_};
    if (recording_) {
        facts.holding.insert(Silence::recording);
    }
    if (!soundsOn()) {
        facts.holding.insert(Silence::off);
    }
    if (!quietDuringCalls()) {
        facts.ignored.insert(Silence::microphone);
    }
    return vornic::quietRule(facts);
}

std::optional<Silence> AppModel::silence() const {
    const QuietRule* const rule = quietRule();
    return rule == nullptr ? std::nullopt : std::optional(rule->reason);
}

std::string AppModel::statusLine() const {
    return vornic::statusLine(quietRule(), board() != nullptr ? board()->name : "",
                              stage().placement);
}

void AppModel::setRecording(bool on) {
    if (recording_ != on) {
        recording_ = on;
        refreshQuiet();
    }
}

void AppModel::refreshState() {
    keys_->refresh();
    refreshQuiet();
    refreshDevice();
    announce();
    refreshDiagnostics();
}

void AppModel::refreshQuiet() {
    std::set<Silence> watched;
    for (const WatchedReason& each : watches_) {
        // The program's own recording is no other program's use of the microphone.
        if (each.watch->active() && !(recording_ && each.reason == Silence::microphone)) {
            watched.insert(each.reason);
        }
    }
    const bool changed = watched != watched_;
    watched_ = std::move(watched);
    const QuietRule* const rule = quietRule();
    if (rule != lastRule_) {
        lastRule_ = rule;
        platform_.log.info(rule != nullptr ? std::string(rule->text) : "Sounds are on");
        publish();
        onChange();
    } else if (changed) {
        onChange();
    }
}

void AppModel::refreshDevice() {
    const OutputDeviceFacts device = platform_.output.device();
    if (device == device_) {
        return;
    }
    const bool moved = device.isHeadphones != device_.isHeadphones;
    device_ = device;
    if (moved) {
        publish();
    }
    onChange();
}

void AppModel::refreshDiagnostics() {
    Diagnostics diagnostics;
    diagnostics.keyToAppMillis = Latency::lastMillis();
    diagnostics.keyToAppMaxMillis = Latency::maxMillis();
    diagnostics.keys = Latency::count();
    diagnostics.deviceMillis = device_.latencyMillis;
    diagnostics.deviceBuffer = device_.bufferFrames;
    diagnostics.engineRunning = platform_.output.isRunning();
    diagnostics.realTimeLost = platform_.output.hasLostRealTime();
    if (diagnostics.realTimeLost && !diagnostics_.realTimeLost) {
        platform_.log.warning(
            "The audio thread took longer than the system allows and has lost its "
            "priority: start Vornic anew if sounds click.");
    }
    if (const std::optional<double> seconds = lastRenderSeconds()) {
        diagnostics.lastRenderMillis = *seconds * 1000;
    }
    if (!(diagnostics == diagnostics_)) {
        diagnostics_ = diagnostics;
        onChange();
    }
}

void AppModel::setTapState(TapState state, const std::string& source) {
    keySource_ = source;
    if (state != tapState_) {
        tapState_ = state;
        onChange();
    }
    announce();
}

void AppModel::announce() {
    std::string line;
    const std::string problem = platform_.output.problem();
    if (tapState_ != TapState::listening) {
        line = "Can't hear your keys";
    } else if (!problem.empty()) {
        line = problem;
    } else {
        line = "Vornic is listening: board " + (board() ? board()->name : std::string("none")) +
               ", output " + device_.name + ", keys from " + keySource_;
    }
    // The tap answers a moment after the start: until then there is nothing to say.
    if (line == announced_ || keySource_.empty()) {
        return;
    }
    announced_ = line;
    if (tapState_ == TapState::listening && problem.empty()) {
        platform_.log.info(line);
    } else {
        platform_.log.warning(line);
    }
}

KeyCounts AppModel::keyCounts() const {
    const SamplerCore& core = sound_->core();
    KeyCounts counts = keys_->counts();
    counts.auditions = sound_->auditions();
    counts.started = core.keysStarted();
    counts.stolen = core.voicesStolen();
    counts.dropped.queueFull = core.eventsRefused();
    counts.dropped.noVoice = core.eventsWithoutSlot();
    counts.dropped.stalled = core.eventsStale();
    counts.dropped.streamEnded = core.eventsCleared();
    return counts;
}

std::string AppModel::voiceReport() const {
    const SamplerCore& core = sound_->core();
    return "Voices started: " + std::to_string(core.keysStarted()) +
           ", stolen: " + std::to_string(core.voicesStolen()) +
           ", dropped: " + std::to_string(core.eventsDropped());
}

std::optional<BoardPlayer::FullRender> AppModel::renderNow() {
    return board() == nullptr ? std::nullopt
                              : std::optional(player_->renderNow(editor_->heardBoard()));
}

void AppModel::setStudio(const StudioState& studio) {
    if (!(studio == studio_)) {
        studio_ = studio;
        onChange();
    }
}

std::span<const float> AppModel::editorWave(Velocity velocity) const {
    const SoundSpec* const sound = board() != nullptr ? editedSound(*board(), studio_) : nullptr;
    if (sound == nullptr) {
        return {};
    }
    return player_->stroke(editsRelease(*sound, studio_)
                               ? VoiceBank::releaseKey(sound->id)
                               : VoiceBank::key(sound->id, false, velocity));
}

} // namespace vornic
