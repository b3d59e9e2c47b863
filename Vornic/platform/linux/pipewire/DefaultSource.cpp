#include "Vornic/platform/linux/pipewire/DefaultSource.h"

#include "Vornic/platform/linux/pipewire/ServerText.h"

#include <string_view>
#include <utility>

namespace vornic {

DefaultSource::DefaultSource(pw_core* core, std::function<void(std::uint32_t)> removed)
    : removed_(std::move(removed)), registry_(pw_core_get_registry(core, PW_VERSION_REGISTRY, 0)) {
    if (registry_ == nullptr) {
        return;
    }
    static const pw_registry_events events = [] {
        pw_registry_events registry{};
        registry.version = PW_VERSION_REGISTRY_EVENTS;
        registry.global = [](void* self, std::uint32_t id, std::uint32_t, const char* type,
                             std::uint32_t, const spa_dict* properties) {
            static_cast<DefaultSource*>(self)->add(id, type, properties);
        };
        registry.global_remove = [](void* self, std::uint32_t id) {
            auto* source = static_cast<DefaultSource*>(self);
            source->names_.erase(id);
            source->removed_(id);
        };
        return registry;
    }();
    pw_registry_add_listener(registry_.get(), &registryListener_.hook, &events, this);
}

void DefaultSource::add(std::uint32_t id, const char* type, const spa_dict* properties) {
    const std::string_view kind = type;
    if (kind == PW_TYPE_INTERFACE_Node) {
        const std::string_view media = lookUp(properties, PW_KEY_MEDIA_CLASS);
        if (media.starts_with("Audio/Source") || media == "Audio/Duplex") {
            names_[id] = lookUp(properties, PW_KEY_NODE_NAME);
        }
    } else if (kind == PW_TYPE_INTERFACE_Metadata && metadata_ == nullptr &&
               lookUp(properties, PW_KEY_METADATA_NAME) == "default") {
        bindMetadata(id);
    }
}

void DefaultSource::bindMetadata(std::uint32_t id) {
    metadata_.reset(static_cast<pw_metadata*>(
        pw_registry_bind(registry_.get(), id, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0)));
    if (metadata_ == nullptr) {
        return;
    }
    metadataListener_ = std::make_unique<Listener>();
    static const pw_metadata_events events = [] {
        pw_metadata_events metadata{};
        metadata.version = PW_VERSION_METADATA_EVENTS;
        metadata.property = [](void* self, std::uint32_t subject, const char* key, const char*,
                               const char* value) {
            if (subject == PW_ID_CORE && key != nullptr &&
                std::string_view(key) == "default.audio.source") {
                static_cast<DefaultSource*>(self)->defaultName_ =
                    value == nullptr ? std::string() : nameIn(value);
            }
            return 0;
        };
        return metadata;
    }();
    pw_metadata_add_listener(metadata_.get(), &metadataListener_->hook, &events, this);
}

std::optional<DefaultSource::Source> DefaultSource::source() const {
    for (const auto& [id, name] : names_) {
        if (defaultName_.empty() || name == defaultName_) {
            return Source{id, name};
        }
    }
    return std::nullopt;
}

} // namespace vornic
