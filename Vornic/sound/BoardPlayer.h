#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/sound/PlayedBoard.h"
#include "Vornic/sound/RenderService.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vornic {

/// Renders boards in the background and says what is to play: the current board as last rendered;
/// while two versions are compared, the reference, which stays rendered for that; while a board is
/// tried out, that one. Thread: main.
class BoardPlayer {
  public:
    /// All outlive it; `library` is shared with renders under way.
    BoardPlayer(const Clock& clock, Scheduler& scheduler,
                std::shared_ptr<const SampleSource> library,
                RenderService::Build builder = RenderService::build);

    /// What keys play from now on. The gain makes the reference as loud as the current board, which
    /// plays as it is.
    std::function<void(const PlayedBoard&)> onPlay = [](const PlayedBoard&) {};
    /// A value of a board could not be rendered as it stands.
    std::function<void(const std::string&)> onMessage = [](const std::string&) {};

    /// Makes `board` the current one and renders it; until that is done the one before plays on.
    void choose(const Board& board);

    /// The current board after an edit. What needs no rendering is heard at once; the board is
    /// rendered after `delay`, unless another edit comes first.
    void edit(const Board& board, std::chrono::milliseconds delay);

    /// Renders the current board here and now; how that went. The caller waits.
    struct FullRender {
        double seconds = 0;
        std::size_t pools = 0;
    };
    FullRender renderNow(const Board& board);

    /// Makes `board` the version that others are compared with. Its bank is that of the current
    /// board when they are equal; else it is rendered on its own.
    void setReference(const Board& board);

    /// Whether the reference plays instead of the current board; at once if it is rendered, else as
    /// soon as it is.
    void compare(bool on);
    bool comparing() const { return comparing_; }

    /// Lets `board` play instead of both, as soon as it is rendered, until the trial ends.
    void tryOut(const Board& board);
    void endTrial();

    /// The first variation under that key of the bank as the current board was last rendered; empty
    /// where there is none. Valid until the next render lands.
    std::span<const float> stroke(std::string_view key) const;

    /// Whether the current board is yet to be rendered as it stands.
    bool rendering() const { return rendering_; }

    /// How long the last render of the current board took; absent before the first has ended.
    std::optional<double> lastRenderSeconds() const { return lastRenderSeconds_; }

  private:
    struct Version {
        PlayedBoard played; // without a bank until it is rendered
        // Measured when it is first compared; none for a silent one.
        std::optional<std::optional<double>> loudness = std::nullopt;
    };

    void render(const Board& board, std::chrono::milliseconds delay);
    void rendered(const std::shared_ptr<const Board>& board, const RenderedBoard& result,
                  double seconds);
    void renderReference();
    void play();
    static std::optional<double> loudness(Version& version);
    void report(const RenderedBoard& result) const;

    const Clock& clock_;
    RenderService::Build builder_;
    std::shared_ptr<const SampleSource> library_;
    Version current_;
    /// Another board is chosen, and what is current is still the one before.
    bool chosen_ = false;
    Version reference_;
    std::optional<Version> trial_;
    bool comparing_ = false;
    bool rendering_ = false;
    std::optional<double> lastRenderSeconds_;
    RenderService renderer_;
};

} // namespace vornic
