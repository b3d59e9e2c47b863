#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Made-up keystrokes of 200 ms: twelve recordings for each of five sounds, and the part samples.
class BenchSource final : public SampleSource {
  public:
    BenchSource();
    std::optional<std::vector<float>> samples(const std::string& id) const override;

  private:
    std::map<std::string, std::vector<float>> recordings_;
};

/// A board as heavy as a built-in one may get: five sounds of 12 variations on stabilised keys,
/// every stage of the chain in use.
Board benchBoard();

} // namespace vornic
