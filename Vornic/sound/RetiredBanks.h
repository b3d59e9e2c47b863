#pragma once

#include "VornicCore/sampler/VoiceBank.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vornic {

class SamplerCore;

/// Replaced banks, kept until nothing can read their frames any more. Thread: main.
class RetiredBanks {
  public:
    /// The shortest time that a replaced bank is kept, in seconds.
    static constexpr double shortestStay = 3.0;

    /// Keeps `bank`, replaced at `now` (seconds).
    void add(std::shared_ptr<const VoiceBank> bank, double now);

    /// Forgets `bank`, which plays again. Kept twice, a bank would hold itself for ever.
    void takeBack(const std::shared_ptr<const VoiceBank>& bank);

    /// Frees every bank that was replaced more than `shortestStay` before `now`, that nobody else
    /// holds any more, and whose last voice `core` has reported as ended. A voice may outlast the
    /// stay, because pitch has no limit, and voices stand still while the output is paused.
    void release(double now, const SamplerCore& core);

    std::size_t size() const { return banks_.size(); }

  private:
    struct Retired {
        std::shared_ptr<const VoiceBank> bank;
        double since;
        /// Events pushed when nobody could push another one from this bank.
        std::optional<std::uint64_t> lastEvent;
    };

    std::vector<Retired> banks_;
};

} // namespace vornic
