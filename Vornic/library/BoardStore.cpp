#include "Vornic/library/BoardStore.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/library/FolderLock.h"
#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/Uuid.h"
#include "VornicCore/board/BoardJson.h"
#include "VornicCore/board/BuiltInBoards.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace fs = std::filesystem;

namespace {

/// A board without recordings is some hundred kilobytes at most.
constexpr std::uintmax_t largestBoardFile = 64u << 20u;

bool isFileName(std::string_view id) {
    return !id.empty() && id.size() <= 200 && id.front() != '.' &&
           id.find('/') == std::string_view::npos && id.find('\0') == std::string_view::npos;
}

} // namespace

BoardStore::BoardStore(std::span<const SoundPack> packs, fs::path folder, FileChanges files)
    : folder_(std::move(folder)), files_(std::move(files)), builtIn_(BuiltInBoards::make(packs)) {
    load();
}

void BoardStore::load() {
    removeLeftOvers(folder_);
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path file = entry->path();
        if (file.extension() == ".json" && isFileName(file.stem().string())) {
            AppFolders::keepToOwner(file);
            files.push_back(file);
        }
    }
    if (error && error != std::errc::no_such_file_or_directory) {
        problems_.push_back("Couldn't read your boards in " + folder_.string() + ": " +
                            error.message());
    }
    std::ranges::sort(files);
    for (const fs::path& file : files) {
        loadBoard(file);
    }
}

void BoardStore::loadBoard(const fs::path& file) {
    try {
        BoardDocument read = decodeBoardDocument(readTextFile(file, largestBoardFile));
        Board board = std::move(read.board);
        // The name of the file is what the board is saved under, whatever the text says: nothing
        // that stands in a file decides where a file is written.
        board.id = file.stem().string();
        board.builtIn = false;
        if (!read.unknown.empty()) {
            unknown_[board.id] = std::move(read.unknown);
        }
        mine_.push_back(std::move(board));
    } catch (const std::runtime_error& problem) {
        problems_.push_back("Your board " + file.string() +
                            " can't be read and was left as it is: " + problem.what());
    }
}

std::vector<Board> BoardStore::all() const {
    std::vector<Board> boards;
    std::ranges::copy_if(builtIn_, std::back_inserter(boards),
                         [this](const Board& board) { return !isMine(board.id); });
    boards.insert(boards.end(), mine_.begin(), mine_.end());
    return boards;
}

const Board* BoardStore::board(std::string_view id) const {
    for (const auto* const boards : {&mine_, &builtIn_}) {
        const auto found = std::ranges::find(*boards, id, &Board::id);
        if (found != boards->end()) {
            return &*found;
        }
    }
    return nullptr;
}

bool BoardStore::isMine(std::string_view id) const {
    return std::ranges::find(mine_, id, &Board::id) != mine_.end();
}

std::error_code BoardStore::save(const Board& board) {
    if (board.builtIn || !isFileName(board.id)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    const auto found = std::ranges::find(mine_, board.id, &Board::id);
    if (found != mine_.end()) {
        *found = board;
    } else {
        mine_.push_back(board);
    }
    return files_({fileOf(board.id),
                   [board, unknown = unknown(board.id)] { return encodeBoard(board, unknown); },
                   "Couldn't save the board"});
}

std::error_code BoardStore::save(const Board& board, UnknownMembers unknown) {
    if (!unknown.empty()) {
        unknown_[board.id] = std::move(unknown);
    }
    return save(board);
}

UnknownMembers BoardStore::unknown(std::string_view id) const {
    const auto found = unknown_.find(id);
    return found == unknown_.end() ? UnknownMembers() : found->second;
}

std::error_code BoardStore::remove(std::string_view id) {
    const auto found = std::ranges::find(mine_, id, &Board::id);
    if (found == mine_.end()) {
        return {};
    }
    const std::error_code error = files_({fileOf(id), {}, "Couldn't delete the board"});
    if (!error) {
        unknown_.erase(found->id);
        mine_.erase(found);
    }
    return error;
}

Board BoardStore::copy(const Board& original, const std::optional<std::string>& name,
                       std::error_code* error) {
    Board copied = original;
    copied.id = freshId();
    copied.name = name.value_or(original.name + " (mine)");
    copied.builtIn = false;
    const std::error_code outcome = save(copied, unknown(original.id));
    if (error != nullptr) {
        *error = outcome;
    }
    return copied;
}

std::string BoardStore::freshId() const {
    for (;;) {
        std::string id = "mine-" + Uuid::random().text().substr(0, 8);
        std::error_code ignored;
        if (board(id) == nullptr && !fs::exists(fileOf(id), ignored)) {
            return id;
        }
    }
}

fs::path BoardStore::fileOf(std::string_view id) const {
    return folder_ / (std::string(id) + ".json");
}

} // namespace vornic
