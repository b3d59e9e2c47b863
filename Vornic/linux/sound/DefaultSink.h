#pragma once

#include "Vornic/linux/sound/SinkObjects.h"
#include "Vornic/linux/soundserver/Registry.h"
#include "Vornic/sound/OutputDevice.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vornic {

/// Follows which sink is the default one and what is known of it, from the events of one connection
/// to the server. Thread: any that holds the server's loop.
class DefaultSink {
  public:
    /// `changed` is called after every event that may alter an answer below, but for those of
    /// `defaults`, which outlives this. `ownNode` gives the number of the stream that plays to the
    /// default sink.
    DefaultSink(pw_core* core, DefaultNames& defaults, std::function<void()> changed,
                std::function<std::uint32_t()> ownNode);

    /// What the default sink says about itself; absent while there is none. Without delay, buffer
    /// and rate, which only a running stream knows.
    std::optional<OutputProperties> properties() const;

    /// Whether somebody chooses a default sink at all: a session manager is running.
    bool hasSessionManager() const { return defaults_.areChosen(); }

    /// Whether there are sinks but no word yet which is the default one.
    bool lacksDefault() const {
        return hasSessionManager() && !nodes_.empty() && defaults_.sink().empty();
    }

    /// Asks once more for the default sink.
    void askAgain() { defaults_.askAgain(); }

  private:
    void add(std::uint32_t id, const char* type, const spa_dict* properties);
    void remove(std::uint32_t id);

    DefaultNames& defaults_;
    std::function<void()> changed_;
    std::function<std::uint32_t()> ownNode_;
    RegistryWatch registry_; // its objects below go before it
    std::map<std::uint32_t, std::unique_ptr<SinkNode>> nodes_;
    std::map<std::uint32_t, std::unique_ptr<SoundCard>> cards_;
};

} // namespace vornic
