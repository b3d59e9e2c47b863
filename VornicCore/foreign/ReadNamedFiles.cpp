// The formats that say by the names of files alone which key a file belongs to.

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

namespace vornic {

namespace {

/// "space", "space2" and "space-up".
struct Word {
    std::string word;
    unsigned number = 1;
    bool isRelease = false;
};

std::optional<Word> wordOf(const std::string& file) {
    if (!isAudioName(file)) {
        return std::nullopt;
    }
    Word result;
    result.word = lowerCase(stem(file));
    constexpr std::string_view up = "-up";
    if (result.word.ends_with(up)) {
        result.isRelease = true;
        result.word.resize(result.word.size() - up.size());
    }
    const std::size_t letters = result.word.find_last_not_of("0123456789") + 1;
    if (letters < result.word.size()) {
        const char* const end = result.word.data() + result.word.size();
        if (std::from_chars(result.word.data() + letters, end, result.number).ec != std::errc()) {
            return std::nullopt;
        }
        result.word.resize(letters);
    }
    static constexpr std::array known{"space", "enter", "backspace", "fallback"};
    return std::ranges::find(known, result.word) != known.end() ? std::optional(std::move(result))
                                                                : std::nullopt;
}

/// "1e-1.wav": the kernel's code of the key, and 1 for its press.
struct HexName {
    std::uint32_t code = 0;
    bool isRelease = false;
};

std::optional<HexName> hexNameOf(const std::string& file) {
    const std::string name = lowerCase(stem(file));
    HexName result;
    if (!isAudioName(file) || name.size() != 4 || name[2] != '-' ||
        (name[3] != '0' && name[3] != '1')) {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(name.data(), name.data() + 2, result.code, 16);
    result.isRelease = name[3] == '0';
    return error == std::errc() && end == name.data() + 2 ? std::optional(result) : std::nullopt;
}

} // namespace

bool hasNeptuneFiles(const PackFolder& folder) {
    return std::ranges::any_of(folder.own(), [](const std::string& file) {
        const std::optional<Word> word = wordOf(file);
        return word && !word->isRelease;
    });
}

ForeignPack readNeptune(const PackFolder& folder, const nlohmann::json& config) {
    ForeignPack pack;
    pack.format = PackFormat::neptune;
    pack.place = folder.place();
    pack.name = stringMember(config, "name");
    pack.author = stringMember(config, "author");
    pack.licence = stringMember(config, "license");
    std::map<std::string, std::map<unsigned, ForeignTake>> presses;
    std::map<std::string, std::map<unsigned, ForeignTake>> releases;
    for (const std::string& file : folder.own()) {
        if (const std::optional<Word> word = wordOf(file)) {
            (word->isRelease ? releases : presses)[word->word][word->number] = {.file = file};
        } else if (isAudioName(file)) {
            addNote(pack.notes.ignored, "\"" + readable(file) + "\" belongs to no key.");
        }
    }
    const auto takesOf = [](const auto& sides, const std::string& word) {
        std::vector<ForeignTake> takes;
        if (const auto found = sides.find(word); found != sides.end()) {
            for (const auto& [number, take] : found->second) {
                takes.push_back(take);
            }
        }
        takes.resize(std::min(takes.size(), PackLimits::mostTakesOfKey));
        return takes;
    };
    const auto keyOf = [&](const std::string& word) {
        return ForeignKey{takesOf(presses, word), takesOf(releases, word)};
    };
    using Place = std::pair<std::int64_t, const char*>;
    for (const auto& [code, word] : {Place{49, "space"},
                                     {36, "enter"},
                                     {76, "enter"},
                                     {51, "backspace"},
                                     {117, "backspace"}}) {
        ForeignKey key = keyOf(word);
        if (!key.press.empty() || !key.release.empty()) {
            pack.keys[code] = std::move(key);
        }
    }
    pack.fallback = keyOf("fallback");
    return pack;
}

bool hasBucklespringFiles(const PackFolder& folder) {
    return std::ranges::count_if(folder.own(), [](const std::string& file) {
               const std::optional<HexName> name = hexNameOf(file);
               return name && !name->isRelease;
           }) > 1;
}

ForeignPack readBucklespring(const PackFolder& folder) {
    ForeignPack pack;
    pack.format = PackFormat::bucklespring;
    pack.place = folder.place();
    pack.name = folder.title();
    for (const std::string& file : folder.own()) {
        const std::optional<HexName> name = hexNameOf(file);
        if (!name) {
            if (isAudioName(file)) {
                addNote(
                    pack.notes.ignored,
                    "\"" + readable(file) + "\" belongs to " +
                        (lowerCase(baseName(file)).starts_with("ff-") ? "a mouse." : "no key."));
            }
            continue;
        }
        constexpr std::uint32_t mouse = 0xff;
        if (name->code == mouse) {
            addNote(pack.notes.ignored, "\"" + readable(file) + "\" belongs to a mouse.");
            continue;
        }
        ForeignKey& key = pack.keys[keyCodeOfEvdev(name->code)];
        (name->isRelease ? key.release : key.press).push_back({.file = file});
    }
    constexpr std::uint32_t usual = 0x31;
    if (const auto found = pack.keys.find(keyCodeOfEvdev(usual)); found != pack.keys.end()) {
        pack.fallback = found->second;
    }
    return pack;
}

} // namespace vornic
