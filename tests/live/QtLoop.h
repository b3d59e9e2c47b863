#pragma once

#include "tests/support/WaitFor.h"

#include <QCoreApplication>
#include <functional>

namespace vornic {

/// A main thread with Qt's event loop, which a test runs while it waits.
class QtLoop {
  public:
    /// Waits until `condition` holds while events are delivered; false when it did not in time.
    bool waitFor(const std::function<bool()>& condition,
                 std::chrono::milliseconds limit = std::chrono::seconds(10)) const {
        return vornic::waitFor(
            [&condition] {
                QCoreApplication::processEvents();
                return condition();
            },
            limit);
    }

  private:
    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{count_, arguments_};
};

} // namespace vornic
