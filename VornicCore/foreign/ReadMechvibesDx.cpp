#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>

namespace vornic {

namespace {

using nlohmann::json;

std::string joined(const json& config, const char* member) {
    std::string text;
    const auto found = config.find(member);
    if (found != config.end() && found->is_array()) {
        for (const json& each : *found) {
            if (each.is_string()) {
                text += (text.empty() ? "" : ", ") + each.get<std::string>();
            }
        }
    }
    return text;
}

class Reader {
  public:
    Reader(const PackFolder& folder, const json& config) : folder_(folder), config_(config) {
        pack_.format = PackFormat::mechvibesDx;
        pack_.place = folder.place();
        pack_.name = stringMember(config, "name");
        pack_.author = stringMember(config, "author");
        pack_.licence = stringMember(config, "license");
        pack_.description = stringMember(config, "description");
        if (const std::string tags = joined(config, "tags"); !tags.empty()) {
            pack_.description += (pack_.description.empty() ? "" : " ") + ("(" + tags + ")");
        }
    }

    ForeignPack read() {
        if (lowerCase(stringMember(config_, "soundpack_type")) == "mouse") {
            throw ForeignPackError("It holds the sounds of a mouse.");
        }
        for (const auto& [name, definition] : config_.at("definitions").items()) {
            if (name.starts_with("Mouse")) {
                addNote(pack_.notes.ignored, "\"" + readable(name) + "\" is a mouse's.");
                continue;
            }
            const std::optional<std::int64_t> code = keyCodeOfAnyName(name);
            if (!code) {
                addNote(pack_.notes.ignored, "\"" + readable(name) + "\" names no key.");
            } else if (definition.is_object()) {
                add(name, *code, definition);
            } else if (definition.is_null()) {
                pack_.silent.insert(*code);
            }
        }
        if (pack_.keys.empty()) {
            throw ForeignPackError("It gives no key a sound.");
        }
        return std::move(pack_);
    }

  private:
    void add(const std::string& name, std::int64_t code, const json& definition) {
        std::string wanted = stringMember(definition, "audio_file");
        if (wanted.empty()) {
            wanted = stringMember(config_, "audio_file");
        }
        const std::optional<std::string> file = folder_.find(wanted, pack_.notes);
        if (!file) {
            return;
        }
        ForeignKey key;
        const auto timing = definition.find("timing");
        if (timing == definition.end() || !timing->is_array() || timing->empty()) {
            key.press.push_back({.file = *file});
        } else {
            addSlice(name, *file, (*timing)[0], key.press);
            if (timing->size() > 1) {
                addSlice(name, *file, (*timing)[1], key.release);
            }
        }
        if (!key.press.empty() || !key.release.empty()) {
            pack_.keys.try_emplace(code, std::move(key));
        }
    }

    void addSlice(const std::string& name, const std::string& file, const json& pair,
                  std::vector<ForeignTake>& takes) {
        if (!pair.is_array() || pair.size() < 2 || !pair[0].is_number() || !pair[1].is_number()) {
            addNote(pack_.notes.ignored,
                    "A timing of \"" + readable(name) + "\" is no start and end.");
            return;
        }
        const auto begin = pair[0].get<double>();
        const auto end = pair[1].get<double>();
        if (!(end > begin) || !std::isfinite(end - begin)) {
            addNote(pack_.notes.ignored, "The sound of \"" + readable(name) + "\" has no length.");
            return;
        }
        takes.push_back({.file = file, .begin = begin, .end = end});
    }

    const PackFolder& folder_;
    const json& config_;
    ForeignPack pack_;
};

} // namespace

ForeignPack readMechvibesDx(const PackFolder& folder, const json& config) {
    return Reader(folder, config).read();
}

} // namespace vornic
