#include "Vornic/recording/OwnSound.h"

#include "VornicCore/base/Uuid.h"
#include "VornicCore/board/EditBoard.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vornic {

namespace {

constexpr const char* colour = "#8E8E93";

StrokeSpec strokeOf(const std::vector<SampleInfo>& samples, LayerPart part) {
    std::vector<std::string> ids;
    std::ranges::transform(samples, std::back_inserter(ids), &SampleInfo::id);
    return EditBoard::plainStroke(part, std::move(ids));
}

} // namespace

SoundSpec soundOf(const FinishedImport& finished) {
    SoundSpec sound;
    sound.id = Uuid::random().text();
    sound.name = finished.name;
    sound.colorHex = colour;
    sound.press = strokeOf(finished.samples, LayerPart::bottomOut);
    if (!finished.releases.empty()) {
        sound.release = strokeOf(finished.releases, LayerPart::topOut);
    }
    return sound;
}

} // namespace vornic
