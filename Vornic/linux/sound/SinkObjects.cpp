#include "Vornic/linux/sound/SinkObjects.h"

#include <spa/param/param.h>
#include <spa/pod/iter.h>
#include <spa/pod/parser.h>

#include <utility>

namespace vornic {

namespace {

void update(ObjectProperties& properties, const spa_dict* dictionary) {
    if (dictionary == nullptr) {
        return;
    }
    for (std::uint32_t i = 0; i < dictionary->n_items; ++i) {
        const spa_dict_item& item = dictionary->items[i];
        if (item.value == nullptr) {
            properties.erase(item.key);
        } else {
            properties.insert_or_assign(item.key, item.value);
        }
    }
}

/// The value of "port.type" in a route's list of alternating keys and values.
std::string portTypeIn(const spa_pod* information) {
    spa_pod_parser parser{};
    spa_pod_frame frame{};
    std::int32_t count = 0;
    spa_pod_parser_pod(&parser, information);
    if (spa_pod_parser_push_struct(&parser, &frame) < 0 ||
        spa_pod_parser_get_int(&parser, &count) < 0) {
        return {};
    }
    for (std::int32_t i = 0; i < count; ++i) {
        const char* key = nullptr;
        const char* value = nullptr;
        if (spa_pod_parser_get_string(&parser, &key) < 0 ||
            spa_pod_parser_get_string(&parser, &value) < 0) {
            break;
        }
        if (std::string_view(key) == "port.type") {
            return value;
        }
    }
    return {};
}

} // namespace

std::string valueOf(const ObjectProperties& properties, const char* key) {
    const auto found = properties.find(key);
    return found == properties.end() ? std::string() : found->second;
}

SinkNode::SinkNode(pw_registry* registry, std::uint32_t id, const spa_dict* properties,
                   std::function<void()> changed)
    : changed_(std::move(changed)),
      node_(static_cast<pw_node*>(
          pw_registry_bind(registry, id, PW_TYPE_INTERFACE_Node, PW_VERSION_NODE, 0))) {
    update(properties_, properties);
    if (node_ == nullptr) {
        return;
    }
    static const pw_node_events events = [] {
        pw_node_events node{};
        node.version = PW_VERSION_NODE_EVENTS;
        node.info = [](void* self, const pw_node_info* info) {
            if ((info->change_mask & PW_NODE_CHANGE_MASK_PROPS) != 0) {
                auto* sink = static_cast<SinkNode*>(self);
                update(sink->properties_, info->props);
                sink->changed_();
            }
        };
        return node;
    }();
    pw_node_add_listener(node_.get(), &listener_.hook, &events, this);
}

std::optional<ActiveRoute> activeRouteOf(const spa_pod* parameter) {
    ActiveRoute route;
    std::uint32_t direction = SPA_DIRECTION_INPUT;
    const spa_pod* information = nullptr;
    if (parameter == nullptr ||
        spa_pod_parse_object(parameter, SPA_TYPE_OBJECT_ParamRoute, nullptr,
                             SPA_PARAM_ROUTE_direction, SPA_POD_Id(&direction),
                             SPA_PARAM_ROUTE_device, SPA_POD_Int(&route.profileDevice),
                             SPA_PARAM_ROUTE_info, SPA_POD_OPT_Pod(&information)) < 0 ||
        direction != SPA_DIRECTION_OUTPUT) {
        return std::nullopt;
    }
    if (information != nullptr) {
        route.portType = portTypeIn(information);
    }
    return route;
}

SoundCard::SoundCard(pw_registry* registry, std::uint32_t id, const spa_dict* properties,
                     std::function<void()> changed)
    : changed_(std::move(changed)),
      device_(static_cast<pw_device*>(
          pw_registry_bind(registry, id, PW_TYPE_INTERFACE_Device, PW_VERSION_DEVICE, 0))) {
    update(properties_, properties);
    if (device_ == nullptr) {
        return;
    }
    static const pw_device_events events = [] {
        pw_device_events device{};
        device.version = PW_VERSION_DEVICE_EVENTS;
        device.info = [](void* self, const pw_device_info* info) {
            auto* card = static_cast<SoundCard*>(self);
            if ((info->change_mask & PW_DEVICE_CHANGE_MASK_PROPS) != 0) {
                update(card->properties_, info->props);
                card->changed_();
            }
            if ((info->change_mask & PW_DEVICE_CHANGE_MASK_PARAMS) != 0) {
                card->askForRoutes(*info);
            }
        };
        device.param = [](void* self, int, std::uint32_t, std::uint32_t, std::uint32_t,
                          const spa_pod* parameter) {
            if (auto route = activeRouteOf(parameter)) {
                auto* card = static_cast<SoundCard*>(self);
                card->portTypes_.insert_or_assign(route->profileDevice, std::move(route->portType));
                card->changed_();
            }
        };
        return device;
    }();
    pw_device_add_listener(device_.get(), &listener_.hook, &events, this);
}

void SoundCard::askForRoutes(const pw_device_info& info) {
    // A subscription would bring them unasked, but not from every kind of card.
    for (std::uint32_t i = 0; i < info.n_params; ++i) {
        if (info.params[i].id == SPA_PARAM_Route &&
            (info.params[i].flags & SPA_PARAM_INFO_READ) != 0) {
            pw_device_enum_params(device_.get(), 0, SPA_PARAM_Route, 0, UINT32_MAX, nullptr);
        }
    }
}

std::string SoundCard::portType(std::int32_t profileDevice) const {
    const auto found = portTypes_.find(profileDevice);
    return found == portTypes_.end() ? std::string() : found->second;
}

} // namespace vornic
