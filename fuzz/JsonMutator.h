#pragma once

#include <cstddef>
#include <cstdint>

namespace vornic {

/// Changes a document in one place, most of the time so that it stays a document: the fuzzer's own
/// changes, byte by byte, seldom get past the parser. For LLVMFuzzerCustomMutator; same arguments.
std::size_t mutateJson(std::uint8_t* data, std::size_t size, std::size_t largest,
                       std::uint32_t seed);

} // namespace vornic
