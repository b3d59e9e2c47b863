#include "VornicCore/board/BoardFile.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/JsonMutator.h"

#include <optional>
#include <string_view>
#include <utility>

namespace {

using vornic::BoardFile;

std::optional<BoardFile::Contents> decoded(std::string_view text) {
    try {
        return BoardFile::decode(text);
    } catch (const vornic::DecodeError&) {
        return std::nullopt;
    }
}

/// What a file has brought along.
class ContentsSource final : public vornic::SampleSource {
  public:
    explicit ContentsSource(const BoardFile::Contents& contents) : contents_(contents) {}

    std::optional<std::vector<float>> samples(const std::string& id) const override {
        const auto found = contents_.samples.find(id);
        return found == contents_.samples.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    const BoardFile::Contents& contents_;
};

std::string encoded(const BoardFile::Contents& contents) {
    std::vector<std::string> ids;
    for (const auto& [id, samples] : contents.samples) {
        ids.push_back(id);
    }
    return BoardFile::encode(contents.board, ids, ContentsSource(contents));
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largest, unsigned int seed) {
    return vornic::mutateJson(data, size, largest, seed);
}

/// Whatever the bytes are, they make a board file or the declared error; what was read can be
/// written, and reads back as it was (but for the lowest sample, which is written one higher).
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto first = decoded({reinterpret_cast<const char*>(data), size});
    if (first) {
        const std::string text = encoded(*first);
        const auto second = decoded(text);
        vornic::require(second && second->board == first->board, "a board reads back as it was");
        vornic::require(second->samples.size() == first->samples.size(), "no sample is lost");
        vornic::require(encoded(*second) == text, "a board file is written the same again");
    }
    return 0;
}
