#include "tests/VornicCore/board/RandomBoard.h"

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace vornic {

namespace {

template <typename Number>
constexpr std::array<Number, 10> edges{0,
                                       -Number{0},
                                       1,
                                       static_cast<Number>(0.1),
                                       static_cast<Number>(-12.5),
                                       static_cast<Number>(16777217),
                                       std::numeric_limits<Number>::max(),
                                       std::numeric_limits<Number>::lowest(),
                                       std::numeric_limits<Number>::min(),
                                       std::numeric_limits<Number>::denorm_min()};

} // namespace

double RandomBoard::number() {
    if (flag()) {
        return edges<double>.at(below(10));
    }
    const double value = std::bit_cast<double>(random_());
    return std::isfinite(value) ? value : 1.0 / 3;
}

float RandomBoard::single() {
    if (flag()) {
        return edges<float>.at(below(10));
    }
    const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random_()));
    return std::isfinite(value) ? value : 1.0F / 3;
}

std::int64_t RandomBoard::integer() {
    const std::array<std::int64_t, 5> values{0, -1, std::numeric_limits<std::int64_t>::max(),
                                             std::numeric_limits<std::int64_t>::min(),
                                             static_cast<std::int64_t>(random_())};
    return values.at(below(values.size()));
}

std::string RandomBoard::text() {
    static const std::array<std::string, 10> pieces{
        "a", "Z", "/", "\"", "\\", "\n", std::string(1, '\0'), "é", "⏻", "\xF0\x9F\x8E\xB9"};
    std::string text;
    const std::size_t count = below(6);
    for (std::size_t i = 0; i < count; ++i) {
        text += pieces.at(below(pieces.size()));
    }
    return text;
}

Equalizer RandomBoard::equalizer() {
    Equalizer eq;
    eq.gains.clear();
    for (const Equalizer::Band band : allCases<Equalizer::Band>()) {
        if (below(4) != 0) {
            eq.gains[band] = single();
        }
    }
    return eq;
}

ChainParams RandomBoard::chain() {
    ChainParams chain;
    chain.eq = equalizer();
    for (double* const field :
         {&chain.highPassHz, &chain.lowPassHz, &chain.attackDb, &chain.sustainDb, &chain.bodyMix,
          &chain.damping, &chain.dampingStartMs, &chain.drive, &chain.pitch}) {
        *field = number();
    }
    chain.bodyModes = list(3, [&] { return DSP::Mode{number(), number(), number()}; });
    return chain;
}

LayerSpec RandomBoard::layer() {
    LayerSpec layer(anyCase<LayerPart>(), list(3, [&] { return text(); }), number(), number(),
                    number());
    layer.invert = flag();
    layer.muted = flag();
    layer.solo = flag();
    return layer;
}

StrokeSpec RandomBoard::stroke() {
    StrokeSpec stroke(list(3, [&] { return layer(); }), chain());
    stroke.alignAttacks = flag();
    return stroke;
}

SwitchParts RandomBoard::switchParts() {
    return {anyCase<SwitchType>(), anyCase<Housing>(), anyCase<Lube>(), anyCase<Spring>(), flag()};
}

BuildParts RandomBoard::build() {
    BuildParts parts;
    parts.caseMaterial = anyCase<CaseMaterial>();
    parts.plate = anyCase<Plate>();
    parts.mount = anyCase<Mount>();
    parts.keycapMaterial = anyCase<KeycapMaterial>();
    parts.keycapProfile = anyCase<KeycapProfile>();
    for (const Foam foam : allCases<Foam>()) {
        if (flag()) {
            parts.foams.insert(foam);
        }
    }
    return parts;
}

Character RandomBoard::character() {
    return {number(), number(), number(), number()};
}

SoundSpec RandomBoard::sound() {
    SoundSpec sound(text(), text(), text(), stroke(), std::nullopt, switchParts(), character());
    if (flag()) {
        sound.release = stroke();
    }
    sound.recordedAs = switchParts();
    sound.variations = integer();
    return sound;
}

Assignment RandomBoard::assignment() {
    Assignment assignment;
    assignment.gainDb = number();
    assignment.pitch = number();
    assignment.release = anyCase<ReleaseMode>();
    if (flag()) {
        assignment.sound = text();
    }
    if (flag()) {
        assignment.pan = number();
    }
    return assignment;
}

Board RandomBoard::board() {
    Board board(text(), text(), text(), text(), build(), list(4, [&] { return sound(); }), {});
    board.schema = integer();
    board.layout = anyCase<LayoutID>();
    board.recordedBuild = build();
    board.stabs = {anyCase<StabTuning>(), number()};
    board.character = character();
    for (const KeyGroup group : allCases<KeyGroup>()) {
        if (flag()) {
            board.groups[group] = assignment();
        }
    }
    const std::size_t overrides = below(4);
    for (std::size_t i = 0; i < overrides; ++i) {
        board.keys[flag() ? std::to_string(below(128)) : text()] = assignment();
    }
    board.feel = {number(), number()};
    board.releaseByDefault = flag();
    board.builtIn = flag();
    board.credits = list(3, [&] { return text(); });
    return board;
}

StageSpec RandomBoard::stage() {
    return {anyCase<Placement>(), number(), number(), anyCase<Room>(), flag()};
}

} // namespace vornic
