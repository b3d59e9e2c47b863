#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace vornic {

/// How a client stands with the key reader.
enum class ReaderStanding : std::uint8_t {
    /// Keys come.
    hearing,
    /// Nobody types for this client now: the screen is locked, or another user's session is active.
    paused,
    /// Another client hears them.
    taken,
    /// The permission is not given.
    notAllowed,
};

/// The first message to a client, which sends it back as it is: only the process that was looked at
/// can do that, since the system says who has sent it.
struct ReaderChallenge {
    std::uint64_t number = 0;
    bool operator==(const ReaderChallenge&) const = default;
};

/// A keyboard is heard from now on.
struct ReaderKeyboard {
    /// Tells it from others, and from itself plugged in again.
    std::uint32_t number = 0;
    std::uint16_t bus = 0;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    /// What the device calls itself; cut after `longestText` bytes.
    std::string name;
    /// Where it is plugged in, as a path below /sys; cut likewise.
    std::string port;
    /// A bit for each key code that it has, the lowest first.
    std::array<std::uint8_t, 96> keys{};

    static constexpr std::size_t longestText = 255;
    bool operator==(const ReaderKeyboard&) const = default;
};

/// It is heard no more.
struct ReaderKeyboardGone {
    std::uint32_t number = 0;
    bool operator==(const ReaderKeyboardGone&) const = default;
};

/// A key went down or up.
struct ReaderKey {
    std::uint32_t keyboard = 0;
    /// KEY_A is 30.
    std::uint16_t code = 0;
    bool down = false;
    /// The kernel's stamp, nanoseconds of the monotonic clock.
    std::uint64_t nanos = 0;
    bool operator==(const ReaderKey&) const = default;
};

/// What goes over the key reader's socket, one message a packet.
using ReaderMessage =
    std::variant<ReaderChallenge, ReaderStanding, ReaderKeyboard, ReaderKeyboardGone, ReaderKey>;

/// No packet is longer, in bytes.
inline constexpr std::size_t longestReaderPacket = 1024;

/// The packet of a message: the place of its kind in `ReaderMessage`, then its fields, numbers with
/// the lowest byte first, texts with their length before them. Thread: any.
std::vector<std::uint8_t> packetOf(const ReaderMessage& message);

/// The message of a packet; empty where it is none, also one with anything behind it. Thread: any.
std::optional<ReaderMessage> messageOf(std::span<const std::uint8_t> packet);

} // namespace vornic
