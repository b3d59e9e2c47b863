#pragma once

#include "Vornic/linux/soundserver/DefaultName.h"
#include "Vornic/linux/soundserver/RegistryWatch.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace vornic {

/// Follows which microphone is the default one. The monitor of an output, which the server offers
/// for want of a microphone, is none. Everything on the loop's thread.
class DefaultSource {
  public:
    /// `removed` is told the number of every object of the server that goes.
    DefaultSource(pw_core* core, std::function<void(std::uint32_t)> removed);

    struct Source {
        std::uint32_t id;
        std::string name;
    };

    /// The default microphone; where none is chosen, the first there is.
    [[nodiscard]] std::optional<Source> source() const;

  private:
    void add(std::uint32_t id, const char* type, const spa_dict* properties);
    void remove(std::uint32_t id);

    std::function<void(std::uint32_t)> removed_;
    std::map<std::uint32_t, std::string> names_; // of the microphones
    RegistryWatch registry_;
    DefaultName default_{"default.audio.source", [] {}};
};

} // namespace vornic
