#include "VornicCore/foreign/ConvertPack.h"
#include "VornicCore/foreign/FindPacks.h"
#include "VornicCore/realtime/Fatal.h"

#include <string>
#include <string_view>

namespace {

using namespace vornic;

/// A folder with one description, whatever is in it, and a few recordings that it may name.
class OneFile final : public PackFiles {
  public:
    explicit OneFile(std::string_view text) : text_(text) {}

    std::string name() const override { return "pack"; }
    const std::vector<std::string>& names() const override { return names_; }
    std::string text(const std::string& /*name*/) const override { return std::string(text_); }
    std::filesystem::path path(const std::string& name) const override { return name; }
    const PackNotes& notes() const override { return notes_; }

  private:
    std::string_view text_;
    std::vector<std::string> names_{"1e-0.wav",    "1e-1.wav",  "31-1.wav", "a.wav",
                                    "config.json", "sub/a.wav", "space.wav"};
    PackNotes notes_;
};

} // namespace

/// Whatever stands in a description of any format, it makes packs or sentences about what is wrong;
/// and every pack makes a board or such a sentence.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const OneFile files({reinterpret_cast<const char*>(data), size});
    std::vector<float> samples(4800);
    samples[480] = 0.5F;
    samples[481] = -0.25F;
    for (const FoundPack& found : findPacks(files)) {
        require(found.pack.has_value() != !found.error.empty(), "a pack or an error");
        if (!found.pack) {
            continue;
        }
        PackAudioFiles audio;
        for (const std::string& name : audioFilesOf(*found.pack)) {
            audio[name] = {.rate = 44100, .samples = samples};
        }
        try {
            const ConvertedPack converted = convertPack(*found.pack, audio);
            require(!converted.contents.board.sounds.empty(), "a board has a sound");
            require(!reportAsJson(converted.report).empty(), "a report can be written");
        } catch (const ForeignPackError&) {
            continue;
        }
    }
    return 0;
}
