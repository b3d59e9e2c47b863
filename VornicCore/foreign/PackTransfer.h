#pragma once

#include "VornicCore/foreign/ByteStream.h"
#include "VornicCore/foreign/FindPacks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What packs and their folders consist of, for ByteStream.h. Thread: any.

namespace vornic {

struct SentFile {
    std::string name;
    /// Absent for audio and for what cannot be read.
    std::optional<std::string> text;
};

/// A folder of a pack without its audio.
struct SentFolder {
    std::string name;
    std::optional<std::int64_t> firstNote;
    std::vector<SentFile> files;
};

template <typename Stream>
void transfer(Stream& stream, ForeignTake& take) {
    stream(take.file, take.unit, take.begin, take.end, take.gainDb, take.semitones);
}

template <typename Stream>
void transfer(Stream& stream, ForeignKey& key) {
    stream(key.press, key.release);
}

template <typename Stream>
void transfer(Stream& stream, PackNotes& notes) {
    stream(notes.missing, notes.repaired, notes.ignored, notes.remarks);
}

template <typename Stream>
void transfer(Stream& stream, ForeignPack& pack) {
    stream(pack.format, pack.place, pack.name, pack.author, pack.licence, pack.description,
           pack.licenceText, pack.keys, pack.silent, pack.fallback, pack.notes);
}

template <typename Stream>
void transfer(Stream& stream, FoundPack& found) {
    stream(found.place, found.pack, found.error);
}

template <typename Stream>
void transfer(Stream& stream, SentFile& file) {
    stream(file.name, file.text);
}

template <typename Stream>
void transfer(Stream& stream, SentFolder& folder) {
    stream(folder.name, folder.firstNote, folder.files);
}

} // namespace vornic
