#pragma once

#include "VornicCore/recordings/SoundPack.h"
#include "VornicCore/render/SampleSource.h"

#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace vornic {

/// Every recording in memory, 48 kHz mono, by its sample identifier ("spring/regular-01"). Loaded
/// once; read by the thread that fills banks. Every function may be called from any thread.
class SampleLibrary final : public SampleSource {
  public:
    /// Loads every press and release of `packs`. Files that cannot be read are left out. Takes
    /// well under a millisecond a recording, so it loads them one after the other.
    explicit SampleLibrary(std::span<const SoundPack> packs);

    /// A copy of the samples stored under `id`, or none.
    [[nodiscard]] std::optional<std::vector<float>> samples(const std::string& id) const override;

    /// How many recordings there are.
    [[nodiscard]] std::size_t count() const;

  private:
    void load(const SoundPack& pack, const std::vector<std::filesystem::path>& files);

    std::unordered_map<std::string, std::vector<float>> store_; // guarded by lock_
    mutable std::mutex lock_;
};

} // namespace vornic
