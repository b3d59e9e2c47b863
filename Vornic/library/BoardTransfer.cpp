#include "Vornic/library/BoardTransfer.h"

#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/base/ReplaceFile.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
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

std::string tooManySamples() {
    return "samples: more than " + std::to_string(mostImportedSamples);
}

} // namespace

/// Those that layers name come first, in the order of their use; silent ones stay behind.
ReadBoard readContents(BoardFile::Contents contents) {
    ReadBoard read;
    const std::string name = readable(contents.board.name);
    const auto take = [&](const std::string& id, LayerPart part) {
        const auto found = contents.samples.find(id);
        if (found == contents.samples.end() || found->second.empty()) {
            return;
        }
        read.ids.push_back(id);
        read.samples.push_back(
            {name + " " + std::to_string(read.ids.size()), part, std::move(found->second)});
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
    read.board = std::move(contents.board);
    read.unknown = std::move(contents.unknown);
    return read;
}

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
                 const std::filesystem::path& file, const UnknownMembers& unknown) {
    const std::string problem = "Couldn't save the board: ";
    const std::vector<std::string> samples = usersSamplesOf(board, library);
    if (samples.size() > mostImportedSamples) {
        throw BoardTransferError(problem + tooManySamples(), {});
    }
    std::string text;
    try {
        text = BoardFile::encode(board, samples, library, unknown);
    } catch (const EncodeError& error) {
        throw BoardTransferError(problem + error.what(), {});
    }
    if (const std::error_code error = tryReplaceFile(file, std::as_bytes(std::span(text)))) {
        throw BoardTransferError(problem + error.message(), "(" + file.string() + ")");
    }
}

ReadBoard readBoardFile(const std::filesystem::path& file, const std::stop_token& stop) {
    std::string text;
    try {
        text = readTextFile(file, BoardFile::largest);
    } catch (const std::runtime_error& error) {
        throw BoardTransferError("Couldn't read that file.", error.what());
    }
    try {
        BoardFile::Contents contents = BoardFile::decode(text, stop);
        if (contents.samples.size() > mostImportedSamples) {
            throw std::runtime_error(tooManySamples());
        }
        return readContents(std::move(contents));
    } catch (const std::runtime_error& error) {
        throw BoardTransferError("That isn't a Vornic board file.",
                                 file.string() + ", " + error.what());
    }
}

OpenedBoard openBoard(ReadBoard read, SampleLibrary& library) {
    std::map<std::string, std::string> newIds;
    OpenedBoard opened;
    for (std::size_t index = 0; index < read.ids.size(); ++index) {
        const std::string id = library.addForThisRun(std::move(read.samples[index])).id;
        newIds[read.ids[index]] = id;
        opened.samples.push_back(id);
    }
    opened.board = std::move(read.board);
    opened.unknown = std::move(read.unknown);
    rename(opened.board, newIds);
    return opened;
}

void keepSamples(const OpenedBoard& opened, SampleLibrary& library) {
    if (!library.keep(opened.samples)) {
        throw BoardTransferError("Couldn't save the board: its sounds could not be written.", {});
    }
}

Board adopted(const OpenedBoard& opened, const BoardStore& store) {
    Board board = opened.board;
    board.id = store.freshId();
    board.builtIn = false;
    return board;
}

Board importBoard(ReadBoard read, BoardStore& store, SampleLibrary& library) {
    const OpenedBoard opened = openBoard(std::move(read), library);
    const auto leave = [&] {
        for (const std::string& id : opened.samples) {
            library.removeUser(id);
        }
    };
    try {
        keepSamples(opened, library);
    } catch (const BoardTransferError&) {
        leave();
        throw;
    }
    Board board = adopted(opened, store);
    if (const std::error_code error = store.save(board, opened.unknown)) {
        // What failed is told below.
        [[maybe_unused]] const std::error_code ignored = store.remove(board.id);
        leave();
        throw BoardTransferError("Couldn't save the board: " + error.message(), {});
    }
    return board;
}

} // namespace vornic
