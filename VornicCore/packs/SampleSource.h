#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Where the renderer finds its recordings. Read by many threads at once.
class SampleSource {
  public:
    SampleSource() = default;
    SampleSource(const SampleSource&) = delete;
    SampleSource& operator=(const SampleSource&) = delete;
    virtual ~SampleSource() = default;

    /// The recording stored under `id`, mono at 48 kHz, or none. The same for as long as a render
    /// lasts. Any thread.
    [[nodiscard]] virtual std::optional<std::vector<float>>
    samples(const std::string& id) const = 0;
};

} // namespace vornic
