#include "Vornic/library/BoardChoice.h"

#include "Vornic/library/BoardTransfer.h"
#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/board/BoardFile.h"
#include "VornicCore/board/BoardJson.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace vornic {

namespace {

std::string idsOf(const std::vector<Board>& boards) {
    std::string ids;
    for (const Board& board : boards) {
        ids += (ids.empty() ? "" : ", ") + readable(board.id);
    }
    return ids;
}

/// Why there is no such board.
std::runtime_error absence(const std::optional<std::string>& wanted,
                           const std::vector<Board>& boards) {
    if (boards.empty()) {
        return std::runtime_error("No sound pack was found. Install the package bucklespring-data "
                                  "and build Vornic again, or name a folder of packs with "
                                  "--packs.");
    }
    return std::runtime_error("There is no board and no file \"" + wanted.value_or("") +
                              "\". Boards: " + idsOf(boards) + ".");
}

/// Both forms of a board on disk are JSON, and a file may be called anything. A board alone has no
/// format; a member of that name says that the other form was meant.
BoardFile::Contents boardIn(const std::string& file) {
    const std::string text = readTextFile(file, BoardFile::largest);
    try {
        return BoardFile::decode(text);
    } catch (const DecodeError& problem) {
        if (problem.path() != "format" || file.ends_with(".vornic")) {
            throw std::runtime_error(file + " is no board: " + problem.what());
        }
    }
    try {
        BoardFile::Contents contents;
        contents.board = decodeBoard(text);
        return contents;
    } catch (const DecodeError& problem) {
        throw std::runtime_error(file + " is no board: " + problem.what());
    }
}

bool isFile(const std::string& wanted) {
    std::error_code error;
    return std::filesystem::exists(wanted, error);
}

} // namespace

Board chooseBoard(const std::optional<std::string>& wanted, const BoardStore& store,
                  SampleLibrary& library) {
    if (const Board* const found =
            store.board(wanted.value_or(std::string(SoundPack::defaultID)))) {
        return *found;
    }
    if (wanted && isFile(*wanted)) {
        return openBoard(readContents(boardIn(*wanted)), library).board;
    }
    if (wanted || store.builtIn().empty()) {
        throw absence(wanted, store.all());
    }
    return store.builtIn().front();
}

} // namespace vornic
