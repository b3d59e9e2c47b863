#include "VornicCore/packs/SoundPack.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"
#include "fuzz/JsonMutator.h"

#include <fstream>

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largest, unsigned int seed) {
    return vornic::mutateJson(data, size, largest, seed);
}

/// Whatever the manifest holds, there is a pack with one press or none at all.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    const auto file = folder.put("pack.json", data, size);
    std::ofstream(folder.path() / "regular-01.wav") << "x";
    const auto manifest = vornic::Manifest::read(file);
    const auto pack = vornic::SoundPack::load(folder.path());
    vornic::require(pack.has_value() == manifest.has_value(), "a manifest makes a pack");
    if (pack) {
        vornic::require(pack->manifest == *manifest && pack->files.size() == 1, "a whole pack");
        const auto id = pack->sampleID(folder.path() / "regular-01.wav");
        vornic::require(id == pack->id() + "/regular-01", "a sample has its name");
    }
    return 0;
}
