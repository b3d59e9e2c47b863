#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace vornic {

/// The thread on which keys are read and played. It waits for file descriptors and for posted work
/// and runs everything in order, one thing at a time. The destructor runs what was posted before it
/// and ends the thread.
class KeyThread {
  public:
    KeyThread();
    KeyThread(const KeyThread&) = delete;
    KeyThread& operator=(const KeyThread&) = delete;
    ~KeyThread();

    /// Runs `work` on the key thread, after everything posted before. Any thread.
    void post(std::function<void()> work);

    /// Calls `onReadable` whenever `descriptor` can be read or has failed. Key thread.
    void watch(int descriptor, std::function<void()> onReadable);

    /// Stops watching; harmless for a descriptor that is not watched. Key thread.
    void unwatch(int descriptor);

  private:
    void run();
    void runPosted();

    int wakeRead_ = -1;
    int wakeWrite_ = -1;
    std::map<int, std::function<void()>> watched_; // key thread
    bool stopping_ = false;                        // key thread
    std::mutex mutex_;                             // guards posted_
    std::vector<std::function<void()>> posted_;
    std::thread thread_;
};

} // namespace vornic
