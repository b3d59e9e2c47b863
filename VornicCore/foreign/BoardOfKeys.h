#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/PlayedKeys.h"

#include <cstddef>
#include <string>

namespace vornic {

/// The id of a pack's recording in its board: "pack/0007".
std::string recordingId(std::size_t index);

/// The most recordings that a board file may bring along.
inline constexpr std::size_t mostFileRecordings = 2000;

/// A board without name and credits on which every key plays what `played` says: sounds are shared,
/// groups have what most of their keys play, single keys what differs. Thread: any.
Board boardOfKeys(const PlayedKeys& played, PackNotes& notes);

} // namespace vornic
