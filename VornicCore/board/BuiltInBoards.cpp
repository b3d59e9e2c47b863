#include "VornicCore/board/BuiltInBoards.h"

#include "VornicCore/keys/KeyClass.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vornic::BuiltInBoards {

namespace {

struct SoundPlan {
    KeyClass keyClass;
    const char* id;
    const char* name; // of the regular keys the end of it, after the board's own
};

constexpr std::array<SoundPlan, 5> soundPlans{{
    {.keyClass = KeyClass::regular, .id = "keys", .name = " keys"},
    {.keyClass = KeyClass::space, .id = "space", .name = "Space bar"},
    {.keyClass = KeyClass::enter, .id = "enter", .name = "Enter"},
    {.keyClass = KeyClass::backspace, .id = "back", .name = "Backspace"},
    {.keyClass = KeyClass::modifier, .id = "mods", .name = "Modifiers"},
}};

std::vector<std::string> sampleIDs(const SoundPack& pack,
                                   const std::vector<std::filesystem::path>& files) {
    std::vector<std::string> ids(files.size());
    std::ranges::transform(files, ids.begin(),
                           [&](const auto& file) { return pack.sampleID(file); });
    return ids;
}

// A recorded stroke is whole in itself, so one layer holds all takes of it and each variation plays
// another. Its chain is neutral: what the pack is, is heard, and a preset can be chosen without
// losing anything. That leaves the boards as far apart in loudness as keyboards are.
StrokeSpec strokeOf(LayerPart part, std::vector<std::string> samples) {
    return StrokeSpec({LayerSpec(part, std::move(samples), 0, 0, 0)});
}

SoundSpec soundOf(const SoundPlan& plan, const SoundPack& pack, const Recipe& recipe) {
    const auto presses = pack.files.find(plan.keyClass);
    auto press = strokeOf(LayerPart::bottomOut, presses == pack.files.end()
                                                    ? std::vector<std::string>()
                                                    : sampleIDs(pack, presses->second));
    std::optional<StrokeSpec> release;
    if (!pack.releaseFiles.empty()) {
        release = strokeOf(LayerPart::topOut, sampleIDs(pack, pack.releaseFiles));
    }
    const bool isRegular = plan.keyClass == KeyClass::regular;
    return {plan.id,
            isRegular ? recipe.name + plan.name : std::string(plan.name),
            recipe.color,
            std::move(press),
            std::move(release),
            recipe.switchParts,
            Character()};
}

Assignment playing(const char* sound, double gainDb = 0, double pitch = 0) {
    Assignment assignment;
    assignment.sound = sound;
    assignment.gainDb = gainDb;
    assignment.pitch = pitch;
    return assignment;
}

std::map<KeyGroup, Assignment> groupAssignments() {
    std::map<KeyGroup, Assignment> groups;
    for (const KeyGroup group : allCases<KeyGroup>()) {
        groups[group] = playing("keys");
    }
    groups[KeyGroup::modifiers] = playing("mods", -2);
    groups[KeyGroup::space] = playing("space");
    groups[KeyGroup::enter] = playing("enter");
    groups[KeyGroup::backspace] = playing("back");
    groups[KeyGroup::arrows] = playing("keys", -2);
    groups[KeyGroup::function] = playing("keys", -3, 0.5);
    return groups;
}

Board boardOf(const SoundPack& pack, const Recipe& recipe) {
    std::vector<SoundSpec> sounds;
    sounds.reserve(soundPlans.size());
    for (const SoundPlan& plan : soundPlans) {
        sounds.push_back(soundOf(plan, pack, recipe));
    }
    Board board(pack.id(), recipe.name, recipe.detail, recipe.color, recipe.build,
                std::move(sounds), groupAssignments());
    board.stabs.rattle = 0.15;
    board.builtIn = true;
    board.credits = {pack.manifest.credit};
    return board;
}

bool hasRegularPress(const SoundPack& pack) {
    const auto presses = pack.files.find(KeyClass::regular);
    return presses != pack.files.end() && !presses->second.empty();
}

} // namespace

std::vector<Board> make(std::span<const SoundPack> packs) {
    std::vector<Board> boards;
    for (const std::string_view id : order) {
        const auto recipe = recipes().find(id);
        for (const SoundPack& pack : packs) {
            if (pack.id() == id && hasRegularPress(pack)) {
                boards.push_back(boardOf(pack, recipe->second));
            }
        }
    }
    return boards;
}

} // namespace vornic::BuiltInBoards
