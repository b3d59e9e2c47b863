#include "Vornic/library/SampleLibrary.h"

#include "VornicCore/recordings/LoadAudio.h"

#include <utility>

namespace vornic {

SampleLibrary::SampleLibrary(std::span<const SoundPack> packs) {
    for (const SoundPack& pack : packs) {
        for (const auto& [keyClass, files] : pack.files) {
            load(pack, files);
        }
        load(pack, pack.releaseFiles);
    }
}

void SampleLibrary::load(const SoundPack& pack, const std::vector<std::filesystem::path>& files) {
    for (const std::filesystem::path& file : files) {
        if (std::optional<std::vector<float>> samples = loadAudio(file)) {
            const std::lock_guard guard(lock_);
            store_[pack.sampleID(file)] = *std::move(samples);
        }
    }
}

std::optional<std::vector<float>> SampleLibrary::samples(const std::string& id) const {
    const std::lock_guard guard(lock_);
    const auto found = store_.find(id);
    return found == store_.end() ? std::nullopt : std::optional(found->second);
}

std::size_t SampleLibrary::count() const {
    const std::lock_guard guard(lock_);
    return store_.size();
}

} // namespace vornic
