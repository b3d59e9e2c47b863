#pragma once

#include "VornicCore/realtime/Fatal.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

namespace vornic {

/// How one case of an enumeration is written in files and shown to people.
template <typename Enum>
struct CaseName {
    Enum value;
    /// Stable: it stands in files.
    std::string_view rawString;
    std::string_view label;
};

/// The names of an enumeration's cases. An enumeration that is written to files specialises it with
/// `static constexpr std::array names`, one `CaseName` for each case, in case order.
template <typename Enum>
struct CaseNames;

/// An enumeration that has a `CaseNames`.
template <typename Enum>
concept NamedEnum = std::is_enum_v<Enum> && requires { CaseNames<Enum>::names.size(); };

/// The names of one case. Thread: any, without allocation.
template <NamedEnum Enum>
constexpr const CaseName<Enum>& caseName(Enum value) {
    for (const CaseName<Enum>& name : CaseNames<Enum>::names) {
        if (name.value == value) {
            return name;
        }
    }
    fatal("an enumeration holds no value outside its cases");
}

/// The text that stands for the case in files.
template <NamedEnum Enum>
constexpr std::string_view rawString(Enum value) {
    return caseName(value).rawString;
}

/// The text that stands for the case on screen.
template <NamedEnum Enum>
constexpr std::string_view label(Enum value) {
    return caseName(value).label;
}

/// The case with that raw string (capitals matter); none if there is no such case.
template <NamedEnum Enum>
constexpr std::optional<Enum> caseFromRawString(std::string_view rawString) {
    for (const CaseName<Enum>& name : CaseNames<Enum>::names) {
        if (name.rawString == rawString) {
            return name.value;
        }
    }
    return std::nullopt;
}

/// Every case, in case order.
template <NamedEnum Enum>
constexpr auto allCases() {
    constexpr auto& names = CaseNames<Enum>::names;
    std::array<Enum, names.size()> cases{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        cases[i] = names[i].value;
    }
    return cases;
}

} // namespace vornic
