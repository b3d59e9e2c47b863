#pragma once

#include "VornicCore/board/BoardFile.h"
#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/PackRecordings.h"
#include "VornicCore/foreign/PackReport.h"

namespace vornic {

/// A pack as a board with its recordings, as a board file would bring them.
struct ConvertedPack {
    BoardFile::Contents contents;
    PackReport report;
};

/// How loud a converted board is, in LUFS as boardLoudness has it: like those that come with the
/// program, so that nobody reaches for the volume.
inline constexpr double convertedLoudness = -29;

/// Makes a board of a pack: every recording once, keys with equal sounds as their group's
/// assignment and the others as single keys', differences of loudness between keys as their gains.
/// `audio` has the pack's files as far as they could be read. Throws ForeignPackError where nothing
/// sounds. Thread: any.
ConvertedPack convertPack(const ForeignPack& pack, const PackAudioFiles& audio);

} // namespace vornic
