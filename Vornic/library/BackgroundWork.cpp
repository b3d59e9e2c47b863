#include "Vornic/library/BackgroundWork.h"

#include "VornicCore/base/ThisThread.h"

#include <utility>

namespace vornic {

void BackgroundWork::start(Work work) {
    cancel();
    running_ = true;
    const auto place = threads_.emplace(threads_.end());
    // Both belong to the main thread, on which this object lives and ends.
    auto ended = lifetime_.guard([this, place] { threads_.erase(place); });
    auto done = current_.guard([this](const Finish& finish) {
        // What is called may start the next work.
        running_ = false;
        finish();
    });
    *place =
        std::jthread([&scheduler = scheduler_, work = std::move(work), ended = std::move(ended),
                      done = std::move(done)](const std::stop_token& stop) {
            ThisThread::setName("vornic.work");
            scheduler.post([finish = work(stop), ended, done] {
                ended();
                done(finish);
            });
        });
}

void BackgroundWork::cancel() {
    running_ = false;
    current_.renew();
    for (std::jthread& thread : threads_) {
        thread.request_stop();
    }
}

} // namespace vornic
