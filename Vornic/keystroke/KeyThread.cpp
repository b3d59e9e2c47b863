#include "Vornic/keystroke/KeyThread.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

void makeNonBlocking(int descriptor) {
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

} // namespace

KeyThread::KeyThread() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        throw std::system_error(errno, std::generic_category(), "the key thread's pipe");
    }
    wakeRead_ = ends[0];
    wakeWrite_ = ends[1];
    makeNonBlocking(wakeRead_);
    makeNonBlocking(wakeWrite_);
    thread_ = std::thread([this] { run(); });
}

KeyThread::~KeyThread() {
    post([this] { stopping_ = true; });
    thread_.join();
    ::close(wakeRead_);
    ::close(wakeWrite_);
}

void KeyThread::post(std::function<void()> work) {
    bool wake = false;
    {
        const std::scoped_lock lock(mutex_);
        wake = posted_.empty();
        posted_.push_back(std::move(work));
    }
    if (wake) {
        // A full pipe wakes as well as one more byte would.
        [[maybe_unused]] const auto written = ::write(wakeWrite_, "", 1);
    }
}

void KeyThread::watch(int descriptor, std::function<void()> onReadable) {
    watched_[descriptor] = std::move(onReadable);
}

void KeyThread::unwatch(int descriptor) {
    watched_.erase(descriptor);
}

void KeyThread::runPosted() {
    std::array<char, 64> bytes{};
    while (::read(wakeRead_, bytes.data(), bytes.size()) > 0) {
    }
    std::vector<std::function<void()>> work;
    {
        const std::scoped_lock lock(mutex_);
        work.swap(posted_);
    }
    for (const auto& item : work) {
        item();
    }
}

void KeyThread::run() {
    std::vector<pollfd> waits;
    while (!stopping_) {
        waits.assign(1, {wakeRead_, POLLIN, 0});
        for (const auto& [descriptor, onReadable] : watched_) {
            waits.push_back({descriptor, POLLIN, 0});
        }
        if (::poll(waits.data(), waits.size(), -1) < 0) {
            continue; // interrupted
        }
        // Keys before anything else: posted work can wait, a key cannot.
        for (std::size_t index = 1; index < waits.size(); ++index) {
            if (waits[index].revents == 0) {
                continue;
            }
            // An earlier one may have unwatched it; and a copy, since it may unwatch itself.
            const auto found = watched_.find(waits[index].fd);
            if (found != watched_.end()) {
                const auto onReadable = found->second;
                onReadable();
            }
        }
        if (waits[0].revents != 0) {
            runPosted();
        }
    }
}

} // namespace vornic
