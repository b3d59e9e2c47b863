#include "Vornic/views/adapters/PermissionAdapter.h"

#include <QPointer>
#include <QVariantMap>

namespace vornic {

void PermissionAdapter::offer(PermissionRequest& request, bool needed) {
    request_ = &request;
    needed_ = needed;
    Q_EMIT changed();
}

void PermissionAdapter::begin() {
    if (step_ != Step::waiting) {
        step_ = Step::explaining;
        message_.clear();
    }
    Q_EMIT changed();
}

QVariantList PermissionAdapter::points() const {
    QVariantList list;
    if (request_ != nullptr) {
        for (const PermissionRequest::Point& point : request_->explanation()) {
            list.append(QVariantMap{{"heading", QString::fromStdString(point.heading)},
                                    {"text", QString::fromStdString(point.text)}});
        }
    }
    return list;
}

QString PermissionAdapter::state() const {
    switch (step_) {
    case Step::waiting:
        return "waiting";
    case Step::declined:
        return "declined";
    case Step::failed:
        return "failed";
    case Step::done:
        return takingBack_ ? "takenBack" : "granted";
    case Step::explaining:
        break;
    }
    return granted() ? "granted" : "asking";
}

QString PermissionAdapter::message() const {
    if (step_ == Step::explaining && !possible() && !granted()) {
        return tr("Install Vornic's package first: it brings what this needs.");
    }
    return message_;
}

void PermissionAdapter::agree() {
    if (request_ != nullptr) {
        takingBack_ = false;
        step_ = Step::waiting;
        Q_EMIT changed();
        request_->request(answered());
    }
}

void PermissionAdapter::takeBack() {
    if (request_ != nullptr) {
        takingBack_ = true;
        step_ = Step::waiting;
        Q_EMIT changed();
        request_->revoke(answered());
    }
}

PermissionRequest::Done PermissionAdapter::answered() {
    return [self = QPointer(this)](PermissionAnswer answer, const std::string& message) {
        if (!self) {
            return;
        }
        self->step_ = answer == PermissionAnswer::granted    ? Step::done
                      : answer == PermissionAnswer::declined ? Step::declined
                                                             : Step::failed;
        self->message_ = QString::fromStdString(message);
        Q_EMIT self->changed();
        self->onAnswer();
    };
}

} // namespace vornic
