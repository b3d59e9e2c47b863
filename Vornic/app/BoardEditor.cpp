#include "Vornic/app/BoardEditor.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vornic {

BoardEditor::BoardEditor(BoardStore& store, const Clock& clock, TweaksByBoard tweaks)
    : store_(store), clock_(clock), allTweaks_(std::move(tweaks)) {}

void BoardEditor::setTweaks(const SimpleTweaks& tweaks) {
    if (!board_ || tweaks == tweaks_) {
        return;
    }
    tweaks_ = tweaks;
    onChange(Change::tweaked);
}

TweaksByBoard BoardEditor::allTweaks() const {
    TweaksByBoard all = allTweaks_;
    // A board that is not in the store will not be met again under this id.
    if (board_ && store_.board(board_->id) != nullptr) {
        all[board_->id] = tweaks_;
    }
    std::erase_if(all, [](const auto& entry) { return entry.second == SimpleTweaks(); });
    return all;
}

void BoardEditor::keepTweaks() {
    allTweaks_ = allTweaks();
}

bool BoardEditor::select(const std::string& id) {
    const Board* const found = store_.board(id);
    if (found == nullptr) {
        return false;
    }
    makeCurrent(*found, Change::selected);
    return true;
}

void BoardEditor::selectGuest(Board board) {
    // Under its own id it could pass for one of the store's.
    board.id = store_.freshId();
    board.builtIn = false;
    makeCurrent(board, Change::selected);
}

void BoardEditor::makeCurrent(const Board& board, Change change) {
    keepTweaks();
    board_ = board;
    const auto found = allTweaks_.find(board.id);
    tweaks_ = found == allTweaks_.end() ? SimpleTweaks() : found->second;
    onChange(change);
}

bool BoardEditor::edit(const std::function<void(Board&)>& change) {
    if (!board_) {
        return false;
    }
    Board changed = *board_;
    change(changed);
    changed.id = board_->id;
    changed.builtIn = board_->builtIn;
    if (changed == *board_) {
        return false;
    }
    if (!store_.isMine(board_->id)) {
        const bool renamed = changed.name != board_->name;
        copyForUser(std::nullopt);
        changed.id = board_->id;
        changed.builtIn = false;
        changed.name = renamed ? changed.name : board_->name;
    }
    histories_[board_->id].edit(*board_, clock_.seconds());
    board_ = std::move(changed);
    save();
    onChange(Change::edited);
    return true;
}

/// The copy has the adjustments of the original: it is to sound the same.
void BoardEditor::copyForUser(const std::optional<std::string>& name) {
    keepTweaks();
    std::error_code error;
    board_ = store_.copy(board_.value(), name, &error);
    if (error) {
        say("Couldn't save the board", error);
    }
}

bool BoardEditor::undo() {
    return board_ && step(histories_[board_->id].undo(*board_));
}

bool BoardEditor::redo() {
    return board_ && step(histories_[board_->id].redo(*board_));
}

bool BoardEditor::step(std::optional<Board> board) {
    if (!board) {
        return false;
    }
    board_ = *std::move(board);
    save();
    onChange(Change::stepped);
    return true;
}

bool BoardEditor::canUndo() const {
    const EditHistory* const steps = history();
    return steps != nullptr && steps->canUndo();
}

bool BoardEditor::canRedo() const {
    const EditHistory* const steps = history();
    return steps != nullptr && steps->canRedo();
}

const EditHistory* BoardEditor::history() const {
    const auto found = board_ ? histories_.find(board_->id) : histories_.end();
    return found == histories_.end() ? nullptr : &found->second;
}

void BoardEditor::newBoard() {
    if (board_) {
        copyForUser("New board");
        onChange(Change::selected);
    }
}

void BoardEditor::renameBoard(const std::string& name) {
    edit([&](Board& board) { board.name = name; });
}

void BoardEditor::deleteBoard() {
    if (!board_ || !store_.isMine(board_->id)) {
        return;
    }
    const std::string id = board_->id;
    const std::optional<std::string> next = neighbour();
    if (const std::error_code error = store_.remove(id)) {
        say("Couldn't delete the board", error);
        return;
    }
    histories_.erase(id);
    board_.reset();
    tweaks_ = {};
    allTweaks_.erase(id);
    if (!next || !select(*next)) {
        onChange(Change::selected);
    }
}

/// The board behind the current one in the list, or else the one before it.
std::optional<std::string> BoardEditor::neighbour() const {
    const std::vector<Board> all = store_.all();
    const auto current = std::ranges::find(all, board_.value().id, &Board::id);
    if (current == all.end() || all.size() < 2) {
        return std::nullopt;
    }
    return (std::next(current) != all.end() ? std::next(current) : std::prev(current))->id;
}

void BoardEditor::save() {
    if (const std::error_code error = store_.save(board_.value())) {
        say("Couldn't save the board", error);
    }
}

void BoardEditor::say(const std::string& what, const std::error_code& error) const {
    onError(what + ": " + error.message());
}

} // namespace vornic
