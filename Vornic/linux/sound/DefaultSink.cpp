#include "Vornic/linux/sound/DefaultSink.h"

#include <charconv>
#include <string_view>
#include <system_error>
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

DefaultSink::DefaultSink(pw_core* core, DefaultNames& defaults, std::function<void()> changed,
                         std::function<std::uint32_t()> ownNode)
    : defaults_(defaults), changed_(std::move(changed)), ownNode_(std::move(ownNode)),
      registry_(
          core,
          [this](std::uint32_t id, const char* type, const spa_dict* properties) {
              add(id, type, properties);
          },
          [this](std::uint32_t id) { remove(id); }) {}

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
    } else if (kind == PW_TYPE_INTERFACE_Link &&
               numberOf<std::uint32_t>(std::string(lookUp(properties, PW_KEY_LINK_OUTPUT_NODE))) ==
                   ownNode_()) {
        // The stream is moved when the default sink changes: the word of that was lost if it is
        // another one that it plays to now.
        const auto sink =
            numberOf<std::uint32_t>(std::string(lookUp(properties, PW_KEY_LINK_INPUT_NODE)));
        const auto found = nodes_.find(sink.value_or(SPA_ID_INVALID));
        if (found != nodes_.end() &&
            valueOf(found->second->properties(), PW_KEY_NODE_NAME) != defaults_.sink()) {
            askAgain();
        }
    }
}

void DefaultSink::remove(std::uint32_t id) {
    if (nodes_.erase(id) + cards_.erase(id) > 0) {
        changed_();
    }
}

std::optional<OutputProperties> DefaultSink::properties() const {
    const std::string& chosen = defaults_.sink();
    if (chosen.empty() || chosen == nowhere) {
        return std::nullopt;
    }
    for (const auto& [id, node] : nodes_) {
        if (valueOf(node->properties(), PW_KEY_NODE_NAME) != chosen) {
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
            properties.description = chosen;
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
