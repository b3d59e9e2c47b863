#include "VornicCore/foreign/ExportPack.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/JsonNumber.h"
#include "VornicCore/base/ReplaceFile.h"
#include "VornicCore/foreign/ExportedKeys.h"
#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <set>
#include <span>
#include <stdexcept>
#include <system_error>

namespace vornic {

namespace {

namespace fs = std::filesystem;

/// MIDI velocities of soft, medium and hard strokes.
constexpr std::array<std::pair<int, int>, 3> velocities{{{1, 42}, {43, 84}, {85, 127}}};

void makeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && !fs::is_empty(folder, error)) {
        throw std::runtime_error(folder.string() + " is not empty.");
    }
    if (error) {
        throw std::runtime_error("Couldn't make the folder " + folder.string() + ": " +
                                 error.message());
    }
}

void writeText(const std::string& text, const fs::path& file) {
    if (const std::error_code error = tryReplaceFile(file, std::as_bytes(std::span(text)))) {
        throw std::runtime_error("Couldn't write " + file.string() + ": " + error.message());
    }
}

std::size_t writeStrokes(const ExportedKeys& keys, const fs::path& folder) {
    std::size_t files = 0;
    std::error_code error;
    fs::create_directories(folder, error);
    for (const auto& [name, strokes] : keys.pools) {
        const ExportedPool pool{name, strokes};
        for (std::size_t place = 0; place < strokes.size(); ++place) {
            const Sample& stroke = strokes[place];
            const fs::path file = folder / pool.file(place);
            if (const std::error_code failed = writeFloatWAV(
                    std::span(stroke.data, static_cast<std::size_t>(stroke.length)), file)) {
                throw std::runtime_error("Couldn't write " + file.string() + ": " +
                                         failed.message());
            }
            ++files;
        }
    }
    return files;
}

/// The lowest note, so that all keys fit and most of them lie where a piano has keys.
int firstNote(std::size_t keys) {
    constexpr std::size_t notes = 128;
    constexpr std::size_t usual = 36;
    return static_cast<int>(std::min(usual, notes - std::min(keys, notes)));
}

std::string sfzOf(const Board& board, const ExportedKeys& keys) {
    std::string text = "// " + plainLine(board.name) + "\n<control>\ndefault_path=samples/\n";
    int note = firstNote(keys.keys.size());
    std::string regions;
    for (const ExportedKey& key : keys.keys) {
        const std::string number = std::to_string(note++);
        text += "label_key" + number + "=" + webNameOf(key.code) + "\n";
        regions += "\n<group> key=" + number + " volume=" + numberText(key.gainDb) +
                   " pan=" + numberText(std::round(key.pan * 100)) +
                   " tune=" + numberText(key.pitch * 100) + "\n";
        const auto add = [&](const ExportedPool& pool, const std::string& opcodes) {
            for (std::size_t place = 0; place < pool.strokes.size(); ++place) {
                regions += "<region> " + opcodes +
                           " seq_length=" + std::to_string(pool.strokes.size()) +
                           " seq_position=" + std::to_string(place + 1) +
                           " sample=" + pool.file(place) + "\n";
            }
        };
        for (std::size_t velocity = 0; velocity < key.presses.size(); ++velocity) {
            add(key.presses[velocity],
                "lovel=" + std::to_string(velocities.at(velocity).first) +
                    " hivel=" + std::to_string(velocities.at(velocity).second));
        }
        for (const ExportedPool& pool : key.releases) {
            add(pool, "trigger=release");
        }
    }
    return text + "\n<global> loop_mode=one_shot\n" + regions;
}

std::string decentOf(const ExportedKeys& keys) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DecentSampler>\n<groups>\n";
    int note = firstNote(keys.keys.size());
    for (const ExportedKey& key : keys.keys) {
        const std::string number = "\"" + std::to_string(note++) + "\"";
        std::string common = " tags=\"";
        common.append(webNameOf(key.code)).append("\" rootNote=").append(number);
        common.append(" loNote=").append(number).append(" hiNote=").append(number);
        common.append(" volume=\"").append(numberText(key.gainDb));
        common.append("dB\" pan=\"").append(numberText(std::round(key.pan * 100)));
        common.append("\" tuning=\"").append(numberText(key.pitch));
        common.append("\" seqMode=\"round_robin\"");
        const auto add = [&](const ExportedPool& pool, const std::string& attributes) {
            text.append("<group").append(common).append(attributes).append(" seqLength=\"");
            text.append(std::to_string(pool.strokes.size())).append("\">\n");
            for (std::size_t place = 0; place < pool.strokes.size(); ++place) {
                text.append("<sample path=\"samples/").append(pool.file(place));
                text.append("\" seqPosition=\"").append(std::to_string(place + 1)).append("\"/>\n");
            }
            text += "</group>\n";
        };
        for (std::size_t velocity = 0; velocity < key.presses.size(); ++velocity) {
            const auto& [softest, hardest] = velocities.at(velocity);
            add(key.presses[velocity], " loVel=\"" + std::to_string(softest) + "\" hiVel=\"" +
                                           std::to_string(hardest) + "\"");
        }
        for (const ExportedPool& pool : key.releases) {
            add(pool, " trigger=\"release\"");
        }
    }
    return text + "</groups>\n</DecentSampler>\n";
}

