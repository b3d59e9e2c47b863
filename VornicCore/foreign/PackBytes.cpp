#include "VornicCore/foreign/PackBytes.h"

#include "VornicCore/foreign/PackFolder.h"
#include "VornicCore/foreign/PackTransfer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vornic {

namespace {

void makePlain(PackNotes& notes) {
    constexpr std::size_t longest = 600;
    for (auto* const each : {&notes.missing, &notes.repaired, &notes.ignored, &notes.remarks}) {
        for (std::string& note : *each) {
            note = plainLine(note, longest);
        }
    }
}

void check(const ForeignPack& pack, const PackFiles& files) {
    const auto checkKey = [&](const ForeignKey& key) {
        for (const auto* const takes : {&key.press, &key.release}) {
            for (const ForeignTake& take : *takes) {
                const bool isFinite = std::isfinite(take.begin) &&
                                      std::isfinite(take.end.value_or(0)) &&
                                      std::isfinite(take.gainDb) && std::isfinite(take.semitones);
                if (!isFinite || take.unit > ForeignTake::Unit::frames ||
                    !std::ranges::binary_search(files.names(), take.file)) {
                    throw ForeignPackError(damagedBytes);
                }
            }
        }
    };
    if (pack.format > PackFormat::decentSampler) {
        throw ForeignPackError(damagedBytes);
    }
    for (const auto& [code, key] : pack.keys) {
        checkKey(key);
    }
    checkKey(pack.fallback);
}

} // namespace

std::string bytesOfFolder(const PackFiles& files, const FindOptions& options) {
    SentFolder folder;
    folder.name = files.name();
    folder.firstNote = options.firstNote;
    std::size_t room = mostPackBytes / 2;
    for (const std::string& name : files.names()) {
        SentFile file{name, std::nullopt};
        if (!isAudioName(name) && room > 0) {
            try {
                std::string text = files.text(name);
                if (text.size() <= room) {
                    room -= text.size();
                    file.text = std::move(text);
                }
            } catch (const ForeignPackError&) {
                file.text.reset(); // That it cannot be read is found there.
            }
        }
        folder.files.push_back(std::move(file));
    }
    return bytesOf(folder);
}

std::vector<FoundPack> packsOfBytes(std::string_view bytes, const PackFiles& files) {
    auto found = valueOf<std::vector<FoundPack>>(bytes);
    if (found.size() > PackLimits::mostPacks) {
        throw ForeignPackError(damagedBytes);
    }
    for (FoundPack& each : found) {
        each.error = plainLine(each.error, 400);
        if (!each.pack) {
            continue;
        }
        check(*each.pack, files);
        PackNotes notes = files.notes();
        notes.add(each.pack->notes);
        makePlain(notes);
        each.pack->notes = std::move(notes);
    }
    return found;
}

} // namespace vornic
