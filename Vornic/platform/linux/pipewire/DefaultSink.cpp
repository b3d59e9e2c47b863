#include "Vornic/platform/linux/pipewire/DefaultSink.h"

#include "Vornic/platform/linux/pipewire/ServerText.h"

#include <charconv>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

/// A sink that the server makes when it has no other, and that leads nowhere.
constexpr std::string_view nowhere = "auto_null";

template <typename Number>
std::optional<Number> numberOf(const std::string& text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace

DefaultSink::DefaultSink(pw_core* core, std::function<void()> changed,
                         std::function<std::uint32_t()> ownNode)
    : changed_(std::move(changed)), ownNode_(std::move(ownNode)),
      registry_(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0)) {
    if (registry_ == nullptr) {
        return;
    }
    static const pw_registry_events events = [] {
        pw_registry_events registry{};
        registry.version = PW_VERSION_REGISTRY_EVENTS;
        registry.global = [](void* self, std::uint32_t id, std::uint32_t, const char* type,
                             std::uint32_t, const spa_dict* properties) {
            static_cast<DefaultSink*>(self)->add(id, type, properties);
        };
        registry.global_remove = [](void* self, std::uint32_t id) {
            static_cast<DefaultSink*>(self)->remove(id);
        };
        return registry;
    }();
    pw_registry_add_listener(registry_.get(), &registryListener_.hook, &events, this);
}

void DefaultSink::add(std::uint32_t id, const char* type, const spa_dict* properties) {
    const std::string_view kind = type;
    if (kind == PW_TYPE_INTERFACE_Node) {
        if (lookUp(properties, PW_KEY_MEDIA_CLASS).starts_with("Audio/Sink") ||
            lookUp(properties, PW_KEY_MEDIA_CLASS) == "Audio/Duplex") {
            nodes_[id] = std::make_unique<SinkNode>(registry_.get(), id, properties, changed_);
            changed_();
        }
    } else if (kind == PW_TYPE_INTERFACE_Device) {
        if (lookUp(properties, PW_KEY_MEDIA_CLASS) == "Audio/Device") {
            cards_[id] = std::make_unique<SoundCard>(registry_.get(), id, properties, changed_);
            changed_();
        }
    } else if (kind == PW_TYPE_INTERFACE_Metadata && metadata_ == nullptr &&
               lookUp(properties, PW_KEY_METADATA_NAME) == "default") {
        bindMetadata(id);
        changed_();
    } else if (kind == PW_TYPE_INTERFACE_Link &&
               numberOf<std::uint32_t>(std::string(lookUp(properties, PW_KEY_LINK_OUTPUT_NODE))) ==
                   ownNode_()) {
        // The stream is moved when the default sink changes: were the word of that lost, it would
        // be missed here.
        askAgain();
    }
}

void DefaultSink::askAgain() {
    if (metadata_ != nullptr) {
        bindMetadata(metadataId_);
    }
}

void DefaultSink::bindMetadata(std::uint32_t id) {
    metadataListener_.reset();
    metadata_.reset(static_cast<pw_metadata*>(
        pw_registry_bind(registry_.get(), id, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0)));
    if (metadata_ == nullptr) {
        return;
    }
    metadataId_ = id;
    metadataListener_ = std::make_unique<Listener>();
    static const pw_metadata_events events = [] {
        pw_metadata_events metadata{};
        metadata.version = PW_VERSION_METADATA_EVENTS;
        metadata.property = [](void* self, std::uint32_t subject, const char* key, const char*,
                               const char* value) {
            if (subject == PW_ID_CORE) {
                static_cast<DefaultSink*>(self)->setDefault(key, value);
            }
            return 0;
        };
        return metadata;
    }();
    pw_metadata_add_listener(metadata_.get(), &metadataListener_->hook, &events, this);
}

void DefaultSink::remove(std::uint32_t id) {
    if (id == metadataId_) {
        metadataId_ = SPA_ID_INVALID;
        metadataListener_.reset();
        metadata_.reset();
        defaultName_.clear();
        changed_();
    } else if (nodes_.erase(id) + cards_.erase(id) > 0) {
        changed_();
    }
}

void DefaultSink::setDefault(const char* key, const char* value) {
    // A null key clears every property of the subject.
    if (key != nullptr && std::string_view(key) != "default.audio.sink") {
        return;
    }
    defaultName_ = key == nullptr || value == nullptr ? std::string() : nameIn(value);
    changed_();
}

std::optional<OutputProperties> DefaultSink::properties() const {
    if (defaultName_.empty() || defaultName_ == nowhere) {
        return std::nullopt;
    }
    for (const auto& [id, node] : nodes_) {
        if (valueOf(node->properties(), PW_KEY_NODE_NAME) != defaultName_) {
            continue;
        }
        const SoundCard* card = nullptr;
        if (const auto cardId =
                numberOf<std::uint32_t>(valueOf(node->properties(), PW_KEY_DEVICE_ID))) {
            const auto found = cards_.find(*cardId);
            card = found == cards_.end() ? nullptr : found->second.get();
        }
        // A sink repeats some of its card's properties and leaves the others to it.
        const auto value = [&](const char* key) {
            const std::string own = valueOf(node->properties(), key);
            return own.empty() && card != nullptr ? valueOf(card->properties(), key) : own;
        };
        OutputProperties properties;
        properties.description = valueOf(node->properties(), PW_KEY_NODE_DESCRIPTION);
        if (properties.description.empty()) {
            properties.description = defaultName_;
        }
        properties.api = value(PW_KEY_DEVICE_API);
        properties.bus = value(PW_KEY_DEVICE_BUS);
        properties.formFactor = value(PW_KEY_DEVICE_FORM_FACTOR);
        if (const auto device =
                numberOf<std::int32_t>(valueOf(node->properties(), "card.profile.device"));
            device && card != nullptr) {
            properties.portType = card->portType(*device);
        }
        return properties;
    }
    return std::nullopt;
}

} // namespace vornic
