#include "Vornic/linux/soundserver/DefaultName.h"

#include "Vornic/linux/soundserver/ServerText.h"

#include <string_view>
#include <utility>

namespace vornic {

DefaultName::DefaultName(std::string key, std::function<void()> changed)
    : key_(std::move(key)), changed_(std::move(changed)) {}

bool DefaultName::add(pw_registry* registry, std::uint32_t id, const char* type,
                      const spa_dict* properties) {
    if (metadata_ != nullptr || std::string_view(type) != PW_TYPE_INTERFACE_Metadata ||
        lookUp(properties, PW_KEY_METADATA_NAME) != "default") {
        return false;
    }
    registry_ = registry;
    id_ = id;
    bind();
    return true;
}

bool DefaultName::remove(std::uint32_t id) {
    if (id != id_) {
        return false;
    }
    id_ = SPA_ID_INVALID;
    listener_.reset();
    metadata_.reset();
    name_.clear();
    return true;
}

void DefaultName::askAgain() {
    if (metadata_ != nullptr) {
        bind();
    }
}

void DefaultName::bind() {
    listener_.reset();
    metadata_.reset(static_cast<pw_metadata*>(
        pw_registry_bind(registry_, id_, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0)));
    if (metadata_ == nullptr) {
        return;
    }
    listener_ = std::make_unique<Listener>();
    static const pw_metadata_events events = [] {
        pw_metadata_events metadata{};
        metadata.version = PW_VERSION_METADATA_EVENTS;
        metadata.property = [](void* self, std::uint32_t subject, const char* key, const char*,
                               const char* value) {
            if (subject == PW_ID_CORE) {
                static_cast<DefaultName*>(self)->set(key, value);
            }
            return 0;
        };
        return metadata;
    }();
    pw_metadata_add_listener(metadata_.get(), &listener_->hook, &events, this);
}

void DefaultName::set(const char* key, const char* value) {
    // A null key clears every property of the subject.
    if (key == nullptr || key_ == key) {
        name_ = key == nullptr || value == nullptr ? std::string() : nameIn(value);
        changed_();
    }
}

} // namespace vornic
