#include "Vornic/commands/BoardCommands.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/library/BoardChoice.h"
#include "Vornic/library/BoardTransfer.h"
#include "Vornic/recording/ReadPacks.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/packs/SoundPack.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

std::string listed(const std::vector<Board>& boards) {
    std::size_t widest = 0;
    for (const Board& board : boards) {
        widest = std::max(widest, readable(board.id).size());
    }
    std::string text;
    for (const Board& board : boards) {
        const std::string id = readable(board.id);
        text += id + std::string(widest + 2 - id.size(), ' ') + readable(board.name) + ": " +
                readable(board.detail) + (board.builtIn ? "\n" : " (yours)\n");
    }
    return text;
}

std::string listedAsJson(const std::vector<Board>& boards) {
    auto list = nlohmann::ordered_json::array();
    for (const Board& board : boards) {
        auto sounds = nlohmann::ordered_json::array();
        for (const SoundSpec& sound : board.sounds) {
            sounds.push_back({{"id", sound.id},
                              {"name", sound.name},
                              {"variations", sound.variations},
                              {"release", sound.release.has_value()}});
        }
        list.push_back({{"id", board.id},
                        {"name", board.name},
                        {"detail", board.detail},
                        {"builtIn", board.builtIn},
                        {"sounds", std::move(sounds)}});
    }
    return list.dump() + "\n";
}

CommandOutcome run(const ListBoards& request, BoardShelf& shelf) {
    const std::vector<Board> boards = shelf.store.all();
    CommandOutcome outcome;
    outcome.text = request.json ? listedAsJson(boards) : listed(boards);
    if (boards.empty()) {
        outcome.remarks.emplace_back("There is no board: no sound pack was found.");
    }
    return outcome;
}

CommandOutcome run(const ExportBoard& request, BoardShelf& shelf) {
    if (request.format) {
        return exportForOthers(request, shelf);
    }
    const Board board = chooseBoard(request.board, shelf.store, shelf.library);
    exportBoard(board, shelf.library, request.file, shelf.store.unknown(board.id));
    return {};
}

CommandOutcome run(const ImportBoard& request, BoardShelf& shelf) {
    if (!isBoardFile(request.file)) {
        return importPacks(request, shelf);
    }
    if (request.dryRun) {
        const OpenedBoard opened = openBoard(readBoardFile(request.file), shelf.library);
        return {.text = "\"" + readable(opened.board.name) + "\" (a Vornic board), " +
                        std::to_string(opened.samples.size()) + " recordings\n",
                .remarks = {}};
    }
    const Board board = importBoard(readBoardFile(request.file), shelf.store, shelf.library);
    return {.text = "Imported \"" + readable(board.name) + "\" as " + board.id + "\n",
            .remarks = {}};
}

CommandOutcome run(const WriteStroke& request, BoardShelf& shelf) {
    return writeStroke(request, shelf);
}

CommandOutcome run(const WriteStrokes& request, BoardShelf& shelf) {
    return writeStrokes(request, shelf);
}

} // namespace

BoardShelf::BoardShelf(const std::filesystem::path& packs) : BoardShelf(SoundPack::all(packs)) {}

BoardShelf::BoardShelf(const std::vector<SoundPack>& packs)
    : store(packs, AppFolders::folder("Boards")),
      library(packs, AppFolders::folder("Samples"),
              [this](const std::string& problem) { problems.push_back(problem); }) {}

CommandOutcome runBoardCommand(const BoardRequest& request) {
    BoardShelf shelf(request.packs);
    CommandOutcome outcome;
    try {
        outcome = std::visit([&](const auto& what) { return run(what, shelf); }, request.what);
    } catch (const BoardTransferError& error) {
        std::string text = error.whole();
        for (const std::string& problem : shelf.problems) {
            text += " " + problem;
        }
        throw std::runtime_error(text);
    }
    std::vector<std::string> remarks = shelf.store.problems();
    std::ranges::move(outcome.remarks, std::back_inserter(remarks));
    std::ranges::move(shelf.problems, std::back_inserter(remarks));
    outcome.remarks = std::move(remarks);
    return outcome;
}

} // namespace vornic
