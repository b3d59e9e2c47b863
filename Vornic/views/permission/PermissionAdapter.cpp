#include "Vornic/views/permission/PermissionAdapter.h"

#include "Vornic/views/shared/QmlText.h"

#include <QPointer>
#include <QVariantMap>

namespace vornic {

void PermissionAdapter::offer(PermissionRequest& request, bool needed) {
    request_ = &request;
    needed_ = needed;
    QVariantList points;
    for (const PermissionRequest::Point& point : request.explanation()) {
        points.append(QVariantMap{{"heading", qmlText(point.heading)},
                                  {"text", qmlText(point.text, Lines::kept)}});
    }
    points_ = points;
    refresh();
}

void PermissionAdapter::begin() {
    if (step_ != State::Waiting) {
        step_ = State::Asking;
        answer_.clear();
    }
    refresh();
}

void PermissionAdapter::refresh() {
    granted_ = isGranted();
    possible_ = request_ != nullptr && request_->possible();
    offered_ = request_ != nullptr && (needed_ || granted_);
    canAsk_ = request_ != nullptr && needed_;
    message_ = step_ == State::Asking && !possible_ && !granted_
                   ? tr("Install Vornic's package first: it brings what this needs.")
                   : answer_;
    state_ = step_ == State::Asking && granted_ ? State::Granted : step_;
}

void PermissionAdapter::agree() {
    if (request_ != nullptr) {
        takingBack_ = false;
        step_ = State::Waiting;
        refresh();
        request_->request(answered());
    }
}

void PermissionAdapter::takeBack() {
    if (request_ != nullptr) {
        takingBack_ = true;
        step_ = State::Waiting;
        refresh();
        request_->revoke(answered());
    }
}

PermissionRequest::Done PermissionAdapter::answered() {
    return [self = QPointer(this)](PermissionAnswer answer, const std::string& message) {
        if (!self) {
            return;
        }
        const State done = self->takingBack_ ? State::TakenBack : State::Granted;
        self->step_ = answer == PermissionAnswer::granted    ? done
                      : answer == PermissionAnswer::declined ? State::Declined
                                                             : State::Failed;
        self->answer_ = qmlText(message, Lines::kept);
        self->refresh();
        self->onAnswer();
    };
}

} // namespace vornic
