#include "Vornic/library/KeepBoard.h"

#include "Vornic/library/BoardTransfer.h"
#include "VornicCore/base/ReadableText.h"

#include <map>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

void rename(std::vector<LayerSpec>& layers, const std::map<std::string, std::string>& newIds) {
    for (LayerSpec& layer : layers) {
        for (std::string& id : layer.samples) {
            if (const auto found = newIds.find(id); found != newIds.end()) {
                id = found->second;
            }
        }
    }
}

} // namespace

Board keepBoard(BoardFile::Contents contents, BoardStore& store, SampleLibrary& library) {
    std::vector<std::string> ids;
    std::vector<SampleLibrary::NewSample> samples;
    for (auto& [id, recording] : contents.samples) {
        ids.push_back(id);
        samples.push_back({readable(contents.board.name) + " " + std::to_string(ids.size()),
                           LayerPart::bottomOut, std::move(recording)});
    }
    const std::vector<SampleInfo> added = library.addUsers(std::move(samples));
    if (added.size() != ids.size()) {
        throw BoardTransferError("Couldn't save the board: its sounds could not be written.", {});
    }
    std::map<std::string, std::string> newIds;
    for (std::size_t index = 0; index < added.size(); ++index) {
        newIds[ids[index]] = added[index].id;
    }
    Board board = std::move(contents.board);
    for (SoundSpec& sound : board.sounds) {
        rename(sound.press.layers, newIds);
        if (sound.release) {
            rename(sound.release->layers, newIds);
        }
    }
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

} // namespace vornic
