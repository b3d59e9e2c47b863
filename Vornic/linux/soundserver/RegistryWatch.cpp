#include "Vornic/linux/soundserver/RegistryWatch.h"

#include <utility>

namespace vornic {

RegistryWatch::RegistryWatch(pw_core* core, Added added, Removed removed)
    : added_(std::move(added)), removed_(std::move(removed)),
      registry_(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0)) {
    if (registry_ == nullptr) {
        return;
    }
    static const pw_registry_events events = [] {
        pw_registry_events registry{};
        registry.version = PW_VERSION_REGISTRY_EVENTS;
        registry.global = [](void* self, std::uint32_t id, std::uint32_t, const char* type,
                             std::uint32_t, const spa_dict* properties) {
            static_cast<RegistryWatch*>(self)->added_(id, type, properties);
        };
        registry.global_remove = [](void* self, std::uint32_t id) {
            static_cast<RegistryWatch*>(self)->removed_(id);
        };
        return registry;
    }();
    pw_registry_add_listener(registry_.get(), &listener_.hook, &events, this);
}

} // namespace vornic
