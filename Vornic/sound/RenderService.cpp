#include "Vornic/sound/RenderService.h"

#include "VornicCore/base/FreeMemory.h"
#include "VornicCore/base/ThisThread.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

namespace vornic {

namespace {

constexpr std::size_t index(RenderPurpose purpose) {
    return static_cast<std::size_t>(purpose);
}

} // namespace

struct RenderService::Request {
    RenderPurpose purpose;
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

    /// Starts a new generation: older requests for that purpose deliver nothing any more, and one
    /// that still waits for its turn is not even built. Main thread.
    std::uint64_t overtake(RenderPurpose purpose) {
        const std::scoped_lock lock(mutex_);
        waiting_[index(purpose)].reset();
        return ++generations_[index(purpose)];
    }

    /// Hands over a request whose delay has passed. Main thread.
    void submit(Request request) {
        {
            const std::scoped_lock lock(mutex_);
            waiting_[index(request.purpose)] = std::move(request);
        }
        wake_.notify_one();
    }

    /// Builds one request after the other until stopped. Render thread.
    void work(const std::stop_token& stop) {
        // A key goes before a board, also on a machine with one core. Helpers inherit both.
        ThisThread::setName("vornic.render");
        ThisThread::stepBack();
        while (std::optional<Request> request = take(stop)) {
            const std::uint64_t begin = clock_.nanos();
            RenderedBoard board = builder_(request->board, *request->library);
            const double seconds = static_cast<double>(clock_.nanos() - begin) / 1e9;
            scheduler_.post([queue = shared_from_this(), board = std::move(board), seconds,
                             purpose = request->purpose, generation = request->generation,
                             done = std::move(request->done)]() mutable {
                if (generation == queue->generations_[index(purpose)]) {
                    done(std::move(board), seconds);
                }
            });
            // What rendering took besides the bank, and the recordings of the board before.
            request->library->forgetUnused();
            returnFreeMemory();
        }
    }

  private:
    std::optional<Request> take(const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        const auto first = [&] {
            return std::ranges::find_if(waiting_, &std::optional<Request>::has_value);
        };
        wake_.wait(lock, stop, [&] { return first() != waiting_.end(); });
        if (stop.stop_requested()) {
            return std::nullopt;
        }
        return std::exchange(*first(), std::nullopt);
    }

    const Clock& clock_;
    Scheduler& scheduler_;
    Build builder_;

    ByPurpose<std::uint64_t> generations_{}; // main thread

    std::mutex mutex_;
    std::condition_variable_any wake_;
    ByPurpose<std::optional<Request>> waiting_; // guarded by mutex_
};

RenderService::RenderService(const Clock& clock, Scheduler& scheduler, Build builder)
    : scheduler_(scheduler), queue_(std::make_shared<Queue>(clock, scheduler, std::move(builder))),
      worker_([queue = queue_](const std::stop_token& stop) { queue->work(stop); }) {}

RenderService::~RenderService() {
    for (std::size_t purpose = 0; purpose < purposes; ++purpose) {
        drop(static_cast<RenderPurpose>(purpose));
    }
}

void RenderService::render(Board board, std::shared_ptr<const SampleSource> library,
                           std::chrono::milliseconds delay, Done done, RenderPurpose purpose) {
    pending_[index(purpose)].reset();
    const std::uint64_t generation = queue_->overtake(purpose);
    // The timer's work may be copied, the request need not.
    auto request = std::make_shared<Request>(Request{.purpose = purpose,
                                                     .board = std::move(board),
                                                     .library = std::move(library),
                                                     .done = std::move(done),
                                                     .generation = generation});
    pending_[index(purpose)] =
        scheduler_.after(delay, [queue = queue_, request = std::move(request)] {
            queue->submit(std::move(*request));
        });
}

void RenderService::drop(RenderPurpose purpose) {
    pending_[index(purpose)].reset();
    queue_->overtake(purpose);
}

RenderedBoard RenderService::build(const Board& board, const SampleSource& library) {
    return buildBoard(board, library, std::max(std::thread::hardware_concurrency(), 1U));
}

} // namespace vornic
