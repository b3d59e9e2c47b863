#pragma once

#include "VornicCore/keys/KeyClass.h"
#include "VornicCore/sampler/FrameStore.h"
#include "VornicCore/sampler/Sample.h"

#include <map>
#include <span>
#include <vector>

namespace vornic {

/// Samples by key class, and one pool of release sounds for all keys. Read-only once built.
/// Thread: any.
class SampleBank {
  public:
    /// Mono frames, one list per variation.
    using Variations = std::vector<std::vector<float>>;

    /// Copies every variation that is not empty. A key class that has only empty ones is present
    /// all the same, without samples.
    SampleBank(const std::map<KeyClass, Variations>& press, const Variations& release);

    /// The samples of a key class; without any, those of the regular keys.
    std::span<const Sample> pool(KeyClass keyClass) const;

    const std::map<KeyClass, std::vector<Sample>>& samples() const { return samples_; }
    const std::vector<Sample>& releases() const { return releases_; }

  private:
    std::vector<Sample> copy(const Variations& variations);

    FrameStore owned_;
    std::map<KeyClass, std::vector<Sample>> samples_;
    std::vector<Sample> releases_;
};

} // namespace vornic
