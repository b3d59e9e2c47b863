#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/board/StageSpec.h"

#include <cstdint>
#include <random>

namespace vornic {

/// Makes boards whose every field takes random values, edges of its range included. Equal seeds
/// give equal boards, but for the ids of layers.
class RandomBoard {
  public:
    explicit RandomBoard(std::uint64_t seed) : random_(seed) {}

    Board board();
    StageSpec stage();
    double number();
    float single();
    std::string text();

  private:
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
    bool flag() { return below(2) == 1; }

    template <typename Enum>
    Enum anyCase() {
        constexpr auto cases = allCases<Enum>();
        return cases.at(below(cases.size()));
    }

    template <typename Make>
    auto list(std::size_t longest, const Make& make) {
        std::vector<decltype(make())> values;
        const std::size_t count = below(longest + 1);
        while (values.size() < count) {
            values.push_back(make());
        }
        return values;
    }

    std::int64_t integer();
    Equalizer equalizer();
    ChainParams chain();
    LayerSpec layer();
    StrokeSpec stroke();
    SwitchParts switchParts();
    BuildParts build();
    Character character();
    SoundSpec sound();
    Assignment assignment();

    std::mt19937_64 random_;
};

} // namespace vornic
