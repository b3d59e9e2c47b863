#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"

#include "Vornic/linux/quiet/CaptureGraph.h"
#include "Vornic/linux/soundserver/Registry.h"

#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

/// No process has this number.
constexpr std::int64_t nobody = -1;

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
        : owner_(owner), registry_(
                             core,
                             [this](std::uint32_t id, std::string_view type,
                                    const spa_dict* properties) { add(id, type, properties); },
                             [this](std::uint32_t id) {
                                 nodes_.erase(id);
                                 graph_.remove(id);
                                 tell();
                             }) {}

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
            GraphNode node = describe(properties);
            // The server stops listening to a connection that asks for a node of its own while that
            // is being made, and both wait for ever. Our own stream runs whenever it is connected.
            node.isRunning = graph_.isOf(node.client, ::getpid());
            const bool isOwn = node.isRunning;
            graph_.setNode(id, std::move(node));
            if (!isOwn) {
                follow(id);
            }
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

    void tell() {
        owner_.tell({.byOthers = graph_.inUse(::getpid()),
                     .byAnybody = graph_.inUse(nobody),
                     .canCheck = graph_.hasMicrophone()});
    }

    PipeWireMicrophoneUse& owner_;
    CaptureGraph graph_;
    RegistryWatch registry_; // its nodes below go before it
    std::map<std::uint32_t, std::unique_ptr<Node>> nodes_;
};

PipeWireMicrophoneUse::PipeWireMicrophoneUse(Scheduler& scheduler, SoundServer& server)
    : scheduler_(scheduler), server_(server) {}

PipeWireMicrophoneUse::~PipeWireMicrophoneUse() {
    server_.remove(*this);
}

void PipeWireMicrophoneUse::start() {
    server_.add(*this);
}

void PipeWireMicrophoneUse::connected(pw_core* core) {
    watch_ = std::make_unique<Watch>(core, *this);
}

void PipeWireMicrophoneUse::disconnected() {
    watch_.reset();
    tell({});
}

void PipeWireMicrophoneUse::tell(const Use& use) {
    canCheck_ = use.canCheck;
    inUseByAnybody_ = use.byAnybody;
    if (inUse_.exchange(use.byOthers) == use.byOthers) {
        return;
    }
    scheduler_.post(lifetime_.guard([this] { onChange(); }));
}

} // namespace vornic
