#include "VornicCore/board/Board.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vornic {

namespace {

template <typename Map, typename Key>
const Assignment* find(const Map& assignments, const Key& key) {
    const auto found = assignments.find(key);
    return found == assignments.end() ? nullptr : &found->second;
}

// By the decimal text of the key code, without allocating it: this runs on every keystroke.
const Assignment* findKey(const Board& board, std::int64_t keyCode) {
    std::array<char, 20> text{};
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), keyCode).ptr;
    return find(board.keys, std::string_view(text.data(), end));
}

} // namespace

Board::Board(std::string givenId, std::string givenName, std::string givenDetail,
             std::string givenColorHex, BuildParts givenBuild, std::vector<SoundSpec> givenSounds,
             std::map<KeyGroup, Assignment> givenGroups)
    : id(std::move(givenId)), name(std::move(givenName)), detail(std::move(givenDetail)),
      colorHex(std::move(givenColorHex)), build(std::move(givenBuild)), recordedBuild(build),
      sounds(std::move(givenSounds)), groups(std::move(givenGroups)) {}

const SoundSpec* Board::sound(const std::optional<std::string>& soundId) const {
    if (!soundId) {
        return nullptr;
    }
    const auto found = std::ranges::find(sounds, *soundId, &SoundSpec::id);
    return found == sounds.end() ? nullptr : &*found;
}

std::optional<ResolvedKey> Board::resolve(std::int64_t keyCode) const {
    if (sounds.empty()) {
        return std::nullopt;
    }
    static const Assignment nothingSet;
    const Assignment* group = find(groups, keyGroupOf(keyCode));
    group = group != nullptr ? group : &nothingSet;
    const Assignment* key = findKey(*this, keyCode);
    key = key != nullptr ? key : &nothingSet;

    const SoundSpec* chosen = sound(key->sound);
    chosen = chosen != nullptr ? chosen : sound(group->sound);
    chosen = chosen != nullptr ? chosen : &sounds.front();

    return ResolvedKey{.sound = chosen,
                       .assignment = {.sound = chosen->id,
                                      .gainDb = group->gainDb + key->gainDb,
                                      .pitch = group->pitch + key->pitch,
                                      .pan = key->pan ? key->pan : group->pan,
                                      .release = key->release != ReleaseMode::inherit
                                                     ? key->release
                                                     : group->release}};
}

} // namespace vornic
