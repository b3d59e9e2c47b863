// What the user has chosen, and what follows from it at once.

#include "Vornic/app/AppModel.h"
#include "Vornic/sound/DeskReflection.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <system_error>

namespace vornic {

using namespace std::chrono_literals;

void AppModel::change(const std::function<void(Settings&)>& what) {
    what(settings_);
    Settings kept = settingsFile_->settings();
    what(kept);
    settingsFile_->set(kept);
    // Every step of a slider comes here, and to wait for the disk at each would make it stutter.
    if (settingsFile_->unwritten() && !writing_) {
        writing_ = platform_.scheduler.after(300ms, [this] { writeSettings(); });
    }
    onChange();
}

void AppModel::writeSettings() {
    writing_.reset();
    if (const std::error_code error = settingsFile_->write()) {
        fail("Couldn't save the settings: " + error.message());
    }
}

void AppModel::setSoundsOn(bool on) {
    if (soundsOn() != on) {
        change([on](Settings& settings) { settings.hearMyself = on; });
        refreshQuiet();
    }
}

void AppModel::setQuietDuringCalls(bool on) {
    if (quietDuringCalls() != on) {
        change([on](Settings& settings) { settings.quietDuringCalls = on; });
        refreshQuiet();
    }
}

void AppModel::setNoticePasswordsEverywhere(bool on) {
    if (noticePasswordsEverywhere() != on) {
        platform_.secureInput.noticeEverywhere(on);
        change([on](Settings& settings) { settings.noticePasswordsEverywhere = on; });
    }
}

void AppModel::setAdvanced(bool on) {
    if (advanced() != on) {
        change([on](Settings& settings) { settings.advanced = on; });
    }
}

void AppModel::setWelcomed() {
    firstStart_ = false;
    change([](Settings& settings) { settings.welcomed = true; });
}

void AppModel::setToldOfNoTray() {
    change([](Settings& settings) { settings.toldOfNoTray = true; });
}

void AppModel::setVolume(double volume) {
    if (!std::isnan(volume)) {
        const double limited = std::clamp(volume, 0.0, 1.0);
        sound_->setVolume(limited);
        change([limited](Settings& settings) { settings.volume = limited; });
    }
}

void AppModel::setOutputKind(OutputKind kind) {
    if (outputKind() != kind) {
        change([kind](Settings& settings) { settings.outputKind = kind; });
        publish();
    }
}

void AppModel::setStage(const StageSpec& stage) {
    if (!(settings_.stage == stage)) {
        change([&](Settings& settings) { settings.stage = stage; });
        applyStage();
    }
}

void AppModel::applyStage() {
    sound_->setRoom(stage().room);
    const DeskReflection reflection = deskReflection(stage());
    sound_->setReflection(reflection.level, reflection.damp);
    publish();
}

} // namespace vornic
