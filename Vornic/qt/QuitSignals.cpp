#include "Vornic/qt/QuitSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace vornic {

namespace {

sigset_t quitSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    return signals;
}

} // namespace

void QuitSignals::block() {
    const sigset_t signals = quitSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

QuitSignals::QuitSignals(std::function<void()> quit) {
    block();
    const sigset_t signals = quitSignals();
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
