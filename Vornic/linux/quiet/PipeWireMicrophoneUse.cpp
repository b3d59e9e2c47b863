#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"

#include <unistd.h>

#include <charconv>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

std::string_view lookUp(const spa_dict* properties, const char* key) {
    const char* const value = properties == nullptr ? nullptr : spa_dict_lookup(properties, key);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

/// 0 where there is no such number.
template <typename Number>
Number numberIn(const spa_dict* properties, const char* key) {
    const std::string_view text = lookUp(properties, key);
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

GraphNode describe(const spa_dict* properties) {
    return {.mediaClass = std::string(lookUp(properties, PW_KEY_MEDIA_CLASS)),
            .clientApi = std::string(lookUp(properties, PW_KEY_CLIENT_API)),
            .linkGroup = std::string(lookUp(properties, PW_KEY_NODE_LINK_GROUP)),
            .isMeter = lookUp(properties, PW_KEY_STREAM_MONITOR) == "true",
            .client = numberIn<std::uint32_t>(properties, PW_KEY_CLIENT_ID),
            .isRunning = false};
}

} // namespace

/// The server's objects of one connection, on its thread.
class PipeWireMicrophoneUse::Watch {
  public:
    Watch(pw_core* core, PipeWireMicrophoneUse& owner)
        : owner_(owner), registry_(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0)) {
        if (registry_ == nullptr) {
            return;
        }
        static const pw_registry_events events = [] {
            pw_registry_events registry{};
            registry.version = PW_VERSION_REGISTRY_EVENTS;
            registry.global = [](void* self, std::uint32_t id, std::uint32_t, const char* type,
                                 std::uint32_t, const spa_dict* properties) {
                static_cast<Watch*>(self)->add(id, type, properties);
            };
            registry.global_remove = [](void* self, std::uint32_t id) {
                auto* watch = static_cast<Watch*>(self);
                watch->nodes_.erase(id);
                watch->graph_.remove(id);
                watch->tell();
            };
            return registry;
        }();
        pw_registry_add_listener(registry_.get(), &listener_.hook, &events, this);
    }

  private:
    /// A node whose state is followed: only then does the server tell it.
    struct Node {
        Node(Watch& owner, std::uint32_t number) : watch(owner), id(number) {}
        Watch& watch;
        std::uint32_t id;
        NodeHandle proxy;
        Listener listener;
    };

    void add(std::uint32_t id, std::string_view type, const spa_dict* properties) {
        if (type == PW_TYPE_INTERFACE_Node) {
            graph_.setNode(id, describe(properties));
            follow(id);
        } else if (type == PW_TYPE_INTERFACE_Link) {
            graph_.setLink(id, numberIn<std::uint32_t>(properties, PW_KEY_LINK_OUTPUT_NODE),
                           numberIn<std::uint32_t>(properties, PW_KEY_LINK_INPUT_NODE));
        } else if (type == PW_TYPE_INTERFACE_Client) {
            graph_.setProcess(id, numberIn<std::int64_t>(properties, PW_KEY_SEC_PID));
        } else {
            return;
        }
        tell();
    }

    void follow(std::uint32_t id) {
        auto node = std::make_unique<Node>(*this, id);
        node->proxy.reset(static_cast<pw_node*>(
            pw_registry_bind(registry_.get(), id, PW_TYPE_INTERFACE_Node, PW_VERSION_NODE, 0)));
        if (node->proxy == nullptr) {
            return;
        }
        static const pw_node_events events = [] {
            pw_node_events listener{};
            listener.version = PW_VERSION_NODE_EVENTS;
            listener.info = [](void* data, const pw_node_info* info) {
                auto* followed = static_cast<Node*>(data);
                followed->watch.take(followed->id, *info);
            };
            return listener;
        }();
        pw_node_add_listener(node->proxy.get(), &node->listener.hook, &events, node.get());
        nodes_[id] = std::move(node);
    }

    void take(std::uint32_t id, const pw_node_info& info) {
        // The registry leaves out some properties of a node; its own word is complete.
        if ((info.change_mask & PW_NODE_CHANGE_MASK_PROPS) != 0) {
            graph_.setNode(id, describe(info.props));
        }
        graph_.setRunning(id, info.state == PW_NODE_STATE_RUNNING);
        tell();
    }

    void tell() { owner_.tell(graph_.inUse(::getpid()), graph_.hasMicrophone()); }

    PipeWireMicrophoneUse& owner_;
    CaptureGraph graph_;
    RegistryHandle registry_;
    Listener listener_;
    std::map<std::uint32_t, std::unique_ptr<Node>> nodes_;
};

PipeWireMicrophoneUse::PipeWireMicrophoneUse(Scheduler& scheduler, std::string remote)
    : scheduler_(scheduler), remote_(std::move(remote)) {}

PipeWireMicrophoneUse::~PipeWireMicrophoneUse() {
    // Its thread looks at the other members.
    connection_.reset();
}

void PipeWireMicrophoneUse::start() {
    connection_ = std::make_unique<ServerConnection>(ServerConnection::Setup{
        .remote = remote_,
        .name = "vornic-mic",
        .connected = [this](pw_core* core) { watch_ = std::make_unique<Watch>(core, *this); },
        .lost =
            [this] {
                watch_.reset();
                tell(false, false);
            }});
}

void PipeWireMicrophoneUse::tell(bool inUse, bool canCheck) {
    canCheck_ = canCheck;
    if (inUse_.exchange(inUse) == inUse) {
        return;
    }
    scheduler_.post([this, alive = std::weak_ptr<int>(alive_)] {
        if (!alive.expired()) {
            onChange();
        }
    });
}

} // namespace vornic
