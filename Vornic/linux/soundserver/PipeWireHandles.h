#pragma once

#include <pipewire/extensions/metadata.h>
#include <pipewire/pipewire.h>

#include <memory>

namespace vornic {

/// Calls the library's function that ends an object. Objects are owned by `std::unique_ptr` with
/// one of the aliases below, and end with the loop held or stopped. Thread: any that
/// holds the server's loop.
template <auto end>
struct PipeWireDeleter {
    template <typename Object>
    void operator()(Object* object) const {
        end(object);
    }
};

inline void destroyProxy(void* proxy) {
    pw_proxy_destroy(static_cast<pw_proxy*>(proxy));
}
inline void disconnectCore(pw_core* core) {
    pw_core_disconnect(core);
}

using LoopHandle = std::unique_ptr<pw_thread_loop, PipeWireDeleter<pw_thread_loop_destroy>>;
using ContextHandle = std::unique_ptr<pw_context, PipeWireDeleter<pw_context_destroy>>;
using CoreHandle = std::unique_ptr<pw_core, PipeWireDeleter<disconnectCore>>;
using ProxyHandle = std::unique_ptr<pw_proxy, PipeWireDeleter<pw_proxy_destroy>>;
using RegistryHandle = std::unique_ptr<pw_registry, PipeWireDeleter<destroyProxy>>;
using MetadataHandle = std::unique_ptr<pw_metadata, PipeWireDeleter<destroyProxy>>;
using NodeHandle = std::unique_ptr<pw_node, PipeWireDeleter<destroyProxy>>;
using DeviceHandle = std::unique_ptr<pw_device, PipeWireDeleter<destroyProxy>>;
using StreamHandle = std::unique_ptr<pw_stream, PipeWireDeleter<pw_stream_destroy>>;

/// A registration for events, taken back at the end of its life.
class Listener {
  public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() {
        if (hook.link.next != nullptr) {
            spa_hook_remove(&hook);
        }
    }

    spa_hook hook{};
};

} // namespace vornic
