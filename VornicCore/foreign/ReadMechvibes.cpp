#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

using nlohmann::json;

/// A name in "defines": a key, and whether its release is meant.
struct DefinedKey {
    std::int64_t number = 0; // of the hook; 0 for a web name
    std::optional<std::int64_t> code;
    bool isRelease = false;
};

DefinedKey definedKey(std::string_view name) {
    DefinedKey key;
    constexpr std::string_view up = "-up";
    if (name.ends_with(up)) {
        key.isRelease = true;
        name.remove_suffix(up.size());
    }
    const std::optional<double> number = numberOf(name);
    constexpr double mostNumber = 1e6;
    if (!number) {
        key.code = keyCodeOfWebName(name);
    } else if (*number >= 0 && *number < mostNumber && *number == std::floor(*number)) {
        key.number = static_cast<std::int64_t>(*number);
        key.code = keyCodeOfHookCode(key.number);
    }
    return key;
}

bool isVersion2(const json& config) {
    const auto version = config.find("version");
    return version != config.end() &&
           ((version->is_number() && version->get<double>() == 2) || *version == "2");
}

class Reader {
  public:
    Reader(const PackFolder& folder, const json& config) : folder_(folder), config_(config) {
        pack_.place = folder.place();
        pack_.name = stringMember(config, "name");
        pack_.author = stringMember(config, "author");
        pack_.licence = stringMember(config, "license");
        pack_.description = stringMember(config, "description");
        pack_.format = isVersion2(config) ? PackFormat::mechvibes2 : PackFormat::mechvibes;
    }

    ForeignPack read() {
        if (pack_.format == PackFormat::mechvibes2) {
            addFallback("sound", pack_.fallback.press);
            addFallback("soundup", pack_.fallback.release);
        }
        for (const auto& [name, key, value] : sorted()) {
            if (!key.code) {
                addNote(pack_.notes.ignored, "\"" + readable(name) + "\" names no key.");
            } else {
                add(name, key, *value);
            }
        }
        if (pack_.keys.empty() && pack_.fallback.press.empty()) {
            throw ForeignPackError("It gives no key a sound.");
        }
        return std::move(pack_);
    }

  private:
    struct Entry {
        std::string name;
        DefinedKey key;
        const json* value;
    };

    /// By number: where a key is there under several, the standard one is the lowest.
    std::vector<Entry> sorted() {
        std::vector<Entry> entries;
        bool isByWebNames = false;
        for (const auto& [name, value] : config_.at("defines").items()) {
            entries.push_back({name, definedKey(name), &value});
            isByWebNames =
                isByWebNames || (entries.back().key.code && entries.back().key.number == 0);
        }
        if (isByWebNames) {
            pack_.format = PackFormat::keyEcho;
        }
        std::ranges::sort(entries, {}, [](const Entry& entry) {
            return std::pair(entry.key.number, std::string_view(entry.name));
        });
        return entries;
    }

    void add(const std::string& name, const DefinedKey& key, const json& value) {
        if (value.is_null()) {
            if (!key.isRelease && !pack_.keys.contains(*key.code)) {
                pack_.silent.insert(*key.code);
            }
            return;
        }
        std::vector<ForeignTake> takes;
        if (value.is_string()) {
            addFiles(folder_, value.get<std::string>(), takes, pack_.notes);
        } else if (const std::optional<ForeignTake> slice = sliceOf(name, value)) {
            takes.push_back(*slice);
        }
        if (takes.empty()) {
            return;
        }
        ForeignKey& known = pack_.keys[*key.code];
        std::vector<ForeignTake>& side = key.isRelease ? known.release : known.press;
        if (side.empty()) {
            side = std::move(takes);
            pack_.silent.erase(*key.code);
        } else if (side != takes) {
            addNote(pack_.notes.ignored, "\"" + readable(name) + "\" gives " +
                                             webNameOf(*key.code) + " a second sound.");
        }
    }

    std::optional<ForeignTake> sliceOf(const std::string& name, const json& value) {
        if (!value.is_array() || value.size() < 2 || !value[0].is_number() ||
            !value[1].is_number()) {
            addNote(pack_.notes.ignored,
                    "\"" + readable(name) + "\" is neither a file nor a start and a duration.");
            return std::nullopt;
        }
        const auto start = value[0].get<double>();
        const auto duration = value[1].get<double>();
        if (!(duration > 0) || !std::isfinite(start + duration)) {
            addNote(pack_.notes.ignored, "The sound of \"" + readable(name) + "\" has no length.");
            return std::nullopt;
        }
        if (!sound_) {
            sound_.emplace(folder_.find(stringMember(config_, "sound"), pack_.notes));
        }
        if (!*sound_) {
            return std::nullopt;
        }
        return ForeignTake{.file = **sound_, .begin = start, .end = start + duration};
    }

    void addFallback(const char* member, std::vector<ForeignTake>& takes) {
        const std::string name = stringMember(config_, member);
        if (name.empty()) {
            addNote(pack_.notes.missing, std::string("The member \"") + member + "\".");
        } else {
            addFiles(folder_, name, takes, pack_.notes);
        }
    }

    const PackFolder& folder_;
    const json& config_;
    ForeignPack pack_;
    /// The one file of slices, once it has been looked for.
    std::optional<std::optional<std::string>> sound_;
};

} // namespace

void addFiles(const PackFolder& folder, const std::string& name, std::vector<ForeignTake>& takes,
              PackNotes& notes) {
    for (const std::string& each : expandedRange(name)) {
        const std::optional<std::string> file = folder.find(each, notes);
        if (file && takes.size() < PackLimits::mostTakesOfKey) {
            takes.push_back({.file = *file});
        }
    }
}

ForeignPack readMechvibes(const PackFolder& folder, const json& config) {
    return Reader(folder, config).read();
}

} // namespace vornic
