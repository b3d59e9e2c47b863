#pragma once

#include <cstdint>
#include <deque>
#include <vector>

namespace vornic {

/// Notices when a keyboard that a program made repeats what another one has just said, so that one
/// press sounds once. Most programs that remap keys take the real keyboard for themselves, and then
/// only theirs is heard; some leave it open and say everything again. Thread: key.
class RepeatedKeys {
  public:
    /// How long after its original a repetition may come.
    static constexpr std::uint64_t windowNanos = 50'000'000;

    /// Takes in one event, in the order of their times, and says whether it repeats one of another
    /// keyboard. Only a virtual keyboard repeats, and each event of another once.
    bool isRepetition(std::uint32_t keyboard, bool isVirtual, std::uint32_t code, bool down,
                      std::uint64_t nanos);

    /// Keeps no event: those that lie longer back than `windowNanos` are not needed.
    void reset() { std::deque<Original>().swap(recent_); }

  private:
    struct Original {
        std::uint32_t keyboard;
        std::uint32_t code;
        bool down;
        std::uint64_t nanos;
        std::vector<std::uint32_t> repeatedBy;
    };

    std::deque<Original> recent_;
};

} // namespace vornic
