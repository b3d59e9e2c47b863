#include "VornicCore/packs/SoundPack.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <tuple>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::pair<KeyClass, std::string_view>, 5> classWords{{
    {KeyClass::regular, "regular"},
    {KeyClass::space, "space"},
    {KeyClass::enter, "enter"},
    {KeyClass::backspace, "backspace"},
    {KeyClass::modifier, "modifier"},
}};

constexpr std::array<std::string_view, 6> packOrder{"deep",  "soft",   "plastic",
                                                    "metal", "clicky", "spring"};

constexpr std::string_view audioEnding = ".wav";
constexpr std::string_view releaseBeginning = "release-";

std::optional<KeyClass> classNamedBy(std::string_view name) {
    const std::string_view word = name.substr(0, name.find('-'));
    const auto* const found =
        std::ranges::find(classWords, word, [](const auto& entry) { return entry.second; });
    return found == classWords.end() ? std::nullopt : std::optional(found->first);
}

// The names of everything in `folder`, sorted so that results never hang on the listing order.
std::vector<std::string> entryNames(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    if (error) {
        return {};
    }
    std::ranges::sort(names);
    return names;
}

std::vector<fs::path> pathsOf(const std::vector<std::string>& names, const fs::path& folder) {
    std::vector<fs::path> paths;
    paths.reserve(names.size());
    std::ranges::transform(names, std::back_inserter(paths),
                           [&](const std::string& name) { return folder / name; });
    return paths;
}

// Where the pack stands in the order; all that it does not name stand together at its end.
auto rankOf(const SoundPack& pack) {
    return std::ranges::find(packOrder, pack.id()) - packOrder.begin();
}

} // namespace

std::string_view packFileWord(KeyClass keyClass) {
    const auto* const found =
        std::ranges::find(classWords, keyClass, [](const auto& entry) { return entry.first; });
    return found->second;
}

std::string SoundPack::sampleID(const fs::path& file) const {
    return manifest.id + "/" + file.stem().string();
}

std::map<KeyClass, std::vector<std::string>>
SoundPack::group(const std::vector<std::string>& names) {
    std::map<KeyClass, std::vector<std::string>> groups;
    for (const std::string& name : names) {
        if (!name.ends_with(audioEnding)) {
            continue;
        }
        if (const auto keyClass = classNamedBy(name)) {
            groups[*keyClass].push_back(name);
        }
    }
    return groups;
}

std::optional<SoundPack> SoundPack::load(const fs::path& folder) {
    std::optional<Manifest> manifest = Manifest::read(folder / "pack.json");
    if (!manifest) {
        return std::nullopt;
    }
    std::vector<std::string> presses;
    std::vector<std::string> releases;
    for (std::string& name : entryNames(folder)) {
        if (name.ends_with(audioEnding)) {
            auto& list = name.starts_with(releaseBeginning) ? releases : presses;
            list.push_back(std::move(name));
        }
    }
    const auto groups = group(presses);
    if (groups.empty()) {
        return std::nullopt;
    }
    SoundPack pack{.manifest = *std::move(manifest),
                   .folder = folder,
                   .files = {},
                   .releaseFiles = pathsOf(releases, folder)};
    for (const auto& [keyClass, names] : groups) {
        pack.files[keyClass] = pathsOf(names, folder);
    }
    return pack;
}

std::vector<SoundPack> SoundPack::all(const fs::path& folder) {
    std::vector<SoundPack> packs;
    for (const std::string& name : entryNames(folder)) {
        if (std::optional<SoundPack> pack = load(folder / name)) {
            packs.push_back(*std::move(pack));
        }
    }
    // Folders differ, so equal ranks and names keep the order of the listing.
    std::ranges::sort(packs, [](const SoundPack& a, const SoundPack& b) {
        return std::forward_as_tuple(rankOf(a), a.name(), a.folder) <
               std::forward_as_tuple(rankOf(b), b.name(), b.folder);
    });
    return packs;
}

} // namespace vornic
