#include "VornicCore/sampler/VoiceBank.h"

namespace vornic {

void VoiceBank::add(std::string_view key, std::span<const std::vector<float>> variations) {
    constexpr std::size_t shortest = 2; // frames; the sampler needs two to interpolate between
    std::vector<Sample> pool;
    for (const auto& frames : variations) {
        if (frames.size() >= shortest) {
            pool.push_back(owned_.add(frames));
        }
    }
    if (!pool.empty()) {
        pools_.insert_or_assign(std::string(key), std::move(pool));
    }
}

std::span<const Sample> VoiceBank::pool(std::string_view key) const {
    const auto found = pools_.find(key);
    return found == pools_.end() ? std::span<const Sample>() : found->second;
}

std::string VoiceBank::key(std::string_view sound, bool stabilised, Velocity velocity) {
    std::string key(sound);
    key += stabilised ? "|stab|" : "|key|";
    key += std::to_string(rawValue(velocity));
    return key;
}

std::string VoiceBank::releaseKey(std::string_view sound) {
    return std::string(sound) + "|release";
}

} // namespace vornic
