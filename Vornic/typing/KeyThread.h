#pragma once

#include "Vornic/ports/EventSource.h"

#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vornic {

/// The thread on which keys are read and played. It waits for event sources and for posted work and
/// runs everything here, one thing at a time, so that nothing that the interface thread does can
/// delay a key. When no key has come for half a second, what is left of the last ones is
/// overwritten. It takes the lowest real-time priority where the system grants that, and does
/// without where not. Thread: main, where nothing else is said.
class KeyThread {
  public:
    KeyThread();
    KeyThread(const KeyThread&) = delete;
    KeyThread& operator=(const KeyThread&) = delete;

    /// Runs what was posted before, then ends the thread.
    ~KeyThread();

    /// Runs `work` on the key thread, after everything posted before. Thread: any.
    void post(std::function<void()> work);

    /// Delivers what waits in `source` already, and from then on whatever comes, until `unwatch` or
    /// the end of this object. The source may lose its descriptor and get another meanwhile.
    /// Thread: key.
    void watch(EventSource& source);

    /// Stops watching; harmless for a source that is not watched. Thread: key.
    void unwatch(EventSource& source);

  private:
    void run();
    void waitAndDispatch();
    bool forget();
    void runPosted();

    int wakeRead_ = -1;
    int wakeWrite_ = -1;
    std::vector<EventSource*> sources_; // key thread
    bool stopping_ = false;             // key thread
    bool hasHeard_ = false;             // key thread; since it last forgot
    std::mutex mutex_;                  // guards posted_
    std::vector<std::function<void()>> posted_;
    std::thread thread_;
};

} // namespace vornic
