#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vornic {

/// A universally unique identifier; all zeros unless it comes from elsewhere. Thread: any.
class Uuid {
  public:
    Uuid() = default;

    explicit Uuid(const std::array<std::uint8_t, 16>& bytes) : bytes_(bytes) {}

    /// A fresh one (version 4), from the system's random numbers. Throws if there are none.
    static Uuid random();

    /// Reads 8-4-4-4-12 hexadecimal digits in any case; none if the text has another form.
    static std::optional<Uuid> parse(std::string_view text);

    /// 8-4-4-4-12 hexadecimal digits in upper case.
    std::string text() const;

    auto operator<=>(const Uuid&) const = default;

  private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace vornic
