#pragma once

#include "VornicCore/base/JsonReader.h"
#include "VornicCore/base/JsonRecord.h"
#include "VornicCore/base/JsonValue.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/board/StageSpec.h"

#include <tuple>

// How the types of a board stand in documents: every field under its own name, in field order.
// Include it to write a document that holds one of them.

namespace vornic {

template <>
struct JsonRecord<SwitchParts> {
    static constexpr auto members = std::tuple{
        JsonMember{"type", &SwitchParts::type}, JsonMember{"housing", &SwitchParts::housing},
        JsonMember{"lube", &SwitchParts::lube}, JsonMember{"spring", &SwitchParts::spring},
        JsonMember{"films", &SwitchParts::films}};
};

template <>
struct JsonRecord<BuildParts> {
    static constexpr auto members =
        std::tuple{JsonMember{"caseMaterial", &BuildParts::caseMaterial},
                   JsonMember{"plate", &BuildParts::plate},
                   JsonMember{"mount", &BuildParts::mount},
                   JsonMember{"foams", &BuildParts::foams},
                   JsonMember{"keycapMaterial", &BuildParts::keycapMaterial},
                   JsonMember{"keycapProfile", &BuildParts::keycapProfile}};
};

template <>
struct JsonRecord<StabParts> {
    static constexpr auto members = std::tuple{JsonMember{"tuning", &StabParts::tuning},
                                               JsonMember{"rattle", &StabParts::rattle}};
};

template <>
struct JsonRecord<DSP::Mode> {
    static constexpr auto members = std::tuple{JsonMember{"frequency", &DSP::Mode::frequency},
                                               JsonMember{"decayMs", &DSP::Mode::decayMs},
                                               JsonMember{"gainDb", &DSP::Mode::gainDb}};
};

/// An object with the one member "gains", an array of alternating band and number. Kept as it is:
/// bands may be missing and gains outside the range. A band that occurs twice is an error, as it is
/// for the members of an object. Thread: any.
template <>
struct JsonValue<Equalizer> {
    static Equalizer read(const JsonReader& in);
    static nlohmann::json write(const Equalizer& eq);
};

template <>
struct JsonRecord<ChainParams> {
    static constexpr auto members =
        std::tuple{JsonMember{"eq", &ChainParams::eq},
                   JsonMember{"highPassHz", &ChainParams::highPassHz},
                   JsonMember{"lowPassHz", &ChainParams::lowPassHz},
                   JsonMember{"attackDb", &ChainParams::attackDb},
                   JsonMember{"sustainDb", &ChainParams::sustainDb},
                   JsonMember{"bodyModes", &ChainParams::bodyModes},
                   JsonMember{"bodyMix", &ChainParams::bodyMix},
                   JsonMember{"damping", &ChainParams::damping},
                   JsonMember{"dampingStartMs", &ChainParams::dampingStartMs},
                   JsonMember{"drive", &ChainParams::drive},
                   JsonMember{"pitch", &ChainParams::pitch}};
};

template <>
struct JsonRecord<Character> {
    static constexpr auto members =
        std::tuple{JsonMember{"depth", &Character::depth}, JsonMember{"snap", &Character::snap},
                   JsonMember{"ring", &Character::ring}, JsonMember{"size", &Character::size}};
};

template <>
struct JsonRecord<LayerSpec> {
    static constexpr auto members = std::tuple{
        JsonMember{"id", &LayerSpec::id},           JsonMember{"part", &LayerSpec::part},
        JsonMember{"samples", &LayerSpec::samples}, JsonMember{"offsetMs", &LayerSpec::offsetMs},
        JsonMember{"gainDb", &LayerSpec::gainDb},   JsonMember{"pitch", &LayerSpec::pitch},
        JsonMember{"invert", &LayerSpec::invert},   JsonMember{"muted", &LayerSpec::muted},
        JsonMember{"solo", &LayerSpec::solo}};
};

template <>
struct JsonRecord<StrokeSpec> {
    static constexpr auto members =
        std::tuple{JsonMember{"layers", &StrokeSpec::layers},
                   JsonMember{"alignAttacks", &StrokeSpec::alignAttacks},
                   JsonMember{"chain", &StrokeSpec::chain}};
};

template <>
struct JsonRecord<SoundSpec> {
    static constexpr auto members = std::tuple{JsonMember{"id", &SoundSpec::id},
                                               JsonMember{"name", &SoundSpec::name},
                                               JsonMember{"colorHex", &SoundSpec::colorHex},
                                               JsonMember{"press", &SoundSpec::press},
                                               JsonMember{"release", &SoundSpec::release},
                                               JsonMember{"switchParts", &SoundSpec::switchParts},
                                               JsonMember{"recordedAs", &SoundSpec::recordedAs},
                                               JsonMember{"character", &SoundSpec::character},
                                               JsonMember{"variations", &SoundSpec::variations}};
};

template <>
struct JsonRecord<Assignment> {
    static constexpr auto members = std::tuple{
        JsonMember{"sound", &Assignment::sound}, JsonMember{"gainDb", &Assignment::gainDb},
        JsonMember{"pitch", &Assignment::pitch}, JsonMember{"pan", &Assignment::pan},
        JsonMember{"release", &Assignment::release}};
};

template <>
struct JsonRecord<TypingFeel> {
    static constexpr auto members =
        std::tuple{JsonMember{"speedSensitivity", &TypingFeel::speedSensitivity},
                   JsonMember{"variation", &TypingFeel::variation},
                   AddedJsonMember{"keysDiffer", &TypingFeel::keysDiffer}};
};

template <>
struct JsonRecord<StageSpec> {
    static constexpr auto members = std::tuple{
        JsonMember{"placement", &StageSpec::placement},
        JsonMember{"distance", &StageSpec::distance}, JsonMember{"width", &StageSpec::width},
        JsonMember{"room", &StageSpec::room}, JsonMember{"deskMat", &StageSpec::deskMat}};
};

template <>
struct JsonRecord<Board> {
    static constexpr auto members =
        std::tuple{JsonMember{"schema", &Board::schema},
                   JsonMember{"id", &Board::id},
                   JsonMember{"name", &Board::name},
                   JsonMember{"detail", &Board::detail},
                   JsonMember{"colorHex", &Board::colorHex},
                   JsonMember{"layout", &Board::layout},
                   JsonMember{"build", &Board::build},
                   JsonMember{"recordedBuild", &Board::recordedBuild},
                   JsonMember{"stabs", &Board::stabs},
                   JsonMember{"character", &Board::character},
                   JsonMember{"sounds", &Board::sounds},
                   JsonMember{"groups", &Board::groups},
                   JsonMember{"keys", &Board::keys},
                   JsonMember{"feel", &Board::feel},
                   JsonMember{"releaseByDefault", &Board::releaseByDefault},
                   JsonMember{"builtIn", &Board::builtIn},
                   JsonMember{"credits", &Board::credits}};
};

} // namespace vornic
