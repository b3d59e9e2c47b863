#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace vornic {

/// Turns an interrupt, a hang-up or a request to terminate into one call of `quit` on the main
/// thread, so that the program ends in order. One per process. Thread: main.
class QuitSignals {
  public:
    /// Keeps the signals from ending the program. To be called before any thread starts, so that
    /// every thread inherits it and the signals only ever arrive here.
    static void block();

    explicit QuitSignals(std::function<void()> quit);
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;
    ~QuitSignals();

  private:
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace vornic
