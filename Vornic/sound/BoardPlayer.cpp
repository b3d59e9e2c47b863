#include "Vornic/sound/BoardPlayer.h"

#include "VornicCore/render/BoardLoudness.h"

#include <utility>

namespace vornic {

BoardPlayer::BoardPlayer(const Clock& clock, Scheduler& scheduler,
                         std::shared_ptr<const SampleSource> library, RenderService::Build builder)
    : clock_(clock), builder_(builder), library_(std::move(library)),
      renderer_(clock, scheduler, std::move(builder)) {}

void BoardPlayer::choose(const Board& board) {
    chosen_ = true;
    render(board, std::chrono::milliseconds(0));
}

void BoardPlayer::edit(const Board& board, std::chrono::milliseconds delay) {
    if (!chosen_ && current_.played.bank) {
        current_.played.board = std::make_shared<const Board>(board);
        current_.loudness.reset();
        play();
    }
    render(board, delay);
}

void BoardPlayer::render(const Board& board, std::chrono::milliseconds delay) {
    const auto wanted = std::make_shared<const Board>(board);
    rendering_ = true;
    renderer_.render(board, library_, delay,
                     [this, wanted](const RenderedBoard& result, double seconds) {
                         rendered(wanted, result, seconds);
                     });
    // The current board is about to differ from the reference, whose own bank may never come by
    // that way any more.
    const PlayedBoard& reference = reference_.played;
    if (reference.board && !reference.bank && !(board == *reference.board)) {
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

void BoardPlayer::rendered(const std::shared_ptr<const Board>& board, const RenderedBoard& result,
                           double seconds) {
    report(result);
    rendering_ = false;
    chosen_ = false;
    lastRenderSeconds_ = seconds;
    current_ = {.played = {.board = board, .rendered = board, .bank = result.bank}};
    if (reference_.played.board && !reference_.played.bank && *reference_.played.board == *board) {
        reference_.played.bank = result.bank;
    }
    play();
}

void BoardPlayer::setReference(const Board& board) {
    comparing_ = false;
    renderer_.drop(RenderPurpose::compared);
    const auto fresh = std::make_shared<const Board>(board);
    reference_ = {.played = {.board = fresh, .rendered = fresh, .bank = nullptr}};
    if (current_.played.bank && *current_.played.rendered == board) {
        reference_.played.bank = current_.played.bank;
    }
    play();
}

void BoardPlayer::renderReference() {
    renderer_.render(
        *reference_.played.board, library_, std::chrono::milliseconds(0),
        [this, board = reference_.played.board](const RenderedBoard& result, double /*seconds*/) {
            if (board == reference_.played.board && !reference_.played.bank) {
                reference_.played.bank = result.bank;
                play();
            }
        },
        RenderPurpose::compared);
}

void BoardPlayer::compare(bool on) {
    if (comparing_ == on || !reference_.played.board) {
        return;
    }
    comparing_ = on;
    if (on && !reference_.played.bank) {
        renderReference();
    }
    play();
}

void BoardPlayer::tryOut(const Board& board) {
    const auto tried = std::make_shared<const Board>(board);
    trial_ = {.played = {.board = tried, .rendered = tried, .bank = nullptr}};
    renderer_.render(
        board, library_, std::chrono::milliseconds(0),
        [this, tried](const RenderedBoard& result, double /*seconds*/) {
            if (trial_ && trial_->played.board == tried) {
                report(result);
                trial_->played.bank = result.bank;
                play();
            }
        },
        RenderPurpose::lookedAt);
}

void BoardPlayer::endTrial() {
    if (trial_) {
        trial_.reset();
        renderer_.drop(RenderPurpose::lookedAt);
        play();
    }
}

void BoardPlayer::play() {
    if (trial_ && trial_->played.bank) {
        onPlay(trial_->played);
    } else if (comparing_ && reference_.played.bank) {
        PlayedBoard matched = reference_.played;
        matched.gain = matchingGain(loudness(reference_), loudness(current_));
        onPlay(matched);
    } else if (current_.played.bank) {
        onPlay(current_.played);
    }
}

std::optional<double> BoardPlayer::loudness(Version& version) {
    if (!version.played.bank) {
        return std::nullopt;
    }
    if (!version.loudness) {
        version.loudness = boardLoudness(*version.played.board, *version.played.bank);
    }
    return *version.loudness;
}

std::span<const float> BoardPlayer::stroke(std::string_view key) const {
    const auto pool =
        current_.played.bank ? current_.played.bank->pool(key) : std::span<const Sample>();
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
