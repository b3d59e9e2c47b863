#pragma once

#include "Vornic/ports/PermissionRequest.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>

namespace vornic {

/// "Turn on Input Monitoring…" as its page sees it. Main thread.
class PermissionAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// A list of { heading, text }: to be read before agreeing.
    Q_PROPERTY(QVariantList points READ points NOTIFY changed)
    /// "asking", "waiting" for the system's own question, "declined", "failed", "granted", or
    /// "takenBack".
    Q_PROPERTY(QString state READ state NOTIFY changed)
    /// What came of the last answer, in a sentence; empty where there is nothing to add.
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// Whether there is anything to turn on or off here.
    Q_PROPERTY(bool offered READ offered NOTIFY changed)
    Q_PROPERTY(bool possible READ possible NOTIFY changed)
    /// Whether the agreement is in force.
    Q_PROPERTY(bool granted READ granted NOTIFY changed)

  public:
    explicit PermissionAdapter(QObject* parent = nullptr) : QObject(parent) {}

    /// What asks the system; it outlives this. `needed`: keys cannot be heard without. Where it is
    /// not, all that is offered is to take an earlier agreement back.
    void offer(PermissionRequest& request, bool needed);

    /// Told after every answer, so that what follows from it is looked at at once.
    std::function<void()> onAnswer = [] {};

    /// Tells the page to read everything anew.
    void refresh() { Q_EMIT changed(); }

    QVariantList points() const;
    QString state() const;
    QString message() const;
    bool offered() const { return request_ != nullptr && (needed_ || granted()); }
    bool possible() const { return request_ != nullptr && request_->possible(); }
    bool granted() const { return request_ != nullptr && request_->granted(); }

    Q_INVOKABLE void agree();
    Q_INVOKABLE void takeBack();
    /// Back to the explanation, when the page is opened anew.
    void begin();

  Q_SIGNALS:
    void changed();

  private:
    enum class Step : std::uint8_t { explaining, waiting, declined, failed, done };

    PermissionRequest::Done answered();

    PermissionRequest* request_ = nullptr;
    bool needed_ = false;
    Step step_ = Step::explaining;
    bool takingBack_ = false; // what `step_` is about
    QString message_;
};

} // namespace vornic
