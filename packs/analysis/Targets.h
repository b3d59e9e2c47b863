#pragma once

#include "packs/analysis/ClassFeatures.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vornic::packs {

/// What was measured on one keyboard.
struct MeasuredKeyboard {
    std::string what;                             // the device
    std::map<std::string, ClassFeatures> classes; // by "regular" ... "release"
};

/// The figures of `keyboard` in a file of measured keystrokes, where it stands under `pack`; none
/// if the file cannot be read or does not hold them.
std::optional<MeasuredKeyboard> readTargets(const std::filesystem::path& file,
                                            const std::string& pack, const std::string& keyboard);

/// Which keyboards a file of measured keystrokes holds: pack and keyboard, as `readTargets` takes
/// them; none if it cannot be read. Thread: any.
std::vector<std::pair<std::string, std::string>>
measuredKeyboards(const std::filesystem::path& file);

/// Gives a class of fewer than five strokes, whose figures have no spread of their own, that of
/// another.
void lendSpread(ClassFeatures& target, const ClassFeatures& lender);

} // namespace vornic::packs
