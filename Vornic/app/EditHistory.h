#pragma once

#include "VornicCore/board/Board.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

namespace vornic {

/// The steps back and forth through the edits of one board. Thread: main.
class EditHistory {
  public:
    /// How many steps back there are at most.
    static constexpr std::size_t longest = 60;
    /// Seconds within which an edit belongs to the one before: a slider that is dragged is one
    /// step.
    static constexpr double merging = 0.6;

    /// The board is about to change from `before`, at `seconds` of the monotonic clock. Whatever
    /// was undone cannot be redone any more.
    void edit(const Board& before, double seconds);

    /// The board one step back from `current`; absent when there is none.
    std::optional<Board> undo(const Board& current);

    /// The board as it was before the last `undo`, which `current` is the result of.
    std::optional<Board> redo(const Board& current);

    bool canUndo() const { return !back_.empty(); }
    bool canRedo() const { return !forth_.empty(); }

  private:
    void push(const Board& board);

    std::deque<Board> back_;     // the step that undo takes is the last
    std::vector<Board> forth_;   // and so is the one of redo
    std::optional<double> last_; // when the last edit was
};

} // namespace vornic
