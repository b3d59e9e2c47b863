// How the model and its files of boards work together.

#include "Vornic/app/AppModel.h"

#include <utility>

namespace vornic {

void AppModel::makeBoardFiles() {
    boardFiles_ = std::make_unique<BoardFiles>(
        BoardFiles::Services{platform_.scheduler, library_, *store_, options_.decoder},
        BoardFiles::Events{.changed = [this] { onChange(); },
                           .failed =
                               [this](const std::string& shown, const std::string& logged) {
                                   platform_.log.warning(logged);
                                   showError(shown);
                               },
                           .tried =
                               [this](const Board* tried) {
                                   if (tried != nullptr) {
                                       player_->tryOut(*tried);
                                       return;
                                   }
                                   player_->endTrial();
                                   if (board() == nullptr) {
                                       // There is nothing to go back to.
                                       played_ = {};
                                       publish();
                                   }
                               },
                           .kept = [this](const Board& kept) { selectBoard(kept.id); }});
}

void AppModel::exportBoard(const std::filesystem::path& to, BoardFiles::Done done) {
    if (board() != nullptr) {
        writeFiles();
        boardFiles_->write(*board(), to, std::move(done));
    }
}

} // namespace vornic
