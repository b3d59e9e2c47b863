#pragma once

#include <QVariantList>
#include <cstddef>
#include <span>

namespace vornic {

/// A stroke drawn in at most `most` strips of equal length: the highest magnitude in each.
/// Thread: any.
QVariantList strokePicture(std::span<const float> samples, std::size_t most);

} // namespace vornic
