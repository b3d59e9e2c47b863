#pragma once

#include "Vornic/library/FileWriter.h"
#include "VornicCore/base/UnknownMembers.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SoundPack.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace vornic {

/// Every board there is: those made from the sound packs, and the user's own, one file for each in
/// the user's folder. Files are written whole or not at all. Thread: main.
class BoardStore {
  public:
    /// Makes the built-in boards and reads the user's from `folder`, which is made when the first
    /// one is saved. What cannot be read is left alone and named in `problems`.
    /// Changes of their files go to `files`.
    BoardStore(std::span<const SoundPack> packs, std::filesystem::path folder,
               FileChanges files = apply);

    const std::vector<Board>& builtIn() const { return builtIn_; }

    /// The user's, those read from the folder in the order of their names, new ones behind.
    const std::vector<Board>& mine() const { return mine_; }

    /// The built-in ones, then the user's; a user's board hides a built-in one of the same id.
    std::vector<Board> all() const;

    /// The user's board with this id, or else the built-in one; null if there is neither. Valid
    /// until the next change.
    const Board* board(std::string_view id) const;

    /// Whether the board with this id is one of the user's.
    bool isMine(std::string_view id) const;

    /// Keeps a user's board, which counts at once; its file follows. On an error the board counts
    /// for as long as the program runs, and what was in the file is still there. A board that is
    /// built-in or whose id is no file name is refused.
    std::error_code save(const Board& board);
    /// The same of a board from elsewhere, with what a newer version has put into it.
    std::error_code save(const Board& board, UnknownMembers unknown);

    /// What a newer version has put into the user's board with this id.
    UnknownMembers unknown(std::string_view id) const;

    /// Removes a user's board; its file follows. On an error both stay.
    std::error_code remove(std::string_view id);

    /// A copy under a fresh id that belongs to the user, called `name`, or else like the original
    /// with " (mine)" behind. Saved at once; `error`, if given, says how that went.
    Board copy(const Board& original, const std::optional<std::string>& name,
               std::error_code* error = nullptr);

    /// An id, "mine-" and eight hexadecimal digits, that no board and no file has.
    std::string freshId() const;

    /// A sentence for each file that could not be read.
    const std::vector<std::string>& problems() const { return problems_; }

  private:
    void load();
    void loadBoard(const std::filesystem::path& file);
    std::filesystem::path fileOf(std::string_view id) const;

    std::filesystem::path folder_;
    FileChanges files_;
    std::vector<Board> builtIn_;
    std::vector<Board> mine_;
    std::map<std::string, UnknownMembers, std::less<>> unknown_; // by the board's id
    std::vector<std::string> problems_;
};

} // namespace vornic
