#pragma once

#include "Vornic/app/EditHistory.h"
#include "Vornic/app/SimpleTweaks.h"
#include "Vornic/library/BoardStore.h"
#include "Vornic/ports/Clock.h"
#include "VornicCore/board/Board.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace vornic {

/// The current board and everything that changes it. What is changed is saved at once.
/// Thread: main.
class BoardEditor {
  public:
    /// What happened to the current board.
    enum class Change : std::uint8_t {
        /// Another one became current.
        selected,
        /// It was edited.
        edited,
        /// A step back or forth through its edits.
        stepped,
        /// Its simple adjustments.
        tweaked,
    };

    /// Both outlive it. `tweaks` are those of all boards.
    BoardEditor(BoardStore& store, const Clock& clock, TweaksByBoard tweaks);

    /// Called after each change.
    std::function<void(Change)> onChange = [](Change) {};
    /// A sentence for the user about what could not be kept.
    std::function<void(const std::string&)> onError = [](const std::string&) {};

    /// The current board; null before one is selected.
    const Board* board() const { return board_ ? &*board_ : nullptr; }

    /// The current board's simple adjustments.
    const SimpleTweaks& tweaks() const { return tweaks_; }
    void setTweaks(const SimpleTweaks& tweaks);
    /// Those of all boards that have any.
    TweaksByBoard allTweaks() const;

    /// The board that is rendered: the current one, adjusted. Only while there is one.
    Board heardBoard() const { return tweaked(board_.value(), tweaks_); }

    /// Makes the board with this id current; false when there is none.
    bool select(const std::string& id);

    /// Makes a board current that is not in the store. Its first edit makes a copy.
    void selectGuest(Board board);

    /// Applies `change` to the current board; its id and whether it is built-in stay. A board that
    /// is not the user's is left as it is: a copy for the user becomes current instead. False when
    /// nothing has changed.
    bool edit(const std::function<void(Board&)>& change);

    /// A step through the edits of the current board; false when there is none.
    bool undo();
    bool redo();
    bool canUndo() const;
    bool canRedo() const;

    /// Makes a copy of the current board, called "New board", current.
    void newBoard();

    /// An edit of the name.
    void renameBoard(const std::string& name);

    /// Deletes the current board, if it is the user's, and makes a neighbour current.
    void deleteBoard();

  private:
    const EditHistory* history() const;
    void makeCurrent(const Board& board, Change change);
    void keepTweaks();
    void copyForUser(const std::optional<std::string>& name);
    bool step(std::optional<Board> board);
    void save();
    void say(const std::string& what, const std::error_code& error) const;
    std::optional<std::string> neighbour() const;

    BoardStore& store_;
    const Clock& clock_;
    std::optional<Board> board_;
    SimpleTweaks tweaks_;
    TweaksByBoard allTweaks_;
    std::map<std::string, EditHistory, std::less<>> histories_; // by the board's id
};

} // namespace vornic
