#include "Vornic/platform/qt/QuitSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace vornic {

QuitSignals::QuitSignals(std::function<void()> quit) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    // Blocked before any other thread starts, so that every thread inherits the mask and the
    // signals only ever arrive through the descriptor.
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this, quit = std::move(quit)] {
        signalfd_siginfo info{};
        if (::read(descriptor_, &info, sizeof info) == sizeof info) {
            quit();
        }
    });
}

QuitSignals::~QuitSignals() {
    notifier_.reset();
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace vornic
