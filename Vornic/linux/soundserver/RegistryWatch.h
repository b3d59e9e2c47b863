#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <cstdint>
#include <functional>

namespace vornic {

/// Is told of every object of the server that comes and goes. Everything on the loop's thread.
class RegistryWatch {
  public:
    using Added =
        std::function<void(std::uint32_t id, const char* type, const spa_dict* properties)>;
    using Removed = std::function<void(std::uint32_t id)>;

    RegistryWatch(pw_core* core, Added added, Removed removed);
    RegistryWatch(const RegistryWatch&) = delete;
    RegistryWatch& operator=(const RegistryWatch&) = delete;
    ~RegistryWatch() = default;

    /// Null where the server has none to give.
    pw_registry* get() const { return registry_.get(); }

  private:
    Added added_;
    Removed removed_;
    RegistryHandle registry_;
    Listener listener_;
};

} // namespace vornic
