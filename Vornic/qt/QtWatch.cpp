#include "Vornic/qt/QtWatch.h"

namespace vornic {

QtWatch::QtWatch(EventSource& source) : source_(source) {
    deliver();
}

void QtWatch::deliver() {
    source_.dispatch();
    const int descriptor = source_.fileDescriptor();
    if (notifier_ && notifier_->socket() == descriptor) {
        return;
    }
    if (notifier_) {
        // It is telling of an event just now.
        notifier_->setEnabled(false);
        notifier_.release()->deleteLater();
    }
    if (descriptor >= 0) {
        notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { deliver(); });
    }
}

} // namespace vornic
