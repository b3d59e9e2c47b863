#include "Vornic/linux/soundserver/Registry.h"

#include <spa/utils/json.h>

#include <array>
#include <utility>
#include <vector>

namespace vornic {

namespace {

/// The member "name" of the JSON object `value`; empty when there is none.
std::string nameIn(std::string_view value) {
    std::array<spa_json, 2> levels{};
    spa_json_init(levels.data(), value.data(), value.size());
    if (spa_json_enter_object(levels.data(), &levels[1]) <= 0) {
        return {};
    }
    std::array<char, 64> key{};
    while (spa_json_get_string(&levels[1], key.data(), key.size()) > 0) {
        const char* text = nullptr;
        const int length = spa_json_next(&levels[1], &text);
        if (length <= 0) {
            break;
        }
        if (std::string_view(key.data()) == "name") {
            std::vector<char> name(static_cast<std::size_t>(length) + 1);
            return spa_json_parse_stringn(text, length, name.data(), length + 1) > 0
                       ? std::string(name.data())
                       : std::string();
        }
    }
    return {};
}

} // namespace

std::string_view lookUp(const spa_dict* properties, const char* key) {
    const char* value = properties == nullptr ? nullptr : spa_dict_lookup(properties, key);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

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

DefaultNames::DefaultNames(pw_core* core, std::function<void()> changed)
    : changed_(std::move(changed)),
      registry_(
          core,
          [this](std::uint32_t id, const char* type, const spa_dict* properties) {
              add(id, type, properties);
          },
          [this](std::uint32_t id) { remove(id); }) {}

void DefaultNames::add(std::uint32_t id, const char* type, const spa_dict* properties) {
    if (metadata_ == nullptr && std::string_view(type) == PW_TYPE_INTERFACE_Metadata &&
        lookUp(properties, PW_KEY_METADATA_NAME) == "default") {
        id_ = id;
        bind();
        changed_();
    }
}

void DefaultNames::remove(std::uint32_t id) {
    if (id == id_) {
        id_ = SPA_ID_INVALID;
        listener_.reset();
        metadata_.reset();
        sink_.clear();
        source_.clear();
        changed_();
    }
}

void DefaultNames::askAgain() {
    if (metadata_ != nullptr) {
        bind();
    }
}

void DefaultNames::bind() {
    listener_.reset();
    metadata_.reset(static_cast<pw_metadata*>(pw_registry_bind(
        registry_.get(), id_, PW_TYPE_INTERFACE_Metadata, PW_VERSION_METADATA, 0)));
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
                static_cast<DefaultNames*>(self)->set(key, value);
            }
            return 0;
        };
        return metadata;
    }();
    pw_metadata_add_listener(metadata_.get(), &listener_->hook, &events, this);
}

void DefaultNames::set(const char* key, const char* value) {
    const auto take = [&](std::string_view wanted, std::string& name) {
        // A null key clears every property of the subject.
        if (key == nullptr || key == wanted) {
            name = key == nullptr || value == nullptr ? std::string() : nameIn(value);
        }
    };
    take("default.audio.sink", sink_);
    take("default.audio.source", source_);
    changed_();
}

RoundTrips::RoundTrips(pw_core* core, int count, std::function<void()> done)
    : core_(core), left_(count), done_(std::move(done)) {
    static const pw_core_events events = [] {
        pw_core_events server{};
        server.version = PW_VERSION_CORE_EVENTS;
        server.done = [](void* self, std::uint32_t id, int number) {
            if (id == PW_ID_CORE) {
                static_cast<RoundTrips*>(self)->note(number);
            }
        };
        return server;
    }();
    pw_core_add_listener(core_, &listener_.hook, &events, this);
    awaited_ = pw_core_sync(core_, PW_ID_CORE, 0);
}

void RoundTrips::note(int number) {
    if (left_ == 0 || number != awaited_) {
        return;
    }
    if (--left_ > 0) {
        awaited_ = pw_core_sync(core_, PW_ID_CORE, 0);
    } else {
        done_();
    }
}

} // namespace vornic
