#include "Vornic/library/BoardTransfer.h"

#include "Vornic/library/TextFile.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/base/ReplaceFile.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

template <typename AnyBoard, typename Visit>
void forEachLayer(AnyBoard& board, const Visit& visit) {
    for (auto& sound : board.sounds) {
        for (auto& layer : sound.press.layers) {
            visit(layer);
        }
        if (sound.release) {
            for (auto& layer : sound.release->layers) {
                visit(layer);
            }
        }
    }
}

/// The recordings of a file on their way into the library.
struct Luggage {
    std::vector<std::string> ids; // in the file
    std::vector<SampleLibrary::NewSample> samples;
};

/// Those that layers name come first, in the order of their use; silent ones stay behind.
Luggage unpacked(BoardFile::Contents& contents) {
    if (contents.samples.size() > mostImportedSamples) {
        throw std::runtime_error("samples: more than " + std::to_string(mostImportedSamples));
    }
    Luggage luggage;
    const std::string name = readable(contents.board.name);
    const auto take = [&](const std::string& id, LayerPart part) {
        const auto found = contents.samples.find(id);
        if (found == contents.samples.end() || found->second.empty()) {
            return;
        }
        luggage.ids.push_back(id);
        luggage.samples.push_back(
            {name + " " + std::to_string(luggage.ids.size()), part, std::move(found->second)});
        contents.samples.erase(found);
    };
    forEachLayer(contents.board, [&](const LayerSpec& layer) {
        for (const std::string& id : layer.samples) {
            take(id, layer.part);
        }
    });
    while (!contents.samples.empty()) {
        const std::string id = contents.samples.begin()->first;
        take(id, LayerPart::bottomOut);
        contents.samples.erase(id);
    }
    return luggage;
}

void rename(Board& board, const std::map<std::string, std::string>& newIds) {
    forEachLayer(board, [&](LayerSpec& layer) {
        for (std::string& id : layer.samples) {
            const auto found = newIds.find(id);
            if (found != newIds.end()) {
                id = found->second;
            }
        }
    });
}

BoardTransferError notABoard(const std::filesystem::path& file, const std::exception& error) {
    return {"That isn't a Vornic board file.", file.string() + ", " + error.what()};
}

BoardFile::Contents contentsOf(const std::filesystem::path& file) {
    std::string text;
    try {
        text = readTextFile(file, BoardFile::largest);
    } catch (const std::runtime_error& error) {
        throw BoardTransferError("Couldn't read that file.", error.what());
    }
    try {
        return BoardFile::decode(text);
    } catch (const DecodeError& error) {
        throw notABoard(file, error);
    }
}

} // namespace

std::vector<std::string> usersSamplesOf(const Board& board, const SampleLibrary& library) {
    std::set<std::string> users;
    for (const SampleInfo& info : library.userSamples()) {
        if (!info.builtIn) {
            users.insert(info.id);
        }
    }
    std::vector<std::string> used;
    forEachLayer(board, [&](const LayerSpec& layer) {
        for (const std::string& id : layer.samples) {
            if (users.erase(id) > 0) {
                used.push_back(id);
            }
        }
    });
    return used;
}

void exportBoard(const Board& board, const SampleLibrary& library,
                 const std::filesystem::path& file) {
    const std::string problem = "Couldn't save the board: ";
    std::string text;
    try {
        text = BoardFile::encode(board, usersSamplesOf(board, library), library);
    } catch (const EncodeError& error) {
        throw BoardTransferError(problem + error.what(), {});
    }
    if (const std::error_code error = tryReplaceFile(file, std::as_bytes(std::span(text)))) {
        throw BoardTransferError(problem + error.message(), "(" + file.string() + ")");
    }
}

Board importBoard(const std::filesystem::path& file, BoardStore& store, SampleLibrary& library) {
    BoardFile::Contents contents = contentsOf(file);
    Luggage luggage;
    try {
        luggage = unpacked(contents);
    } catch (const std::runtime_error& error) {
        throw notABoard(file, error);
    }
    const std::vector<SampleInfo> added = library.addUsers(std::move(luggage.samples));
    if (added.size() != luggage.ids.size()) {
        throw BoardTransferError("Couldn't save the board: its sounds could not be written.", {});
    }
    std::map<std::string, std::string> newIds;
    for (std::size_t index = 0; index < added.size(); ++index) {
        newIds[luggage.ids[index]] = added[index].id;
    }
    Board board = std::move(contents.board);
    rename(board, newIds);
    board.id = store.freshId();
    board.builtIn = false;
    if (const std::error_code error = store.save(board)) {
        // What failed is told below.
        [[maybe_unused]] const std::error_code ignored = store.remove(board.id);
        for (const SampleInfo& info : added) {
            library.removeUser(info.id);
        }
        throw BoardTransferError("Couldn't save the board: " + error.message(), {});
    }
    return board;
}

OpenedBoard openBoard(BoardFile::Contents contents, SampleLibrary& library) {
    Luggage luggage = unpacked(contents);
    std::map<std::string, std::string> newIds;
    OpenedBoard opened;
    for (std::size_t index = 0; index < luggage.ids.size(); ++index) {
        const std::string id = library.addForThisRun(std::move(luggage.samples[index])).id;
        newIds[luggage.ids[index]] = id;
        opened.samples.push_back(id);
    }
    opened.board = std::move(contents.board);
    rename(opened.board, newIds);
    return opened;
}

OpenedBoard openBoardFile(const std::filesystem::path& file, SampleLibrary& library) {
    BoardFile::Contents contents = contentsOf(file);
    try {
        return openBoard(std::move(contents), library);
    } catch (const std::runtime_error& error) {
        throw notABoard(file, error);
    }
}

} // namespace vornic
