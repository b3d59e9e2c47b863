#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/NoteRegions.h"
#include "VornicCore/foreign/PackReaders.h"
#include "VornicCore/foreign/PackText.h"
#include "VornicCore/keys/KnownKeys.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

/// A sample with the group and the groups that it lies in, which it inherits from.
class Attributes {
  public:
    explicit Attributes(const pugi::xml_node& sample)
        : nodes_{sample, sample.parent(), sample.parent().parent()} {}

    std::string_view text(const char* name) const {
        for (const pugi::xml_node& node : nodes_) {
            if (const pugi::xml_attribute found = node.attribute(name)) {
                return found.value();
            }
        }
        return {};
    }
    double number(const char* name, double otherwise) const {
        return numberOf(text(name)).value_or(otherwise);
    }
    int note(const char* name, int otherwise) const {
        return noteOf(text(name)).value_or(otherwise);
    }

  private:
    std::array<pugi::xml_node, 3> nodes_;
};

/// "0.5", or "-6dB".
double gainDbOf(std::string_view text) {
    text = trimmed(text);
    if (lowerCase(text).ends_with("db")) {
        return numberOf(text.substr(0, text.size() - 2)).value_or(0);
    }
    const double factor = numberOf(text).value_or(1);
    return factor > 0 ? 20 * std::log10(factor) : -120;
}

class Reader {
  public:
    Reader(const PackFolder& folder, const std::string& name) : folder_(folder) {
        pack_.format = PackFormat::decentSampler;
        pack_.place = folder.place();
        pack_.name = stem(name);
    }

    ForeignPack read(const pugi::xml_node& root, std::optional<int> firstNote) {
        std::vector<NoteRegion> regions;
        for (const pugi::xml_node& groups : root.children("groups")) {
            for (const pugi::xml_node& group : groups.children("group")) {
                for (const pugi::xml_node& sample : group.children("sample")) {
                    add(Attributes(sample), regions);
                }
            }
        }
        addRegions(regions, named_, firstNote, pack_);
        return std::move(pack_);
    }

  private:
    void add(const Attributes& sample, std::vector<NoteRegion>& regions) {
        NoteRegion region;
        const std::string trigger = lowerCase(sample.text("trigger"));
        region.isRelease = trigger == "release";
        if (!trigger.empty() && trigger != "attack" && trigger != "first" && !region.isRelease) {
            addNote(pack_.notes.ignored, "Recordings that sound on \"" + readable(trigger) + "\".");
            return;
        }
        const std::optional<std::string> file =
            folder_.find(std::string(sample.text("path")), pack_.notes);
        constexpr std::size_t mostRegions = 20'000;
        if (!file || regions.size() == mostRegions) {
            return;
        }
        region.take.file = *file;
        region.take.unit = ForeignTake::Unit::frames;
        region.take.begin = sample.number("start", 0);
        if (!sample.text("end").empty()) {
            // The attribute names the last frame that sounds.
            region.take.end = sample.number("end", 0) + 1;
        }
        region.take.gainDb = gainDbOf(sample.text("volume"));
        region.take.semitones = sample.number("tuning", 0);
        const int root = sample.note("rootNote", 60);
        region.centre = root;
        region.tracking = sample.number("pitchKeyTrack", 1);
        region.low = sample.note("loNote", root);
        region.high = sample.note("hiNote", root);
        region.softest = static_cast<int>(std::clamp(sample.number("loVel", 0), 0.0, 127.0));
        region.hardest = static_cast<int>(std::clamp(sample.number("hiVel", 127), 0.0, 127.0));
        if (sample.number("pan", 0) != 0) {
            addNote(pack_.notes.ignored, "\"pan\": a key sounds from where it is.");
        }
        nameKey(sample, region);
        regions.push_back(std::move(region));
    }

    /// A tag that is the web name of a key says which key a single note is.
    void nameKey(const Attributes& sample, const NoteRegion& region) {
        std::string_view tags = sample.text("tags");
        while (!tags.empty() && region.low == region.high) {
            const std::size_t end = std::min(tags.find(','), tags.size());
            if (const auto code = keyCodeOfWebName(trimmed(tags.substr(0, end)))) {
                named_[region.low] = *code;
            }
            tags.remove_prefix(std::min(end + 1, tags.size()));
        }
    }

    const PackFolder& folder_;
    ForeignPack pack_;
    NoteKeys named_;
};

} // namespace

ForeignPack readDecentSampler(const PackFolder& folder, const std::string& name,
                              const std::string& text, std::optional<int> firstNote) {
    pugi::xml_document document;
    // No references of its own: nothing in it can grow.
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), pugi::parse_minimal | pugi::parse_escapes);
    if (!result) {
        throw ForeignPackError(std::string("It is no XML: ") + result.description() + ".");
    }
    return Reader(folder, name).read(document.child("DecentSampler"), firstNote);
}

} // namespace vornic
