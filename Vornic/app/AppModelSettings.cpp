// What the user has chosen, and what follows from it at once.

#include "Vornic/app/AppModel.h"
#include "Vornic/sound/DeskReflection.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace vornic {

using namespace std::chrono_literals;

void AppModel::change(const std::function<void(Settings&)>& what) {
    const Settings before = settings_;
    what(settings_);
    Settings kept = settingsFile_->settings();
    what(kept);
    if (settings_ == before && kept == settingsFile_->settings()) {
        return;
    }
    settingsFile_->set(kept);
    applySettings(&before);
    followSoon();
    onChange();
}

/// What a setting does besides being kept and shown: of all at the start, then of those that are
/// not as `before`.
void AppModel::applySettings(const Settings* before) {
    const auto changed = [&](auto setting) {
        return before == nullptr || !(settings_.*setting == before->*setting);
    };
    if (changed(&Settings::hearMyself) || changed(&Settings::quietDuringCalls)) {
        refreshQuiet();
    }
    if (changed(&Settings::noticePasswordsEverywhere)) {
        platform_.secureInput.noticeEverywhere(settings_.noticePasswordsEverywhere);
    }
    if (changed(&Settings::volume)) {
        sound_->setVolume(settings_.volume);
    }
    if (changed(&Settings::stage)) {
        applyStage();
    }
    if (changed(&Settings::outputKind)) {
        publish();
    }
}

std::error_code AppModel::follow(FileChange change) {
    const auto former = std::ranges::find(waiting_, change.file, &FileChange::file);
    if (former != waiting_.end()) {
        *former = std::move(change);
    } else {
        waiting_.push_back(std::move(change));
    }
    followSoon();
    return {}; // What fails is told by the writer.
}

/// Every step of a slider comes here; it is a third of a second that a kill can cost.
void AppModel::followSoon() {
    if (!writing_ && (!waiting_.empty() || settingsFile_->unwritten())) {
        writing_ = platform_.scheduler.after(300ms, [this] { writeFiles(); });
    }
}

void AppModel::writeFiles() {
    writing_.reset();
    std::vector<FileChange> changes = std::exchange(waiting_, {});
    // Behind the boards: the settings name one of them.
    if (std::optional<FileChange> settings = settingsFile_->takeChange()) {
        changes.push_back(*std::move(settings));
    }
    files_->write(std::move(changes));
}

void AppModel::whenWritten(std::function<void(const std::string& problem)> done) {
    writeFiles();
    files_->whenWritten(std::move(done));
}

void AppModel::setSoundsOn(bool on) {
    change([on](Settings& settings) { settings.hearMyself = on; });
}

void AppModel::setQuietDuringCalls(bool on) {
    change([on](Settings& settings) { settings.quietDuringCalls = on; });
}

void AppModel::setNoticePasswordsEverywhere(bool on) {
    change([on](Settings& settings) { settings.noticePasswordsEverywhere = on; });
}

void AppModel::setAdvanced(bool on) {
    change([on](Settings& settings) { settings.advanced = on; });
}

// What the command line says for this run is not kept because somebody chooses it once more.
void AppModel::setOutputKind(OutputKind kind) {
    if (outputKind() != kind) {
        change([kind](Settings& settings) { settings.outputKind = kind; });
    }
}

void AppModel::setStage(const StageSpec& stage) {
    if (!(settings_.stage == stage)) {
        change([&stage](Settings& settings) { settings.stage = stage; });
    }
}

void AppModel::setWelcomed() {
    firstStart_ = false;
    change([](Settings& settings) { settings.welcomed = true; });
}

void AppModel::setVolume(double volume) {
    if (!std::isnan(volume)) {
        const double limited = std::clamp(volume, 0.0, 1.0);
        change([limited](Settings& settings) { settings.volume = limited; });
    }
}

void AppModel::applyStage() {
    sound_->setRoom(stage().room);
    const DeskReflection reflection = deskReflection(stage());
    sound_->setReflection(reflection.level, reflection.damp);
    publish();
}

} // namespace vornic
