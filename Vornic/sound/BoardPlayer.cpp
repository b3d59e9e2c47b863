#include "Vornic/sound/BoardPlayer.h"

#include "VornicCore/render/BoardLoudness.h"

#include <utility>

namespace vornic {

BoardPlayer::BoardPlayer(const Clock& clock, Scheduler& scheduler,
                         std::shared_ptr<const SampleSource> library, RenderService::Build builder)
    : clock_(clock), builder_(builder), library_(std::move(library)),
      renderer_(clock, scheduler, builder), referenceRenderer_(clock, scheduler, builder),
      trialRenderer_(clock, scheduler, std::move(builder)) {}

void BoardPlayer::render(const Board& board, std::chrono::milliseconds delay) {
    const auto wanted = std::make_shared<const Board>(board);
    rendering_ = true;
    renderer_.render(board, library_, delay,
                     [this, wanted](const RenderedBoard& result, double seconds) {
                         rendered(wanted, result, seconds);
                     });
    // The current board is about to differ from the reference, whose own bank may never come by
    // that way any more.
    if (reference_.board && !reference_.bank && !(board == *reference_.board)) {
        renderReference();
    }
}

BoardPlayer::FullRender BoardPlayer::renderNow(const Board& board) {
    const double start = clock_.seconds();
    const RenderedBoard result = builder_(board, *library_);
    const double seconds = clock_.seconds() - start;
    rendered(std::make_shared<const Board>(board), result, seconds);
    return {seconds, result.bank->pools().size()};
}

void BoardPlayer::rendered(std::shared_ptr<const Board> board, const RenderedBoard& result,
                           double seconds) {
    report(result);
    rendering_ = false;
    lastRenderSeconds_ = seconds;
    current_ = {.board = std::move(board), .bank = result.bank};
    if (reference_.board && !reference_.bank && *reference_.board == *current_.board) {
        reference_.bank = current_.bank;
    }
    play();
}

void BoardPlayer::setReference(const Board& board) {
    comparing_ = false;
    reference_ = {.board = std::make_shared<const Board>(board), .bank = nullptr};
    if (current_.board && *current_.board == board) {
        reference_.bank = current_.bank;
    }
    play();
}

void BoardPlayer::renderReference() {
    referenceRenderer_.render(
        *reference_.board, library_, std::chrono::milliseconds(0),
        [this, board = reference_.board](const RenderedBoard& result, double /*seconds*/) {
            if (board == reference_.board && !reference_.bank) {
                reference_.bank = result.bank;
                play();
            }
        });
}

void BoardPlayer::compare(bool on) {
    if (comparing_ == on || !reference_.board) {
        return;
    }
    comparing_ = on;
    if (on && !reference_.bank) {
        renderReference();
    }
    play();
}

void BoardPlayer::tryOut(const Board& board) {
    trial_ = {.board = std::make_shared<const Board>(board), .bank = nullptr};
    trialRenderer_.render(
        board, library_, std::chrono::milliseconds(0),
        [this, tried = trial_->board](const RenderedBoard& result, double /*seconds*/) {
            if (trial_ && trial_->board == tried) {
                report(result);
                trial_->bank = result.bank;
                play();
            }
        });
}

void BoardPlayer::endTrial() {
    if (trial_) {
        trial_.reset();
        play();
    }
}

void BoardPlayer::play() {
    if (trial_ && trial_->bank) {
        onPlay(trial_->board, trial_->bank, 1.0);
    } else if (comparing_ && reference_.bank) {
        onPlay(reference_.board, reference_.bank,
               matchingGain(loudness(reference_), loudness(current_)));
    } else if (current_.bank) {
        onPlay(current_.board, current_.bank, 1.0);
    }
}

std::optional<double> BoardPlayer::loudness(Version& version) {
    if (!version.bank) {
        return std::nullopt;
    }
    if (!version.loudness) {
        version.loudness = boardLoudness(*version.board, *version.bank);
    }
    return *version.loudness;
}

std::span<const float> BoardPlayer::stroke(std::string_view key) const {
    const auto pool = current_.bank ? current_.bank->pool(key) : std::span<const Sample>();
    return pool.empty()
               ? std::span<const float>()
               : std::span(pool.front().data, static_cast<std::size_t>(pool.front().length));
}

void BoardPlayer::report(const RenderedBoard& result) const {
    for (const std::string& message : result.messages) {
        onMessage(message);
    }
}

} // namespace vornic
