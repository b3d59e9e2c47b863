#include "Vornic/views/studio/StrokeAdapter.h"

#include "Vornic/views/studio/SoundEdit.h"
#include "Vornic/views/studio/StrokePicture.h"
#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cstddef>

namespace vornic {

namespace {

constexpr std::size_t strips = 120;

QString nameOf(Velocity velocity) {
    switch (velocity) {
    case Velocity::soft:
        return StrokeAdapter::tr("Soft");
    case Velocity::medium:
        return StrokeAdapter::tr("Medium");
    case Velocity::hard:
        return StrokeAdapter::tr("Hard");
    }
    return {};
}

} // namespace

void StrokeAdapter::read() {
    const bool release = SoundEdit(model_).isRelease();
    std::size_t longest = 0;
    for (const Velocity velocity : allVelocities) {
        longest = std::max(longest, model_.editorWave(velocity).size());
    }
    QVariantList rows;
    for (const Velocity velocity : allVelocities) {
        if (release && velocity != Velocity::medium) {
            continue;
        }
        const std::span<const float> samples = model_.editorWave(velocity);
        // All on one scale of time, so that lengths can be compared by eye.
        const std::size_t share =
            longest == 0 ? 0 : (strips * samples.size() + longest - 1) / longest;
        rows.append(QVariantMap{
            {"value", static_cast<int>(velocity)},
            {"text", release ? tr("Release") : nameOf(velocity)},
            {"strips", strokePicture(samples, share)},
            {"most", static_cast<int>(strips)},
            {"millis", static_cast<double>(samples.size()) * 1000.0 / DSP::sampleRate},
        });
    }
    rows_.show(rows);
}

void StrokeAdapter::refreshRendering() {
    rendering_ = model_.rendering();
}

void StrokeAdapter::play(int velocity) {
    const int last = static_cast<int>(allVelocities.size()) - 1;
    const auto struck = static_cast<std::size_t>(std::clamp(velocity, 0, last));
    model_.sound().audition(model_.editorWave(allVelocities.at(struck)), 1.0F);
}

} // namespace vornic
