#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/NoteRegions.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/foreign/SfzText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

class Reader {
  public:
    Reader(const PackFolder& folder, const std::string& name) : folder_(folder) {
        pack_.format = PackFormat::sfz;
        pack_.place = folder.place();
        pack_.name = stem(name);
        text_ = readSfzText(folder, name, pack_.notes);
    }

    ForeignPack read(std::optional<int> firstNote) {
        std::vector<NoteRegion> regions;
        for (const SfzOpcodes& opcodes : text_.regions) {
            if (const std::optional<NoteRegion> region = regionOf(opcodes)) {
                regions.push_back(*region);
            }
        }
        addRegions(regions, namedKeys(), firstNote, pack_);
        return std::move(pack_);
    }

  private:
    static const std::string* find(const SfzOpcodes& opcodes, std::string_view name) {
        const auto found = opcodes.find(name);
        return found == opcodes.end() ? nullptr : &found->second;
    }

    static double number(const SfzOpcodes& opcodes, std::string_view name, double otherwise) {
        const std::string* const text = find(opcodes, name);
        return text == nullptr ? otherwise : numberOf(*text).value_or(otherwise);
    }

    static int note(const SfzOpcodes& opcodes, std::string_view name, int otherwise) {
        const std::string* const text = find(opcodes, name);
        return text == nullptr ? otherwise : noteOf(*text).value_or(otherwise);
    }

    /// "label_key36=KeyA" in the control section says which key a note is.
    NoteKeys namedKeys() const {
        constexpr std::string_view label = "label_key";
        NoteKeys keys;
        for (const auto& [name, value] : text_.control) {
            const std::optional<int> at = name.starts_with(label)
                                              ? noteOf(std::string_view(name).substr(label.size()))
                                              : std::nullopt;
            const std::optional<std::int64_t> code = at ? keyCodeOfAnyName(value) : std::nullopt;
            if (code) {
                keys[*at] = *code;
            }
        }
        return keys;
    }

    std::optional<NoteRegion> regionOf(const SfzOpcodes& opcodes) {
        const std::string* const sample = find(opcodes, "sample");
        if (sample == nullptr || sample->starts_with('*')) {
            addNote(pack_.notes.ignored, "A region without a recording.");
            return std::nullopt;
        }
        NoteRegion region;
        if (!readTrigger(opcodes, region)) {
            return std::nullopt;
        }
        const std::optional<std::string> file = folder_.find(*sample, pack_.notes);
        if (!file) {
            return std::nullopt;
        }
        region.take.file = *file;
        readKeys(opcodes, region);
        readSlice(opcodes, region.take);
        region.take.gainDb = number(opcodes, "volume", 0);
        region.take.semitones = number(opcodes, "tune", number(opcodes, "pitch", 0)) / 100 +
                                number(opcodes, "transpose", 0);
        noteOthers(opcodes);
        return region;
    }

    bool readTrigger(const SfzOpcodes& opcodes, NoteRegion& region) {
        const std::string* const trigger = find(opcodes, "trigger");
        const std::string word = trigger == nullptr ? "attack" : lowerCase(*trigger);
        region.isRelease = word == "release" || word == "release_key";
        if (region.isRelease || word == "attack" || word == "first") {
            return true;
        }
        addNote(pack_.notes.ignored, "Recordings that sound on \"" + readable(word) + "\".");
        return false;
    }

    static void readKeys(const SfzOpcodes& opcodes, NoteRegion& region) {
        if (find(opcodes, "key") != nullptr) {
            region.low = region.high = note(opcodes, "key", 60);
            region.centre = region.low;
        }
        region.low = note(opcodes, "lokey", region.low);
        region.high = note(opcodes, "hikey", region.high);
        region.centre = note(opcodes, "pitch_keycenter", static_cast<int>(region.centre));
        region.tracking = number(opcodes, "pitch_keytrack", 100) / 100;
        const auto velocity = [&](std::string_view name, double otherwise) {
            return static_cast<int>(std::clamp(number(opcodes, name, otherwise), 0.0, 127.0));
        };
        region.softest = velocity("lovel", 0);
        region.hardest = velocity("hivel", 127);
    }

    static void readSlice(const SfzOpcodes& opcodes, ForeignTake& take) {
        take.unit = ForeignTake::Unit::frames;
        take.begin = number(opcodes, "offset", 0);
        if (find(opcodes, "end") != nullptr) {
            // The opcode names the last frame that sounds.
            take.end = number(opcodes, "end", 0) + 1;
        }
    }

    void noteOthers(const SfzOpcodes& opcodes) {
        if (number(opcodes, "pan", 0) != 0) {
            addNote(pack_.notes.ignored, "\"pan\": a key sounds from where it is.");
        }
        static constexpr std::array<std::string_view, 5> used{"ampeg_", "fil_", "cutoff",
                                                              "rt_decay", "effect"};
        for (const std::string_view prefix : used) {
            const auto found = opcodes.lower_bound(prefix);
            if (found != opcodes.end() && found->first.starts_with(prefix)) {
                addNote(pack_.notes.ignored, "\"" + readable(found->first) + "\".");
            }
        }
    }

    const PackFolder& folder_;
    ForeignPack pack_;
    SfzText text_;
};

} // namespace

ForeignPack readSfz(const PackFolder& folder, const std::string& name,
                    std::optional<int> firstNote) {
    return Reader(folder, name).read(firstNote);
}

} // namespace vornic
