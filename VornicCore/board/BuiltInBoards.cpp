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

// Rendering brings every stroke to one RMS value and keeps its peak below a ceiling. At one RMS
// value a bright stroke is louder to the ear than a dull one, and a sharp one meets the ceiling
// first. These settings make the boards equally loud, to 1 LU by EBU R 128; without them the
// softest is 2.7 LU below the loudest.
ChainParams balanced(std::string_view pack) {
    ChainParams chain;
    const auto set = [&](Equalizer::Band band, float gainDb) { chain.eq.setGain(band, gainDb); };
    if (pack == "deep") {
        chain.drive = 0.1;
    } else if (pack == "soft") {
        chain.highPassHz = 700;
        set(Equalizer::Band::click, 11);
        set(Equalizer::Band::air, 6);
    } else if (pack == "plastic") {
        chain.attackDb = 6;
        set(Equalizer::Band::click, -6);
    } else if (pack == "clicky") {
        set(Equalizer::Band::click, -5);
        set(Equalizer::Band::air, 4);
    }
    return chain;
}

// A recorded stroke is whole in itself, so one layer holds all takes of it and each variation plays
// another.
StrokeSpec strokeOf(LayerPart part, std::vector<std::string> samples, std::string_view pack) {
    return StrokeSpec({LayerSpec(part, std::move(samples), 0, 0, 0)}, balanced(pack));
}

SoundSpec soundOf(const SoundPlan& plan, const SoundPack& pack, const Recipe& recipe) {
    const auto presses = pack.files.find(plan.keyClass);
    auto press = strokeOf(LayerPart::bottomOut,
                          presses == pack.files.end() ? std::vector<std::string>()
                                                      : sampleIDs(pack, presses->second),
                          pack.id());
    std::optional<StrokeSpec> release;
    if (!pack.releaseFiles.empty()) {
        release = strokeOf(LayerPart::topOut, sampleIDs(pack, pack.releaseFiles), pack.id());
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
