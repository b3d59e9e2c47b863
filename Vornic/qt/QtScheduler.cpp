#include "Vornic/qt/QtScheduler.h"

#include <QCoreApplication>
#include <QTimer>
#include <utility>

namespace vornic {

namespace {

class QtTimer final : public Scheduler::Timer {
  public:
    QtTimer(std::chrono::milliseconds interval, bool once, std::function<void()> work) {
        timer_.setSingleShot(once);
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout(std::move(work));
        timer_.start(interval);
    }

  private:
    QTimer timer_;
};

} // namespace

void QtScheduler::post(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

std::unique_ptr<Scheduler::Timer> QtScheduler::after(std::chrono::milliseconds delay,
                                                     std::function<void()> work) {
    return std::make_unique<QtTimer>(delay, true, std::move(work));
}

std::unique_ptr<Scheduler::Timer> QtScheduler::every(std::chrono::milliseconds interval,
                                                     std::function<void()> work) {
    return std::make_unique<QtTimer>(interval, false, std::move(work));
}

} // namespace vornic
