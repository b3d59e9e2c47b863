#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

struct spa_pod;

namespace vornic {

/// Properties of a server's object, as it sent them last. Thread: any that holds the server's loop.
using ObjectProperties = std::map<std::string, std::string, std::less<>>;

/// The value of `key`, empty when there is none.
std::string valueOf(const ObjectProperties& properties, const char* key);

/// A sink known to the server, with its properties kept up to date.
class SinkNode {
  public:
    SinkNode(pw_registry* registry, std::uint32_t id, const spa_dict* properties,
             std::function<void()> changed);

    const ObjectProperties& properties() const { return properties_; }

  private:
    ObjectProperties properties_;
    std::function<void()> changed_;
    NodeHandle node_;
    Listener listener_;
};

/// The socket that a sound card uses for one of its sinks.
struct ActiveRoute {
    /// Which of the card's sinks: its property "card.profile.device".
    std::int32_t profileDevice = -1;
    /// The kind of socket: "headphones", "speaker", "hdmi"; empty when not said.
    std::string portType;
};

/// Reads a Route parameter; absent when it is no playback route.
std::optional<ActiveRoute> activeRouteOf(const spa_pod* parameter);

/// A sound card known to the server, with its properties and its sockets in use kept up to date.
class SoundCard {
  public:
    SoundCard(pw_registry* registry, std::uint32_t id, const spa_dict* properties,
              std::function<void()> changed);

    const ObjectProperties& properties() const { return properties_; }

    /// The kind of the socket in use for the sink `profileDevice`; empty when unknown.
    std::string portType(std::int32_t profileDevice) const;

  private:
    void askForRoutes(const pw_device_info& info);

    ObjectProperties properties_;
    std::map<std::int32_t, std::string> portTypes_; // by ActiveRoute::profileDevice
    std::function<void()> changed_;
    DeviceHandle device_;
    Listener listener_;
};

} // namespace vornic
