#include "Vornic/views/studio/StrokePicture.h"

#include <algorithm>
#include <cmath>

namespace vornic {

QVariantList strokePicture(std::span<const float> samples, std::size_t most) {
    QVariantList strips;
    const std::size_t count = std::min(most, samples.size());
    for (std::size_t strip = 0; strip < count; ++strip) {
        const std::size_t begin = strip * samples.size() / count;
        const std::size_t end = (strip + 1) * samples.size() / count;
        float loudest = 0.0F;
        for (const float sample : samples.subspan(begin, end - begin)) {
            loudest = std::max(loudest, std::abs(sample));
        }
        strips.append(static_cast<double>(loudest));
    }
    return strips;
}

} // namespace vornic
