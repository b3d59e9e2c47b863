#include "Vornic/library/BoardStore.h"

#include "Vornic/library/TextFile.h"
#include "VornicCore/base/ReplaceFile.h"
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

BoardStore::BoardStore(std::span<const SoundPack> packs, fs::path folder)
    : folder_(std::move(folder)), builtIn_(BuiltInBoards::make(packs)) {
    load();
}

void BoardStore::load() {
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path file = entry->path();
        if (isLeftOver(file)) {
            std::error_code ignored;
            fs::remove(file, ignored);
        } else if (file.extension() == ".json" && isFileName(file.stem().string())) {
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
        Board board = decodeBoard(readTextFile(file, largestBoardFile));
        // The name of the file is what the board is saved under, whatever the text says: nothing
        // that stands in a file decides where a file is written.
        board.id = file.stem().string();
        board.builtIn = false;
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
    std::string text;
    try {
        text = encodeBoard(board);
    } catch (const EncodeError&) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    std::error_code error;
    fs::create_directories(folder_, error);
    return error ? error : tryReplaceFile(fileOf(board.id), std::as_bytes(std::span(text)));
}

std::error_code BoardStore::remove(std::string_view id) {
    const auto found = std::ranges::find(mine_, id, &Board::id);
    if (found == mine_.end()) {
        return {};
    }
    std::error_code error;
    fs::remove(fileOf(id), error);
    if (!error) {
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
    const std::error_code outcome = save(copied);
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
