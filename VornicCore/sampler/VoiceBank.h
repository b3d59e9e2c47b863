#pragma once

#include "VornicCore/sampler/FrameStore.h"
#include "VornicCore/sampler/Sample.h"
#include "VornicCore/sampler/Velocity.h"

#include <functional>
#include <initializer_list>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// Every rendered variation of a board's sounds, in pools by key. One thread fills it; once it has
/// been handed over it is only read, by any thread. A replaced pool's frames live on until the bank
/// is destroyed. Thread: any.
class VoiceBank {
  public:
    using Pools = std::map<std::string, std::vector<Sample>, std::less<>>;

    /// Makes copies of the variations the pool of `key`, in place of an earlier one. Variations
    /// below 2 frames could never sound and are left out; if none remains, nothing changes.
    void add(std::string_view key, std::span<const std::vector<float>> variations);
    void add(std::string_view key, std::initializer_list<std::vector<float>> variations) {
        add(key, std::span(variations.begin(), variations.size()));
    }

    /// The variations under `key`, empty if there are none. Valid until the next `add`.
    std::span<const Sample> pool(std::string_view key) const;

    const Pools& pools() const { return pools_; }

    /// The key of a press: "alpha|key|2", "alpha|stab|0".
    static std::string key(std::string_view sound, bool stabilised, Velocity velocity);
    /// The key of a release: "alpha|release".
    static std::string releaseKey(std::string_view sound);

  private:
    Pools pools_;
    FrameStore owned_;
};

} // namespace vornic
