#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <re2/re2.h>
#include <toml++/toml.h>

#include <array>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

/// The names that a preset's expressions are searched in.
std::string listenerName(const KnownKey& key) {
    using Name = std::pair<std::string_view, std::string_view>;
    static constexpr std::array names = std::to_array<Name>({
        {"Backquote", "BackQuote"},
        {"BracketLeft", "LeftBracket"},
        {"Backslash", "BackSlash"},
        {"BracketRight", "RightBracket"},
        {"Semicolon", "SemiColon"},
        {"Period", "Dot"},
        {"Enter", "Return"},
        {"ArrowLeft", "LeftArrow"},
        {"ArrowRight", "RightArrow"},
        {"ArrowUp", "UpArrow"},
        {"ArrowDown", "DownArrow"},
        {"AltLeft", "Alt"},
        {"AltRight", "AltGr"},
        {"Fn", "Function"},
        {"NumpadEnter", "KpReturn"},
        {"NumpadAdd", "KpPlus"},
        {"NumpadSubtract", "KpMinus"},
        {"NumpadDecimal", "KpDelete"},
    });
    for (const auto& [web, other] : names) {
        if (web == key.web) {
            return std::string(other);
        }
    }
    for (const auto& [prefix, other] : {Name{"Digit", "Num"}, Name{"Numpad", "Kp"}}) {
        if (key.web.starts_with(prefix)) {
            return std::string(other) + std::string(key.web.substr(prefix.size()));
        }
    }
    return std::string(key.web);
}

std::string textOf(const toml::table& table, std::string_view name) {
    return table[name].value<std::string>().value_or("");
}

class Reader {
  public:
    Reader(const PackFolder& folder, const toml::table& preset) : folder_(folder) {
        pack_.format = PackFormat::daktilo;
        pack_.place = folder.place();
        pack_.name = textOf(preset, "name");
        addConfigs(preset);
        if (const toml::array* const disabled = preset["disabled_keys"].as_array()) {
            for (const toml::node& node : *disabled) {
                disable(node.value<std::string>().value_or(""));
            }
        }
    }

    ForeignPack take() {
        if (pack_.keys.empty()) {
            throw ForeignPackError("It gives no key a sound.");
        }
        return std::move(pack_);
    }

  private:
    void addConfigs(const toml::table& preset) {
        const toml::array* const configs = preset["key_config"].as_array();
        constexpr std::size_t mostConfigs = 500;
        std::size_t count = 0;
        for (const toml::node& node : configs != nullptr ? *configs : toml::array()) {
            const toml::table* const config = node.as_table();
            if (config != nullptr && ++count <= mostConfigs) {
                addConfig(*config);
            }
        }
    }

    void addConfig(const toml::table& config) {
        const std::string event = textOf(config, "event");
        const std::string pattern = textOf(config, "keys");
        const RE2 expression(pattern, RE2::Quiet);
        if (!expression.ok() || (event != "press" && event != "release")) {
            addNote(pack_.notes.ignored, "What it says about the keys \"" + readable(pattern) +
                                             "\" cannot be understood.");
            return;
        }
        if (config.contains("variation")) {
            addNote(pack_.notes.ignored,
                    "\"variation\": Vornic varies strokes in a way of its own.");
        }
        const std::vector<ForeignTake> takes = takesOf(config);
        for (const KnownKey& key : knownKeys()) {
            if (!takes.empty() && RE2::PartialMatch(listenerName(key), expression)) {
                ForeignKey& known = pack_.keys[key.code];
                auto& side = event == "press" ? known.press : known.release;
                // The first that matches counts.
                side = side.empty() ? takes : side;
            }
        }
    }

    std::vector<ForeignTake> takesOf(const toml::table& config) {
        std::vector<ForeignTake> takes;
        const toml::array* const files = config["files"].as_array();
        for (const toml::node& node : files != nullptr ? *files : toml::array()) {
            const toml::table* const entry = node.as_table();
            if (entry == nullptr || takes.size() == PackLimits::mostTakesOfKey) {
                continue;
            }
            std::string path = textOf(*entry, "path");
            if (path.starts_with('/')) {
                addNote(pack_.notes.repaired, "\"" + readable(path) + "\" was looked for here.");
                path = baseName(path);
            }
            if (const std::optional<std::string> file = folder_.find(path, pack_.notes)) {
                const double volume = (*entry)["volume"].value<double>().value_or(1);
                const double gain = volume > 0 ? 20 * std::log10(volume) : 0;
                takes.push_back({.file = *file, .gainDb = gain});
            }
        }
        return takes;
    }

    void disable(const std::string& name) {
        for (const KnownKey& key : knownKeys()) {
            if (listenerName(key) == name) {
                pack_.keys.erase(key.code);
                pack_.silent.insert(key.code);
            }
        }
    }

    const PackFolder& folder_;
    ForeignPack pack_;
};

} // namespace

std::vector<ForeignPack> readDaktilo(const PackFolder& folder, const std::string& text) {
    std::vector<ForeignPack> packs;
    try {
        const toml::table document = toml::parse(text);
        const toml::array* const presets = document["sound_preset"].as_array();
        for (const toml::node& node : presets != nullptr ? *presets : toml::array()) {
            if (node.is_table() && packs.size() < PackLimits::mostPacks) {
                packs.push_back(Reader(folder, *node.as_table()).take());
            }
        }
    } catch (const toml::parse_error& error) {
        throw ForeignPackError("Its description is no TOML: " + readable(error.description(), 160) +
                               ".");
    }
    return packs;
}

} // namespace vornic
