#include "VornicCore/render/RenderJob.h"

#include <string>

namespace vornic {

RenderJob::RenderJob(const SoundSpec& ofSound, const Board& board, bool stabilised, bool ofRelease)
    : sound(ofSound), build(board.build), recordedBuild(board.recordedBuild),
      stabs(stabilised ? std::optional(board.stabs) : std::nullopt),
      boardCharacter(board.character), variation(board.feel.variation), isRelease(ofRelease) {}

const StrokeSpec* RenderJob::stroke() const {
    if (!isRelease) {
        return &sound.press;
    }
    return sound.release ? &*sound.release : nullptr;
}

} // namespace vornic

std::size_t std::hash<vornic::RenderJob>::operator()(const vornic::RenderJob& job) const {
    // The fields in which the jobs of one board differ.
    const std::size_t condition = (job.isRelease ? 2U : 0U) + (job.stabs ? 1U : 0U);
    return std::hash<std::string>{}(job.sound.id) * 4 + condition;
}
