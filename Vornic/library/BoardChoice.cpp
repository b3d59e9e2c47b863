#include "Vornic/library/BoardChoice.h"

#include "Vornic/library/TextFile.h"
#include "VornicCore/board/json/BoardJson.h"
#include "VornicCore/board/json/JsonError.h"
#include "VornicCore/recordings/BuiltInBoards.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vornic {

namespace {

/// A board without recordings is some hundred kilobytes at most.
constexpr std::uintmax_t largestBoardFile = 64u << 20u;

std::string idsOf(const std::vector<Board>& boards) {
    std::string ids;
    for (const Board& board : boards) {
        ids += (ids.empty() ? "" : ", ") + board.id;
    }
    return ids;
}

} // namespace

Board chooseBoard(const std::optional<std::string>& wanted, const std::vector<SoundPack>& packs) {
    const auto boards = BuiltInBoards::make(packs);
    const auto found =
        std::ranges::find(boards, wanted.value_or(std::string(SoundPack::defaultID)), &Board::id);
    if (found != boards.end()) {
        return *found;
    }
    std::error_code error;
    if (wanted && std::filesystem::exists(*wanted, error)) {
        try {
            return decodeBoard(readTextFile(*wanted, largestBoardFile));
        } catch (const DecodeError& problem) {
            throw std::runtime_error(*wanted + " is no board: " + problem.what());
        }
    }
    if (boards.empty()) {
        throw std::runtime_error("No sound pack was found. Install the package bucklespring-data "
                                 "and build Vornic again, or name a folder of packs with --packs.");
    }
    if (wanted) {
        throw std::runtime_error("There is no board and no file \"" + *wanted +
                                 "\". Boards: " + idsOf(boards) + ".");
    }
    return boards.front();
}

} // namespace vornic
