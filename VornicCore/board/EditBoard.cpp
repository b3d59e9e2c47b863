#include "VornicCore/board/EditBoard.h"

#include "VornicCore/base/Uuid.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vornic::EditBoard {

namespace {

StrokeSpec plainStroke(LayerPart part, const StrokeSpec& like) {
    return EditBoard::plainStroke(part, like.layers.empty() ? std::vector<std::string>()
                                                            : like.layers.front().samples);
}

void forget(Assignment& assignment, const std::string& sound) {
    if (assignment.sound == sound) {
        assignment.sound.reset();
    }
}

bool isPlace(const StrokeSpec& stroke, std::ptrdiff_t place) {
    return place >= 0 && place < std::ssize(stroke.layers);
}

} // namespace

StrokeSpec plainStroke(LayerPart part, std::vector<std::string> samples) {
    LayerSpec layer;
    layer.part = part;
    layer.samples = std::move(samples);
    return StrokeSpec({std::move(layer)});
}

SoundSpec newSound(const Board& board, const SoundSpec* like, std::string name) {
    SoundSpec sound;
    sound.id = Uuid::random().text();
    sound.name = std::move(name);
    if (like == nullptr) {
        sound.colorHex = board.colorHex;
        sound.press = plainStroke(LayerPart::bottomOut, StrokeSpec());
        return sound;
    }
    sound.colorHex = like->colorHex;
    sound.press = plainStroke(LayerPart::bottomOut, like->press);
    if (like->release) {
        sound.release = plainStroke(LayerPart::topOut, *like->release);
    }
    sound.switchParts = like->recordedAs;
    sound.recordedAs = like->recordedAs;
    return sound;
}

SoundSpec copyOf(const SoundSpec& sound, std::string name) {
    SoundSpec copy = sound;
    copy.id = Uuid::random().text();
    copy.name = std::move(name);
    return copy;
}

void addSound(Board& board, SoundSpec sound, const std::optional<std::string>& after) {
    const auto found =
        after ? std::ranges::find(board.sounds, *after, &SoundSpec::id) : board.sounds.end();
    board.sounds.insert(found == board.sounds.end() ? found : std::next(found), std::move(sound));
}

bool canRemoveSound(const Board& board) {
    return board.sounds.size() > 1;
}

std::optional<std::string> removeSound(Board& board, const std::string& id) {
    const auto found = std::ranges::find(board.sounds, id, &SoundSpec::id);
    if (!canRemoveSound(board) || found == board.sounds.end()) {
        return std::nullopt;
    }
    const auto next = board.sounds.erase(found);
    for (auto& [group, assignment] : board.groups) {
        forget(assignment, id);
    }
    for (auto& [key, assignment] : board.keys) {
        forget(assignment, id);
    }
    dropEmptyOverrides(board);
    return (next == board.sounds.end() ? board.sounds.back() : *next).id;
}

void playEverywhere(Board& board, const std::string& id) {
    if (board.sound(id) == nullptr) {
        return;
    }
    for (const KeyGroup group : allCases<KeyGroup>()) {
        board.groups[group].sound = id;
    }
    for (auto& [key, assignment] : board.keys) {
        assignment.sound.reset();
    }
    dropEmptyOverrides(board);
}

bool playsEverywhere(const Board& board, const std::string& id) {
    const SoundSpec* const sound = board.sound(id);
    return sound != nullptr &&
           std::ranges::all_of(layout(board.layout).keys, [&](const LayoutKey& key) {
               return !key.code || board.resolve(*key.code)->sound == sound;
           });
}

std::map<std::string, int> keysBySound(const Board& board) {
    std::map<std::string, int> keys;
    for (const LayoutKey& key : layout(board.layout).keys) {
        if (const auto resolved = key.code ? board.resolve(*key.code) : std::nullopt) {
            ++keys[resolved->sound->id];
        }
    }
    return keys;
}

void dropEmptyOverrides(Board& board) {
    std::erase_if(board.keys, [](const auto& key) { return key.second == Assignment(); });
}

void setHasRelease(SoundSpec& sound, bool on) {
    if (!on) {
        sound.release.reset();
    } else if (!sound.release) {
        sound.release = plainStroke(LayerPart::topOut, sound.press);
    }
}

void addLayer(StrokeSpec& stroke, std::size_t most) {
    if (stroke.layers.size() >= most) {
        return;
    }
    LayerSpec layer;
    if (!stroke.layers.empty()) {
        layer.samples = stroke.layers.back().samples;
    }
    stroke.layers.push_back(std::move(layer));
}

void removeLayer(StrokeSpec& stroke, std::ptrdiff_t place) {
    if (isPlace(stroke, place)) {
        stroke.layers.erase(stroke.layers.begin() + place);
    }
}

void moveLayer(StrokeSpec& stroke, std::ptrdiff_t place, std::ptrdiff_t to) {
    if (!isPlace(stroke, place) || !isPlace(stroke, to)) {
        return;
    }
    const auto from = stroke.layers.begin() + place;
    if (place < to) {
        std::rotate(from, from + 1, stroke.layers.begin() + to + 1);
    } else {
        std::rotate(stroke.layers.begin() + to, from, from + 1);
    }
}

void chooseSamples(LayerSpec& layer, const std::vector<std::string>& ids, bool on) {
    for (const std::string& id : ids) {
        const auto found = std::ranges::find(layer.samples, id);
        if (on && found == layer.samples.end()) {
            layer.samples.push_back(id);
        } else if (!on && found != layer.samples.end()) {
            layer.samples.erase(found);
        }
    }
}

} // namespace vornic::EditBoard
