#include "Vornic/recording/ImportSession.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/strokes/Slicer.h"

#include <utility>

namespace vornic {

std::string messageWithoutStrokes(std::size_t found) {
    return found == 0 ? ImportMessages::noStrokes : ImportMessages::noGoodStrokes;
}

SessionOutcome makeSession(std::span<const float> samples, std::string name,
                           std::span<const Gap> gaps) {
    std::vector<Stroke> found = Slicer::strokes(samples, DSP::sampleRate);
    for (Stroke& stroke : found) {
        stroke.clean = stroke.clean && !isTorn(stroke, DSP::sampleRate, gaps);
    }
    ImportSession session;
    session.strokes = Slicer::best(found, Slicer::offeredStrokes, Slicer::leastSnrDb);
    if (session.strokes.empty()) {
        return {std::nullopt, messageWithoutStrokes(found.size()), std::nullopt};
    }
    session.id = Uuid::random();
    session.name = std::move(name);
    for (std::size_t i = 0; i < session.strokes.size(); ++i) {
        session.selected.insert(i);
    }
    session.foundTotal = static_cast<std::int64_t>(found.size());
    StrokeCuts cuts(samples, DSP::sampleRate, session.strokes);
    return {std::move(session), {}, std::move(cuts)};
}

} // namespace vornic
