#include "Vornic/app/EditHistory.h"

#include <utility>

namespace vornic {

void EditHistory::edit(const Board& before, double seconds) {
    const bool merged = last_ && seconds - *last_ <= merging && !back_.empty();
    if (!merged) {
        push(before);
    }
    forth_.clear();
    last_ = seconds;
}

std::optional<Board> EditHistory::undo(const Board& current) {
    if (back_.empty()) {
        return std::nullopt;
    }
    forth_.push_back(current);
    Board board = std::move(back_.back());
    back_.pop_back();
    return board;
}

std::optional<Board> EditHistory::redo(const Board& current) {
    if (forth_.empty()) {
        return std::nullopt;
    }
    push(current);
    Board board = std::move(forth_.back());
    forth_.pop_back();
    return board;
}

void EditHistory::push(const Board& board) {
    if (back_.size() == longest) {
        back_.pop_front();
    }
    back_.push_back(board);
}

} // namespace vornic
