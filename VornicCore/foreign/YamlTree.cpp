#include "VornicCore/foreign/YamlTree.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/ForeignPack.h"

#include <nlohmann/json.hpp>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <sstream>
#include <utility>
#include <vector>

namespace vornic {

namespace {

using nlohmann::json;

/// Builds the tree from the parser's events, because the parser's own tree knows no limits. The
/// function names are the parser's.
class TreeBuilder final : public YAML::EventHandler {
  public:
    json take() { return std::move(root_); }

    void OnDocumentStart(const YAML::Mark& /*mark*/) override {}
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override { add(nullptr); }
    void OnAlias(const YAML::Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {
        throw ForeignPackError("Its description refers to itself.");
    }
    void OnScalar(const YAML::Mark& /*mark*/, const std::string& /*tag*/, YAML::anchor_t /*anchor*/,
                  const std::string& value) override {
        if (!open_.empty() && open_.back().container->is_object() && !open_.back().hasKey) {
            open_.back().key = value;
            open_.back().hasKey = true;
            return;
        }
        add(value);
    }
    void OnSequenceStart(const YAML::Mark& /*mark*/, const std::string& /*tag*/,
                         YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override {
        open(json::array());
    }
    void OnSequenceEnd() override { open_.pop_back(); }
    void OnMapStart(const YAML::Mark& /*mark*/, const std::string& /*tag*/,
                    YAML::anchor_t /*anchor*/, YAML::EmitterStyle::value /*style*/) override {
        open(json::object());
    }
    void OnMapEnd() override { open_.pop_back(); }

  private:
    struct Open {
        json* container;
        std::string key;
        bool hasKey = false;
    };

    json* add(json value) {
        constexpr std::size_t mostValues = 100'000;
        if (++count_ > mostValues) {
            throw ForeignPackError("Its description is too long.");
        }
        if (open_.empty()) {
            root_ = std::move(value);
            return &root_;
        }
        Open& parent = open_.back();
        if (parent.container->is_array()) {
            parent.container->push_back(std::move(value));
            return &parent.container->back();
        }
        if (!parent.hasKey) {
            throw ForeignPackError("Its description has a list where a name belongs.");
        }
        parent.hasKey = false;
        json& member = (*parent.container)[parent.key];
        member = std::move(value);
        return &member;
    }

    void open(json container) {
        constexpr std::size_t deepest = 16;
        if (open_.size() == deepest) {
            throw ForeignPackError("Its description is nested too deep.");
        }
        // A container that is open does not move: its parent grows only when it is closed.
        open_.push_back({add(std::move(container)), {}});
    }

    json root_;
    std::vector<Open> open_;
    std::size_t count_ = 0;
};

} // namespace

json parseYaml(const std::string& text) {
    TreeBuilder builder;
    std::istringstream stream(text);
    try {
        YAML::Parser parser(stream);
        parser.HandleNextDocument(builder);
    } catch (const YAML::Exception& error) {
        throw ForeignPackError(std::string("Its description is no YAML: ") +
                               readable(error.what(), 160) + ".");
    }
    return builder.take();
}

} // namespace vornic
