#include "VornicCore/foreign/PackFolder.h"

#include "VornicCore/base/ReadableText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vornic {

namespace {

constexpr std::array<std::string_view, 10> audioEndings{".wav", ".ogg", ".mp3",  ".flac", ".m4a",
                                                        ".aac", ".aif", ".aiff", ".opus", ".webm"};

bool isBelow(std::string_view name, std::string_view place) {
    return place.empty() ||
           (name.size() > place.size() && name.starts_with(place) && name[place.size()] == '/');
}

} // namespace

PackFolder::PackFolder(const PackFiles& files, std::string place)
    : files_(&files), place_(std::move(place)) {
    for (const std::string& name : files.names()) {
        if (!isBelow(name, place_)) {
            continue;
        }
        const std::string relative = name.substr(place_.empty() ? 0 : place_.size() + 1);
        if (relative.find('/') == std::string::npos) {
            own_.push_back(name);
        }
        byName_.try_emplace(lowerCase(relative), name);
        byBaseName_.try_emplace(lowerCase(baseName(relative)), name);
    }
}

std::string PackFolder::title() const {
    return place_.empty() ? files_->name() : std::string(baseName(place_));
}

std::optional<std::string> PackFolder::lookUp(const std::string& name) const {
    for (const auto& [names, wanted] : {std::pair(&byName_, lowerCase(name)),
                                        std::pair(&byBaseName_, lowerCase(baseName(name)))}) {
        const auto found = names->find(wanted);
        if (found != names->end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

std::optional<std::string> PackFolder::find(const std::string& wanted, PackNotes& notes) const {
    const std::string name = plainName(wanted);
    const std::string shown = "\"" + readable(wanted) + "\"";
    if (name.empty()) {
        addNote(notes.missing, shown + " would lie outside the pack.");
        return std::nullopt;
    }
    std::string exact = place_.empty() ? name : place_ + "/" + name;
    if (std::ranges::binary_search(files_->names(), exact)) {
        return exact;
    }
    std::optional<std::string> found = lookUp(name);
    if (!found) {
        addNote(notes.missing, "The file " + shown + ".");
        return std::nullopt;
    }
    addNote(notes.repaired, shown + " is called \"" + readable(*found) + "\".");
    return found;
}

std::string PackFolder::licenceText() const {
    for (const std::string& name : own_) {
        const std::string base = lowerCase(stem(name));
        if (base == "license" || base == "licence" || base == "copying") {
            try {
                constexpr std::size_t longest = 16384;
                return files_->text(name).substr(0, longest);
            } catch (const ForeignPackError&) {
                return {};
            }
        }
    }
    return {};
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return lower;
}

std::string_view baseName(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string_view::npos ? name : name.substr(slash + 1);
}

std::string_view stem(std::string_view name) {
    const std::string_view base = baseName(name);
    const std::size_t dot = base.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? base : base.substr(0, dot);
}

std::string_view folderOf(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : name.substr(0, slash);
}

bool isAudioName(std::string_view name) {
    const std::string lower = lowerCase(name);
    return std::ranges::any_of(audioEndings,
                               [&](std::string_view ending) { return lower.ends_with(ending); });
}

} // namespace vornic
