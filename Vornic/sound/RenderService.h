#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/Scheduler.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/BuildBoard.h"

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace vornic {

/// Renders boards in the background, one at a time. Edits in quick succession render once, and a
/// result that a newer request has overtaken is dropped. Main thread only, unless noted.
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
    /// another request comes first. `library` is kept until the build has ended.
    void render(Board board, std::shared_ptr<const SampleSource> library,
                std::chrono::milliseconds delay, Done done);

    /// Renders on all cores without waiting for its turn, and counts for no request: for previews
    /// and references. Blocks; any thread.
    static RenderedBoard build(const Board& board, const SampleSource& library);

  private:
    struct Request;
    class Queue;

    Scheduler& scheduler_;
    std::shared_ptr<Queue> queue_;
    std::unique_ptr<Scheduler::Timer> pending_;
    std::jthread worker_;
};

} // namespace vornic
