#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <optional>

namespace vornic {

/// How loud `board` is as `bank` plays it, in LUFS: the mean power of a press of every key of its
/// keyboard at medium velocity, with the gains of key and group, over all variations (see
/// DSP::weightedPower). None where nothing sounds. Thread: any, as everything here.
std::optional<double> boardLoudness(const Board& board, const VoiceBank& bank);

/// The factor that brings what is `loudness` LUFS loud to `wanted`. At most 12 dB either way, since
/// beyond that two boards are not versions of each other; 1 where one of them is silent.
double matchingGain(std::optional<double> loudness, std::optional<double> wanted);

} // namespace vornic
