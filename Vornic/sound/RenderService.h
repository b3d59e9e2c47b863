#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/Scheduler.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/BuildBoard.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <thread>

namespace vornic {

/// What a board is rendered for, by rank: of those that wait, the first one goes first.
enum class RenderPurpose : std::uint8_t { played, compared, lookedAt };

/// Renders boards in the background, one at a time. Each purpose has one request at most: edits in
/// quick succession render once, and a result that a newer request for the same purpose has
/// overtaken is dropped. Thread: main, where nothing else is said.
class RenderService {
  public:
    /// The new board and how long it took to render, in seconds.
    using Done = std::function<void(RenderedBoard board, double seconds)>;
    /// What renders a board; any thread.
    using Build = std::function<RenderedBoard(const Board& board, const SampleSource& library)>;

    /// Both must outlive the service. Tests may bring a `builder` of their own.
    RenderService(const Clock& clock, Scheduler& scheduler, Build builder = build);
    RenderService(const RenderService&) = delete;
    RenderService& operator=(const RenderService&) = delete;
    /// Waits for a build under way; delivers nothing any more.
    ~RenderService();

    /// Renders `board` as it is now, after `delay`. `done` is called on the main thread, unless
    /// another request for that purpose comes first. `library` is kept until the build has ended.
    void render(Board board, std::shared_ptr<const SampleSource> library,
                std::chrono::milliseconds delay, Done done,
                RenderPurpose purpose = RenderPurpose::played);

    /// Nobody waits for a board for that purpose any more.
    void drop(RenderPurpose purpose);

    /// Renders on all cores without waiting for its turn, and counts for no request. Blocks.
    /// Thread: any.
    static RenderedBoard build(const Board& board, const SampleSource& library);

  private:
    static constexpr std::size_t purposes = 3;
    template <typename Item>
    using ByPurpose = std::array<Item, purposes>;

    struct Request;
    class Queue;

    Scheduler& scheduler_;
    std::shared_ptr<Queue> queue_;
    ByPurpose<std::unique_ptr<Scheduler::Timer>> pending_;
    std::jthread worker_;
};

} // namespace vornic
