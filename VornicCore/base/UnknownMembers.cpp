#include "VornicCore/base/UnknownMembers.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace vornic {

using nlohmann::json;

struct UnknownMembers::Node {
    /// Members of this object itself.
    json members = json::object();
    /// Of what is inside, by the name of the member, or the id or the place of the element.
    std::map<std::string, Node> inside;

    bool empty() const { return members.empty() && inside.empty(); }
};

namespace {

/// What tells an element of an array from the others.
std::string keyOf(const json& element, std::size_t place) {
    if (element.is_object()) {
        const auto id = element.find("id");
        if (id != element.end() && id->is_string()) {
            return "#" + id->get<std::string>();
        }
    }
    return std::to_string(place);
}

/// Those that have something inside, by key.
std::map<std::string, const json*> elementsOf(const json& array) {
    std::map<std::string, const json*> elements;
    for (std::size_t place = 0; place < array.size(); ++place) {
        if (array[place].is_structured()) {
            elements.emplace(keyOf(array[place], place), &array[place]);
        }
    }
    return elements;
}

std::size_t sizeOf(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::ignore).size();
}

} // namespace

UnknownMembers UnknownMembers::in(const json& document, const json& understood) {
    std::size_t left = largest;
    const auto collect = [&left](const auto& self, const json& from, const json& known) -> Node {
        Node node;
        const auto collectInside = [&](const std::string& key, const json& part,
                                       const json* knownPart) {
            if (knownPart != nullptr) {
                if (Node inside = self(self, part, *knownPart); !inside.empty()) {
                    node.inside.emplace(key, std::move(inside));
                }
            }
        };
        if (from.is_array() && known.is_array()) {
            const auto knownElements = elementsOf(known);
            for (const auto& [key, element] : elementsOf(from)) {
                const auto found = knownElements.find(key);
                collectInside(key, *element,
                              found == knownElements.end() ? nullptr : found->second);
            }
        } else if (from.is_object() && known.is_object()) {
            for (const auto& [name, value] : from.items()) {
                if (const auto found = known.find(name); found != known.end()) {
                    collectInside(name, value, &*found);
                } else if (const std::size_t size = name.size() + sizeOf(value); size <= left) {
                    left -= size;
                    node.members[name] = value;
                }
            }
        }
        return node;
    };
    Node root = collect(collect, document, understood);
    UnknownMembers unknown;
    if (!root.empty()) {
        unknown.root_ = std::make_shared<const Node>(std::move(root));
    }
    return unknown;
}

void UnknownMembers::addTo(json& document) const {
    const auto add = [](const auto& self, const Node& node, json& to) -> void {
        if (to.is_object()) {
            for (const auto& [name, value] : node.members.items()) {
                if (!to.contains(name)) {
                    to[name] = value;
                }
            }
            for (const auto& [name, inside] : node.inside) {
                if (const auto found = to.find(name); found != to.end()) {
                    self(self, inside, *found);
                }
            }
        } else if (to.is_array()) {
            for (std::size_t place = 0; place < to.size(); ++place) {
                const auto found = node.inside.find(keyOf(to[place], place));
                if (found != node.inside.end()) {
                    self(self, found->second, to[place]);
                }
            }
        }
    };
    if (root_) {
        add(add, *root_, document);
    }
}

} // namespace vornic
