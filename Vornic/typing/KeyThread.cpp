#include "Vornic/typing/KeyThread.h"

#include "VornicCore/base/ThisThread.h"
#include "VornicCore/realtime/Fatal.h"
#include "VornicCore/realtime/Forget.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

/// Long enough that nobody who types waits for it, and no longer than a key may be remembered.
constexpr int quietMillis = 500;

void prepare(int descriptor) {
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

/// A key waits for nobody who computes. The lowest real-time priority is above all ordinary threads
/// and below those that play sound.
void raisePriority() {
    sched_param parameters{};
    parameters.sched_priority = sched_get_priority_min(SCHED_RR);
    int policy = SCHED_RR;
#ifdef SCHED_RESET_ON_FORK
    // Threads that libraries start from here stay ordinary ones.
    policy |= SCHED_RESET_ON_FORK;
#endif
    // Refused to most users on most systems, and the thread does its work all the same.
    pthread_setschedparam(pthread_self(), policy, &parameters);
}

} // namespace

KeyThread::KeyThread() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        throw std::system_error(errno, std::generic_category(), "the key thread's pipe");
    }
    wakeRead_ = ends[0];
    wakeWrite_ = ends[1];
    prepare(wakeRead_);
    prepare(wakeWrite_);
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
        // One byte for each time that the list fills: the pipe cannot overflow.
        const char byte = 0;
        while (::write(wakeWrite_, &byte, 1) < 0 && errno == EINTR) {
        }
    }
}

void KeyThread::watch(EventSource& source) {
    if (std::ranges::find(sources_, &source) == sources_.end()) {
        sources_.push_back(&source);
        source.dispatch();
    }
}

void KeyThread::unwatch(EventSource& source) {
    std::erase(sources_, &source);
}

void KeyThread::run() {
    ThisThread::setName("vornic.keys");
    raisePriority();
    while (!stopping_) {
        waitAndDispatch();
    }
}

void KeyThread::waitAndDispatch() {
    // A copy, since sources may be watched and unwatched by what is dispatched.
    const std::vector<EventSource*> sources = sources_;
    std::vector<pollfd> waits{{.fd = wakeRead_, .events = POLLIN, .revents = 0}};
    for (const EventSource* const source : sources) {
        // Descriptors below zero are ignored, as poll says.
        waits.push_back({.fd = source->fileDescriptor(), .events = POLLIN, .revents = 0});
    }
    const int ready = ::poll(waits.data(), waits.size(), hasHeard_ ? quietMillis : -1);
    if (ready < 0) {
        require(errno == EINTR || errno == EAGAIN, "the key thread cannot wait");
        return;
    }
    if (ready == 0) {
        hasHeard_ = !forget();
        return;
    }
    for (std::size_t index = 0; index < sources.size(); ++index) {
        const bool watched = std::ranges::find(sources_, sources[index]) != sources_.end();
        if (waits[index + 1].revents != 0 && watched) {
            sources[index]->dispatch();
            hasHeard_ = true;
        }
    }
    // Keys first: posted work can wait.
    if (waits.front().revents != 0) {
        runPosted();
    }
}

bool KeyThread::forget() {
    bool all = true;
    for (EventSource* const source : sources_) {
        all = source->forget() && all;
    }
    forgetStack();
    return all;
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

} // namespace vornic
