#include "fuzz/JsonMutator.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

// The fuzzer's own, byte by byte.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t largest);

namespace vornic {

namespace {

using nlohmann::json;

class Mutation {
  public:
    explicit Mutation(std::uint32_t seed) : random_(seed) {}

    void apply(json& document) {
        std::vector<json*> nodes;
        collect(document, nodes);
        json& node = *nodes[below(nodes.size())];
        const json& other = *nodes[below(nodes.size())];
        switch (below(7)) {
        case 0:
            node = literal();
            break;
        case 1:
            node = json(other); // A copy first: it may lie within the node.
            break;
        case 2:
            remove(node);
            break;
        case 3:
            repeat(node);
            break;
        case 4:
            insert(node);
            break;
        case 5:
            node = json::array({json(node)});
            break;
        default:
            alter(node);
            break;
        }
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }

  private:
    static void collect(json& node, std::vector<json*>& nodes) {
        nodes.push_back(&node);
        if (node.is_structured()) {
            for (json& child : node) {
                collect(child, nodes);
            }
        }
    }

    json literal() {
        const std::array<json, 21> literals{nullptr,
                                            true,
                                            false,
                                            0,
                                            1,
                                            -1,
                                            7,
                                            12.0,
                                            1.5,
                                            1e300,
                                            -1e300,
                                            1e-320,
                                            std::uint64_t{0xffffffffffffffffU},
                                            std::int64_t{-0x7fffffffffffffff} - 1,
                                            "",
                                            "vornic-board",
                                            "user/a",
                                            "AAAA",
                                            "AIA=",
                                            json::array(),
                                            json::object()};
        return literals.at(below(literals.size()));
    }

    void remove(json& node) {
        if (node.is_structured() && !node.empty()) {
            auto victim = node.begin();
            std::advance(victim, static_cast<std::ptrdiff_t>(below(node.size())));
            node.erase(victim);
        }
    }

    void repeat(json& node) {
        if (node.is_array() && !node.empty()) {
            const json element = node[below(node.size())];
            const std::size_t times = std::size_t{1} << below(6);
            node.insert(node.end(), times, element);
        }
    }

    void insert(json& node) {
        if (node.is_object()) {
            node[text()] = literal();
        } else if (node.is_array()) {
            node.push_back(literal());
        }
    }

    void alter(json& node) {
        if (node.is_string()) {
            std::string changed = node.get<std::string>();
            changed.insert(below(changed.size() + 1), text());
            node = changed.substr(below(2) == 0 ? 0 : below(changed.size() + 1));
        } else if (node.is_number()) {
            node = node.get<double>() * std::ldexp(1.0, static_cast<int>(below(64)) - 32);
        } else if (node.is_boolean()) {
            node = !node.get<bool>();
        }
    }

    std::string text() {
        const std::array<std::string, 9> texts{"user/a",  "49",   "=",        "../../x", "alphas",
                                               "\x1b[2J", "/z8=", "\xc3\xa4", "x"};
        return texts.at(below(texts.size()));
    }

    std::mt19937 random_;
};

} // namespace

std::size_t mutateJson(std::uint8_t* data, std::size_t size, std::size_t largest,
                       std::uint32_t seed) {
    Mutation mutation(seed);
    json document = json::parse(data, data + size, nullptr, false);
    constexpr std::size_t oneOfSo = 8; // is left to the bytes
    if (document.is_discarded() || mutation.below(oneOfSo) == 0) {
        return LLVMFuzzerMutate(data, size, largest);
    }
    mutation.apply(document);
    const std::string text = document.dump(-1, ' ', false, json::error_handler_t::replace);
    if (text.size() > largest) {
        return LLVMFuzzerMutate(data, size, largest);
    }
    std::ranges::copy(text, data);
    return text.size();
}

} // namespace vornic
