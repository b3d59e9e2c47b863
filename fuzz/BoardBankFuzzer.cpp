#include "VornicCore/board/BoardJson.h"
#include "VornicCore/realtime/Fatal.h"
#include "VornicCore/render/BuildBoard.h"

#include "fuzz/JsonMutator.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t mostFrames = std::size_t{1} << 18;

/// Has a short burst under every name.
class Bursts final : public vornic::SampleSource {
  public:
    std::optional<std::vector<float>> samples(const std::string& id) const override {
        std::vector<float> burst(480 + id.size());
        std::uint32_t state = 1;
        for (std::size_t i = 0; i < burst.size(); ++i) {
            state = state * 1664525U + 1013904223U;
            burst[i] = (static_cast<float>(state >> 8U) * 0x1p-23F - 1.0F) *
                       std::exp(static_cast<float>(i) / -100.0F);
        }
        return burst;
    }
};

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largest, unsigned int seed) {
    return vornic::mutateJson(data, size, largest, seed);
}

/// Whatever a board says, its bank holds finite sound and no more of it than there may be.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::optional<vornic::Board> board;
    try {
        board = vornic::decodeBoard({reinterpret_cast<const char*>(data), size});
    } catch (const vornic::DecodeError&) {
        return 0;
    }
    const auto rendered = vornic::buildBoard(
        *board, Bursts(), 1,
        {.mostFrames = mostFrames, .mostRenderedFrames = 2 * mostFrames, .seed = 1});
    std::size_t frames = 0;
    for (const auto& [name, pool] : rendered.bank->pools()) {
        for (const vornic::Sample& sample : pool) {
            vornic::require(sample.length >= 2, "a stroke that can sound");
            frames += static_cast<std::size_t>(sample.length);
            vornic::require(std::all_of(sample.data, sample.data + sample.length,
                                        [](float x) { return std::abs(x) <= 4.0F; }),
                            "finite sound of a sane level");
        }
    }
    vornic::require(frames <= mostFrames, "no more than there may be");
    return 0;
}
