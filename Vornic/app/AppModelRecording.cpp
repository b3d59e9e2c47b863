// How the model makes sounds of the user's own keyboard.

#include "Vornic/app/AppModel.h"
#include "Vornic/recording/StrokeImport.h"
#include "VornicCore/board/EditBoard.h"

#include <utility>

namespace vornic {

void AppModel::makeRecorder() {
    recorder_ = std::make_unique<SoundMaker>(
        SoundMaker::Services{.microphone = platform_.microphoneInput,
                             .scheduler = platform_.scheduler,
                             .clock = platform_.clock,
                             .library = *library_,
                             .decoder = options_.decoder},
        SoundMaker::Events{
            .changed = [this] { onChange(); },
            .recording = [this](bool on) { setRecording(on); },
            .failed = [this](const std::string& message) { fail(message); },
            .noted = [this](const std::string& note) { platform_.log.warning(note); }});
}

void AppModel::startSession(std::vector<float> samples, const std::string& name) {
    recorder_->startSession(std::move(samples), name);
}

std::optional<std::string> AppModel::finishImport() {
    if (!importSession()) {
        return std::nullopt;
    }
    if (board() == nullptr) {
        fail("There is no keyboard to add the sound to.");
        return std::nullopt;
    }
    const std::optional<FinishedImport> finished = recorder_->finishImport();
    if (!finished || finished->samples.empty()) {
        return std::nullopt;
    }
    const SoundSpec sound = soundOf(*finished);
    edit([&](Board& board) { EditBoard::addSound(board, sound); });
    return sound.id;
}

void AppModel::cancelImport() {
    recorder_->cancelImport();
}

void AppModel::useForAllKeys(const std::string& sound) {
    edit([&](Board& board) { EditBoard::playEverywhere(board, sound); });
}

} // namespace vornic
