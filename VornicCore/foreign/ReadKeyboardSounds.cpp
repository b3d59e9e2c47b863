#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/foreign/YamlTree.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <utility>

namespace vornic {

namespace {

using nlohmann::json;

const json& memberOf(const json& object, const char* name) {
    static const json none;
    const auto found = object.is_object() ? object.find(name) : object.end();
    return object.is_object() && found != object.end() ? *found : none;
}

/// A text or a list of texts as a list.
std::vector<std::string> textsOf(const json& value) {
    std::vector<std::string> texts;
    if (value.is_string()) {
        texts.push_back(value.get<std::string>());
    } else if (value.is_array()) {
        for (const json& each : value) {
            if (each.is_string()) {
                texts.push_back(each.get<std::string>());
            }
        }
    }
    return texts;
}

class Reader {
  public:
    Reader(const PackFolder& folder, const json& document) : folder_(folder), document_(document) {
        const json& profile = memberOf(document, "profile");
        pack_.format = PackFormat::keyboardSounds;
        pack_.place = folder.place();
        if (profile.is_object()) {
            pack_.name = stringMember(profile, "name");
            pack_.author = stringMember(profile, "author");
            pack_.licence = stringMember(profile, "license");
            pack_.description = stringMember(profile, "description");
            if (lowerCase(stringMember(profile, "device")) == "mouse") {
                throw ForeignPackError("It holds the sounds of a mouse.");
            }
        }
    }

    ForeignPack read() {
        readSources();
        const json& keys = memberOf(document_, "keys");
        if (keys.is_null()) {
            for (const auto& [id, source] : sources_) {
                append(source, pack_.fallback);
            }
        } else {
            pack_.fallback = soundOf(memberOf(keys, "default"));
            for (const json& other : memberOf(keys, "other")) {
                addOther(other);
            }
        }
        if (pack_.keys.empty() && pack_.fallback.press.empty()) {
            throw ForeignPackError("It gives no key a sound.");
        }
        return std::move(pack_);
    }

  private:
    void readSources() {
        for (const json& entry : memberOf(document_, "sources")) {
            const json& id = memberOf(entry, "id");
            const json& source = memberOf(entry, "source");
            if (!id.is_string()) {
                addNote(pack_.notes.ignored, "A source without an id.");
                continue;
            }
            ForeignKey sound;
            if (source.is_string()) {
                addFile(source.get<std::string>(), sound.press);
            } else {
                for (const auto& [side, takes] :
                     {std::pair("press", &sound.press), std::pair("release", &sound.release)}) {
                    for (const std::string& file : textsOf(memberOf(source, side))) {
                        addFile(file, *takes);
                    }
                }
            }
            sources_[id.get<std::string>()] = std::move(sound);
        }
        if (sources_.empty()) {
            throw ForeignPackError("It names no recordings.");
        }
    }

    void addFile(const std::string& name, std::vector<ForeignTake>& takes) {
        const std::optional<std::string> file = folder_.find(name, pack_.notes);
        if (file && takes.size() < PackLimits::mostTakesOfKey) {
            takes.push_back({.file = *file});
        }
    }

    static void append(const ForeignKey& sound, ForeignKey& to) {
        const auto add = [](const std::vector<ForeignTake>& from, std::vector<ForeignTake>& takes) {
            takes.insert(takes.end(), from.begin(), from.end());
            takes.resize(std::min(takes.size(), PackLimits::mostTakesOfKey));
        };
        add(sound.press, to.press);
        add(sound.release, to.release);
    }

    ForeignKey soundOf(const json& ids) {
        ForeignKey sound;
        for (const std::string& id : textsOf(ids)) {
            if (const auto found = sources_.find(id); found != sources_.end()) {
                append(found->second, sound);
            } else {
                addNote(pack_.notes.missing, "The source \"" + readable(id) + "\".");
            }
        }
        return sound;
    }

    void addOther(const json& other) {
        const ForeignKey sound = soundOf(memberOf(other, "sound"));
        if (sound == ForeignKey()) {
            return;
        }
        for (const std::string& name : textsOf(memberOf(other, "keys"))) {
            if (const std::optional<std::int64_t> code = keyCodeOfAnyName(name)) {
                if (!pack_.keys.try_emplace(*code, sound).second) {
                    addNote(pack_.notes.ignored,
                            "\"" + readable(name) + "\" gives a key a second sound.");
                }
            } else {
                addNote(pack_.notes.ignored, "\"" + readable(name) + "\" names no key.");
            }
        }
    }

    const PackFolder& folder_;
    const json& document_;
    ForeignPack pack_;
    std::map<std::string, ForeignKey> sources_;
};

} // namespace

ForeignPack readKeyboardSounds(const PackFolder& folder, const std::string& text) {
    PackNotes notes;
    const json document = parseYaml(withoutMark(text, notes));
    ForeignPack pack = Reader(folder, document).read();
    pack.notes.add(notes);
    return pack;
}

} // namespace vornic
