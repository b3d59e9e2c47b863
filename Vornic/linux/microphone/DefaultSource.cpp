#include "Vornic/linux/microphone/DefaultSource.h"

#include "Vornic/linux/soundserver/ServerText.h"

#include <string_view>
#include <utility>

namespace vornic {

DefaultSource::DefaultSource(pw_core* core, std::function<void(std::uint32_t)> removed)
    : removed_(std::move(removed)),
      registry_(
          core,
          [this](std::uint32_t id, const char* type, const spa_dict* properties) {
              add(id, type, properties);
          },
          [this](std::uint32_t id) { remove(id); }) {}

void DefaultSource::add(std::uint32_t id, const char* type, const spa_dict* properties) {
    if (std::string_view(type) == PW_TYPE_INTERFACE_Node) {
        const std::string_view media = lookUp(properties, PW_KEY_MEDIA_CLASS);
        if (media.starts_with("Audio/Source") || media == "Audio/Duplex") {
            names_[id] = lookUp(properties, PW_KEY_NODE_NAME);
        }
    } else {
        default_.add(registry_.get(), id, type, properties);
    }
}

void DefaultSource::remove(std::uint32_t id) {
    default_.remove(id);
    names_.erase(id);
    removed_(id);
}

std::optional<DefaultSource::Source> DefaultSource::source() const {
    for (const auto& [id, name] : names_) {
        if (default_.name().empty() || name == default_.name()) {
            return Source{id, name};
        }
    }
    return std::nullopt;
}

} // namespace vornic
