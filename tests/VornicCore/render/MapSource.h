#pragma once

#include "VornicCore/packs/SampleSource.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// Recordings that a test makes up.
class MapSource final : public SampleSource {
  public:
    using Recordings = std::map<std::string, std::vector<float>>;

    explicit MapSource(Recordings given) : recordings(std::move(given)) {}

    Recordings recordings;

    std::optional<std::vector<float>> samples(const std::string& id) const override {
        const auto found = recordings.find(id);
        return found == recordings.end() ? std::nullopt : std::optional(found->second);
    }
};

} // namespace vornic
