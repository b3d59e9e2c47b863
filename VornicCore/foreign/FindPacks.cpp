#include "VornicCore/foreign/FindPacks.h"

#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace vornic {

namespace {

using nlohmann::json;

bool contains(const std::string& text, std::string_view word) {
    return text.find(word) != std::string::npos;
}

/// Looks through one folder.
class Finder {
  public:
    Finder(const PackFiles& files, const std::string& place, const FindOptions& options,
           std::vector<FoundPack>& found)
        : folder_(files, place), options_(options), found_(found) {}

    void look() {
        for (const std::string& name : folder_.own()) {
            if (!isAudioName(name) && found_.size() < PackLimits::mostPacks) {
                lookAt(name);
            }
        }
        if (hasBucklespringFiles(folder_) && found_.size() < PackLimits::mostPacks) {
            add(folder_.place(), [&](PackNotes&) { return readBucklespring(folder_); });
        }
    }

  private:
    using Read = std::function<ForeignPack(PackNotes&)>;

    /// Only what a description could be is read: text, and of moderate size.
    void lookAt(const std::string& name) {
        std::string text;
        try {
            text = folder_.files().text(name);
        } catch (const ForeignPackError&) {
            return;
        }
        const std::string_view begin = trimmed(std::string_view(text).substr(0, 4096));
        const bool hasMark = begin.starts_with("\xEF\xBB\xBF") || begin.starts_with("\xFF\xFE") ||
                             begin.starts_with("\xFE\xFF");
        const std::string plain = hasMark ? withoutMark(text, ignored_) : std::string();
        const std::string& body = hasMark ? plain : text;
        if (trimmed(std::string_view(body).substr(0, 4096)).starts_with('{')) {
            lookAtJson(name, text);
        } else if (contains(body, "<DecentSampler")) {
            add(name, [&](PackNotes&) {
                return readDecentSampler(folder_, name, body, options_.firstNote);
            });
        } else if (contains(body, "<region>") && contains(body, "sample=")) {
            add(name, [&](PackNotes&) { return readSfz(folder_, name, options_.firstNote); });
        } else if (contains(body, "[[sound_preset]]")) {
            lookAtPresets(name, body);
        } else if (contains(body, "sources:") && contains(body, "source:")) {
            add(name, [&](PackNotes&) { return readKeyboardSounds(folder_, text); });
        }
    }

    void lookAtJson(const std::string& name, const std::string& text) {
        if (contains(text, "\"vornic-board\"")) {
            return;
        }
        json config;
        PackNotes notes;
        try {
            config = parseHandWrittenJson(text, notes);
        } catch (const DecodeError& error) {
            const bool looksLikeOne = lowerCase(stem(name)) == "config";
            if (looksLikeOne) {
                found_.push_back({.place = name, .pack = std::nullopt, .error = sentence(error)});
            }
            return;
        }
        const auto isObject = [&](const char* member) {
            const auto found = config.find(member);
            return found != config.end() && found->is_object();
        };
        const std::function<ForeignPack(const PackFolder&, const json&)> reader =
            isObject("definitions") ? readMechvibesDx
            : isObject("defines")   ? readMechvibes
            : config.contains("support-events") || lowerCase(stem(name)) == "config" ? readNeptune
                                                                                     : nullptr;
        if (!reader ||
            (!isObject("definitions") && !isObject("defines") && !hasNeptuneFiles(folder_))) {
            return;
        }
        if (!lowerCase(name).ends_with(".json")) {
            addNote(notes.repaired, "\"" + readable(name) + "\" is the pack's \"config.json\".");
        }
        add(name, [&](PackNotes& noted) {
            noted.add(notes);
            return reader(folder_, config);
        });
    }

    void lookAtPresets(const std::string& name, const std::string& text) {
        try {
            for (ForeignPack& pack : readDaktilo(folder_, text)) {
                const ForeignPack& read = pack;
                add(name, [&](PackNotes&) { return read; });
            }
        } catch (const ForeignPackError& error) {
            found_.push_back({.place = name, .pack = std::nullopt, .error = error.what()});
        }
    }

    void add(const std::string& place, const Read& read) {
        FoundPack found{.place = place, .pack = std::nullopt, .error = {}};
        try {
            PackNotes notes = folder_.files().notes();
            ForeignPack pack = read(notes);
            notes.add(pack.notes);
            pack.notes = std::move(notes);
            if (pack.name.empty()) {
                pack.name = folder_.title();
            }
            pack.licenceText = folder_.licenceText();
            found.pack = std::move(pack);
        } catch (const ForeignPackError& error) {
            found.error = error.what();
        } catch (const DecodeError& error) {
            found.error = sentence(error);
        }
        found_.push_back(std::move(found));
    }

    static std::string sentence(const DecodeError& error) {
        return "Its description cannot be read: " + readable(error.what(), 200) + ".";
    }

    PackFolder folder_;
    const FindOptions& options_;
    std::vector<FoundPack>& found_;
    PackNotes ignored_;
};

/// Every folder that has files in it, the outer ones first.
std::vector<std::string> placesOf(const PackFiles& files) {
    std::set<std::pair<std::ptrdiff_t, std::string>> places;
    for (const std::string& name : files.names()) {
        const std::string place(folderOf(name));
        places.emplace(place.empty() ? -1 : std::ranges::count(place, '/'), place);
    }
    std::vector<std::string> result;
    for (const auto& [depth, place] : places) {
        // What a system leaves in archives.
        if (!place.starts_with("__MACOSX")) {
            result.push_back(place);
        }
    }
    return result;
}

} // namespace

std::vector<FoundPack> findPacks(const PackFiles& files, const FindOptions& options) {
    std::vector<FoundPack> found;
    constexpr std::size_t mostPlaces = 1000;
    for (const std::string& place : placesOf(files)) {
        if (found.size() < PackLimits::mostPacks && found.size() < mostPlaces) {
            Finder(files, place, options, found).look();
        }
    }
    if (found.size() == 1 && found[0].pack && !found[0].pack->place.empty()) {
        addNote(found[0].pack->notes.repaired,
                "The pack lay in the folder \"" + readable(found[0].pack->place) + "\" within.");
    }
    return found;
}

} // namespace vornic
