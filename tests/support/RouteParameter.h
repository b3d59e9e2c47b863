#pragma once

#include <spa/param/param.h>
#include <spa/pod/builder.h>

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace vornic {

/// A Route parameter as a sound card sends it.
class RouteParameter {
  public:
    RouteParameter(std::uint32_t direction, std::int32_t device,
                   const std::vector<std::pair<const char*, const char*>>& information) {
        spa_pod_builder builder{};
        spa_pod_builder_init(&builder, memory_.data(), static_cast<std::uint32_t>(memory_.size()));
        spa_pod_frame object{};
        spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamRoute, SPA_PARAM_Route);
        spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_index, 0);
        spa_pod_builder_int(&builder, 3);
        spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_direction, 0);
        spa_pod_builder_id(&builder, direction);
        spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_device, 0);
        spa_pod_builder_int(&builder, device);
        spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_name, 0);
        spa_pod_builder_string(&builder, "analog-output");
        if (!information.empty()) {
            spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_info, 0);
            spa_pod_frame list{};
            spa_pod_builder_push_struct(&builder, &list);
            spa_pod_builder_int(&builder, static_cast<std::int32_t>(information.size()));
            for (const auto& [key, value] : information) {
                spa_pod_builder_string(&builder, key);
                spa_pod_builder_string(&builder, value);
            }
            spa_pod_builder_pop(&builder, &list);
        }
        pod_ = static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
    }

    const spa_pod* pod() const { return pod_; }

  private:
    alignas(8) std::array<std::uint8_t, 2048> memory_{};
    const spa_pod* pod_ = nullptr;
};

} // namespace vornic
