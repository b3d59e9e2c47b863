#pragma once

#include "VornicCore/foreign/ForeignPack.h"

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the readers of all formats need. Thread: any.

namespace vornic {

/// A JSON document as people write it by hand: a byte order mark and commas too many are taken out,
/// which is noted as repaired, and of equal members the last counts. Throws DecodeError.
nlohmann::json parseHandWrittenJson(std::string text, PackNotes& notes);

/// The text without its byte order mark, which is noted; UTF-16 becomes UTF-8.
std::string withoutMark(std::string text, PackNotes& notes);

/// The string member of an object, without blanks around it; empty where there is none.
std::string stringMember(const nlohmann::json& object, const char* name);

/// The whole text as a number, independent of the locale; none if it is none or not finite.
std::optional<double> numberOf(std::string_view text);

/// Without blanks at both ends.
std::string_view trimmed(std::string_view text);

/// "name_{0-4}.wav" stands for five files; any other name for itself.
std::vector<std::string> expandedRange(const std::string& name);

/// The key that iohook and its kin call by this number; none for one they do not have.
std::optional<std::int64_t> keyCodeOfHookCode(std::int64_t code);

} // namespace vornic
