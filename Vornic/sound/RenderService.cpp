#include "Vornic/sound/RenderService.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

namespace vornic {

struct RenderService::Request {
    Board board;
    std::shared_ptr<const SampleSource> library;
    Done done;
    std::uint64_t generation;
};

/// What main thread and render thread share. Posted deliveries hold it too: they may still wait
/// when the service has gone.
class RenderService::Queue : public std::enable_shared_from_this<RenderService::Queue> {
  public:
    Queue(const Clock& clock, Scheduler& scheduler, Build builder)
        : clock_(clock), scheduler_(scheduler), builder_(std::move(builder)) {}

    /// Starts a new generation: older requests deliver nothing any more, and one that still waits
    /// for its turn is not even built. Main thread.
    std::uint64_t overtake() {
        const std::scoped_lock lock(mutex_);
        waiting_.reset();
        return ++generation_;
    }

    /// Hands over a request whose delay has passed. Main thread.
    void submit(Request request) {
        {
            const std::scoped_lock lock(mutex_);
            waiting_ = std::move(request);
        }
        wake_.notify_one();
    }

    /// Builds one request after the other until stopped. Render thread.
    void work(const std::stop_token& stop) {
        while (std::optional<Request> request = take(stop)) {
            const std::uint64_t begin = clock_.nanos();
            RenderedBoard board = builder_(request->board, *request->library);
            const double seconds = static_cast<double>(clock_.nanos() - begin) / 1e9;
            scheduler_.post([queue = shared_from_this(), board = std::move(board), seconds,
                             generation = request->generation,
                             done = std::move(request->done)]() mutable {
                if (generation == queue->generation_) {
                    done(std::move(board), seconds);
                }
            });
        }
    }

  private:
    std::optional<Request> take(const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        wake_.wait(lock, stop, [&] { return waiting_.has_value(); });
        if (stop.stop_requested()) {
            return std::nullopt;
        }
        return std::exchange(waiting_, std::nullopt);
    }

    const Clock& clock_;
    Scheduler& scheduler_;
    Build builder_;

    std::uint64_t generation_ = 0; // main thread

    std::mutex mutex_;
    std::condition_variable_any wake_;
    std::optional<Request> waiting_; // guarded by mutex_
};

RenderService::RenderService(const Clock& clock, Scheduler& scheduler, Build builder)
    : scheduler_(scheduler), queue_(std::make_shared<Queue>(clock, scheduler, std::move(builder))),
      worker_([queue = queue_](const std::stop_token& stop) { queue->work(stop); }) {}

RenderService::~RenderService() {
    queue_->overtake();
}

void RenderService::render(Board board, std::shared_ptr<const SampleSource> library,
                           std::chrono::milliseconds delay, Done done) {
    pending_.reset();
    const std::uint64_t generation = queue_->overtake();
    // The timer's work may be copied, the request need not.
    auto request = std::make_shared<Request>(Request{.board = std::move(board),
                                                     .library = std::move(library),
                                                     .done = std::move(done),
                                                     .generation = generation});
    pending_ = scheduler_.after(delay, [queue = queue_, request = std::move(request)] {
        queue->submit(std::move(*request));
    });
}

RenderedBoard RenderService::build(const Board& board, const SampleSource& library) {
    return buildBoard(board, library, std::max(std::thread::hardware_concurrency(), 1U));
}

} // namespace vornic
