#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Where the renderer finds its recordings. Read by many threads at once. Thread: any.
class SampleSource {
  public:
    SampleSource() = default;
    SampleSource(const SampleSource&) = delete;
    SampleSource& operator=(const SampleSource&) = delete;
    virtual ~SampleSource() = default;

    /// The recording stored under `id`, mono at 48 kHz, or none. The same for as long as a render
    /// lasts.
    [[nodiscard]] virtual std::optional<std::vector<float>>
    samples(const std::string& id) const = 0;

    /// How many frames that recording has; 0 where there is none.
    [[nodiscard]] virtual std::size_t frames(const std::string& id) const {
        const auto found = samples(id);
        return found ? found->size() : 0;
    }

    /// Gives back the memory of what can be had again and that nobody has asked for since this was
    /// last called.
    virtual void forgetUnused() const {}
};

} // namespace vornic
