#pragma once

#include "VornicCore/board/LayerSpec.h"

#include <string>
#include <string_view>

namespace vornic {

/// What the user sees of a sample. Thread: any.
struct SampleInfo {
    /// A user's sample: "user/" and eight characters.
    std::string id;
    std::string name;
    /// The role that it plays in a stroke.
    LayerPart part = LayerPart::bottomOut;
    /// "Built in" or "Yours".
    std::string source;
    /// Whether it was derived from a pack.
    bool builtIn = false;

    bool operator==(const SampleInfo&) const = default;
};

} // namespace vornic