std::optional<std::int64_t> hookCodeOf(std::int64_t keyCode) {
    constexpr std::int64_t extended = 0x0e00;
    constexpr std::int64_t most = 93;
    for (std::int64_t code = 1; code < extended + 0x100;
         code = code == most ? extended : code + 1) {
        if (keyCodeOfHookCode(code) == keyCode) {
            return code;
        }
    }
    return std::nullopt;
}

/// "samples/press-1-medium-{0-11}.wav".
std::string rangeOf(const ExportedPool& pool) {
    const std::size_t last = pool.strokes.size() - 1;
    return "samples/" + pool.name + "-" + (last == 0 ? "0" : "{0-" + std::to_string(last) + "}") +
           ".wav";
}

/// Leaves only those pools that are named in the description.
std::string mechvibesOf(const Board& board, ExportedKeys& keys, ExportedPack& result) {
    nlohmann::ordered_json defines = nlohmann::ordered_json::object();
    bool hasLevels = false;
    std::set<std::string> used;
    std::string usualPress;
    std::string usualRelease;
    for (const ExportedKey& key : keys.keys) {
        const std::optional<std::int64_t> code = hookCodeOf(key.code);
        if (!code) {
            --result.keys;
            result.lost.push_back("The key " + webNameOf(key.code) + " has no number there.");
            continue;
        }
        hasLevels = hasLevels || key.gainDb != 0 || key.pitch != 0;
        if (!key.presses.empty()) {
            // Of three velocities the one in the middle.
            const ExportedPool& pool = key.presses[key.presses.size() / 2];
            const std::string press = rangeOf(pool);
            used.insert(pool.name);
            defines[std::to_string(*code)] = press;
            usualPress = usualPress.empty() || key.code == 0 ? press : usualPress;
        }
        if (!key.releases.empty()) {
            const std::string release = rangeOf(key.releases[0]);
            used.insert(key.releases[0].name);
            defines[std::to_string(*code) + "-up"] = release;
            usualRelease = usualRelease.empty() || key.code == 0 ? release : usualRelease;
        }
    }
    result.lost.emplace_back("It has one velocity: soft and hard strokes are left out.");
    if (hasLevels) {
        result.lost.emplace_back(
            "It has no levels and pitches: those of keys and groups are lost.");
    }
    std::erase_if(keys.pools, [&](const auto& pool) { return !used.contains(pool.first); });
    nlohmann::ordered_json config;
    config["id"] = "vornic-" + board.id;
    config["name"] = plainLine(board.name);
    config["version"] = 2;
    config["key_define_type"] = "multi";
    config["includes_numpad"] = true;
    config["sound"] = usualPress;
    config["soundup"] = usualRelease;
    config["defines"] = std::move(defines);
    return config.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace

ExportedPack exportPack(const Board& board, const VoiceBank& bank, ExportFormat format,
                        const fs::path& target) {
    ExportedKeys keys(board, bank);
    if (keys.keys.empty()) {
        throw std::runtime_error("\"" + plainLine(board.name) + "\" is silent.");
    }
    makeFolder(target);
    ExportedPack result;
    result.keys = keys.keys.size();
    switch (format) {
    case ExportFormat::sfz:
        writeText(sfzOf(board, keys), target / "board.sfz");
        break;
    case ExportFormat::decent:
        writeText(decentOf(keys), target / "board.dspreset");
        break;
    case ExportFormat::mechvibes:
        writeText(mechvibesOf(board, keys, result), target / "config.json");
        break;
    }
    std::string credits;
    for (const std::string& line : board.credits) {
        credits += plainLine(line, 400) + "\n";
    }
    writeText(credits, target / "CREDITS.txt");
    result.files = writeStrokes(keys, target / "samples");
    return result;
}

} // namespace vornic
