#include "VornicCore/sampler/SampleBank.h"

namespace vornic {

SampleBank::SampleBank(const std::map<KeyClass, Variations>& press, const Variations& release) {
    for (const auto& [keyClass, variations] : press) {
        samples_.emplace(keyClass, copy(variations));
    }
    releases_ = copy(release);
}

std::vector<Sample> SampleBank::copy(const Variations& variations) {
    std::vector<Sample> samples;
    for (const auto& frames : variations) {
        if (!frames.empty()) {
            samples.push_back(owned_.add(frames));
        }
    }
    return samples;
}

std::span<const Sample> SampleBank::pool(KeyClass keyClass) const {
    auto found = samples_.find(keyClass);
    if (found == samples_.end() || found->second.empty()) {
        found = samples_.find(KeyClass::regular);
    }
    return found == samples_.end() ? std::span<const Sample>() : found->second;
}

} // namespace vornic
