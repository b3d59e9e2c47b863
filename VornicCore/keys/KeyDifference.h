#pragma once

#include <cstddef>
#include <cstdint>

/// How the keys of one real keyboard differ from each other: each has a level and a colour of its
/// own, always the same for the same key. Thread: any, without allocation.
namespace vornic::KeyDifference {

/// By how much the key is louder than the middle of its keyboard, in dB: drawn from its code,
/// normally distributed with a standard deviation of 2.4 dB (as measured between the keys of real
/// keyboards), at most 6 dB to either side.
double levelDb(std::int64_t keyCode);

/// Which of `count` variations to play (at least one) where `pick`, below `count`, was drawn for a
/// keyboard of equal keys and `chance` (0 to 1) for this. Each key has a quarter of the variations
/// as its own; with `amount` 1 it plays only these, with 0 all alike.
std::size_t variation(std::int64_t keyCode, double amount, double chance, std::size_t pick,
                      std::size_t count);

} // namespace vornic::KeyDifference
