#pragma once

#include "Vornic/ports/EventSource.h"

#include <QSocketNotifier>
#include <memory>

namespace vornic {

/// Delivers the events of a source on the toolkit's main thread, the waiting ones at once. The
/// source outlives it. Thread: main.
class QtWatch {
  public:
    explicit QtWatch(EventSource& source);
    QtWatch(const QtWatch&) = delete;
    QtWatch& operator=(const QtWatch&) = delete;

  private:
    void deliver();

    EventSource& source_;
    std::unique_ptr<QSocketNotifier> notifier_; // null: nothing to wait for
};

} // namespace vornic
