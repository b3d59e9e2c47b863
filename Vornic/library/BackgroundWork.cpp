#include "Vornic/library/BackgroundWork.h"

#include "VornicCore/base/ThisThread.h"

#include <utility>

namespace vornic {

void BackgroundWork::start(Work work) {
    cancel();
    current_ = std::make_shared<int>();
    const auto place = threads_.emplace(threads_.end());
    *place = std::jthread([this, place, work = std::move(work), current = std::weak_ptr(current_),
                           alive = std::weak_ptr(alive_)](const std::stop_token& stop) {
        // `this` is not touched here: only on the main thread, while it is known to live.
        ThisThread::setName("vornic.work");
        Finish finish = work(stop);
        scheduler_.post([this, place, finish = std::move(finish), current, alive] {
            if (alive.expired()) {
                return;
            }
            threads_.erase(place);
            if (!current.expired()) {
                // What is called may start the next work.
                current_.reset();
                finish();
            }
        });
    });
}

void BackgroundWork::cancel() {
    current_.reset();
    for (std::jthread& thread : threads_) {
        thread.request_stop();
    }
}

} // namespace vornic
