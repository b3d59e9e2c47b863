#pragma once

#include "VornicCore/board/Board.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// The rules by which a board is changed, whoever changes it. Thread: any.
namespace EditBoard {

/// A stroke of one layer that lists `samples`, with nothing that shapes it.
StrokeSpec plainStroke(LayerPart part, std::vector<std::string> samples);

/// A sound under a fresh id with the first recordings of `like`, in one layer a stroke, and nothing
/// that shapes them; without `like` it is silent, in the board's colour.
SoundSpec newSound(const Board& board, const SoundSpec* like, std::string name);

/// `sound` under a fresh id and another name.
SoundSpec copyOf(const SoundSpec& sound, std::string name);

/// Puts `sound` behind the one called `after`, or, where there is no such sound, behind all.
void addSound(Board& board, SoundSpec sound, const std::optional<std::string>& after = {});

/// Whether a sound may go: the last one stays.
bool canRemoveSound(const Board& board);

/// Takes a sound away; its keys play what their group, or else the board, says. The id of the sound
/// that has taken its place in the list; nothing, and no change, where it has to stay or is none of
/// the board's.
std::optional<std::string> removeSound(Board& board, const std::string& id);

/// Makes every key play the sound called `id`; how loud each is, where, and so on stays. Nothing
/// when the board has no such sound.
void playEverywhere(Board& board, const std::string& id);

/// Whether every drawn key plays it.
bool playsEverywhere(const Board& board, const std::string& id);

/// How many drawn keys play each sound, by its id; a sound that none plays is left out.
std::map<std::string, int> keysBySound(const Board& board);

/// What overrides nothing is no override.
void dropEmptyOverrides(Board& board);

/// Gives a sound a release, from the recordings of its press, or takes it away.
void setHasRelease(SoundSpec& sound, bool on);

/// A further layer behind the others, with the recordings of the last one; nothing when there are
/// `most` already.
void addLayer(StrokeSpec& stroke, std::size_t most);

/// Takes away the layer at that place, if there is one.
void removeLayer(StrokeSpec& stroke, std::ptrdiff_t place);

/// Moves a layer to another place; nothing happens beyond the ends.
void moveLayer(StrokeSpec& stroke, std::ptrdiff_t place, std::ptrdiff_t to);

/// Adds recordings to what a layer plays, each once, or takes them from it.
void chooseSamples(LayerSpec& layer, const std::vector<std::string>& ids, bool on);

} // namespace EditBoard
} // namespace vornic
