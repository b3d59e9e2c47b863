#pragma once

#include "Vornic/ports/PermissionRequest.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <functional>

namespace vornic {

/// "Turn on Input Monitoring…" as its page sees it. Thread: main.
class PermissionAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Entries { heading, text }: to be read before agreeing.
    Q_PROPERTY(QVariantList points READ points NOTIFY pointsChanged)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    /// What came of the last answer, in a sentence; empty where there is nothing to add.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    /// Whether there is anything to turn on or off here.
    Q_PROPERTY(bool offered READ offered NOTIFY offeredChanged)
    Q_PROPERTY(bool possible READ possible NOTIFY possibleChanged)
    /// Whether the agreement is in force.
    Q_PROPERTY(bool granted READ granted NOTIFY grantedChanged)
    /// Whether keys cannot be heard without, and it can be asked for.
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY canAskChanged)
    /// What to do about keys that cannot be heard, in a sentence.
    Q_PROPERTY(QString hint READ hint WRITE setHint NOTIFY hintChanged)

  public:
    /// Where the question stands; waiting is for the system's own question.
    enum class State : std::uint8_t { Asking, Waiting, Declined, Failed, Granted, TakenBack };
    Q_ENUM(State)

    explicit PermissionAdapter(QObject* parent = nullptr) : QObject(parent) {}

    /// What asks the system; it outlives this. `needed`: keys cannot be heard without. Where it is
    /// not, all that is offered is to take an earlier agreement back.
    void offer(PermissionRequest& request, bool needed);

    /// Told after every answer, so that what follows from it is looked at at once.
    std::function<void()> onAnswer = [] {};

    /// What "Relaunch" does.
    std::function<void()> onRelaunch = [] {};

    /// Reads what has changed since the last time.
    void refresh();

    QVariantList points() const { return points_; }
    State state() const { return state_; }
    QString message() const { return message_; }
    bool offered() const { return offered_; }
    bool possible() const { return possible_; }
    bool granted() const { return granted_; }
    bool canAsk() const { return canAsk_; }
    QString hint() const { return hint_; }
    void setHint(const QString& hint) { hint_ = hint; }

    Q_INVOKABLE void agree();
    Q_INVOKABLE void takeBack();
    Q_INVOKABLE void relaunch() { onRelaunch(); }
    /// Back to the explanation, when the page is opened anew.
    void begin();

  Q_SIGNALS:
    void pointsChanged();
    void stateChanged();
    void messageChanged();
    void offeredChanged();
    void possibleChanged();
    void grantedChanged();
    void canAskChanged();
    void hintChanged();

  private:
    PermissionRequest::Done answered();
    bool isGranted() const { return request_ != nullptr && request_->granted(); }

    PermissionRequest* request_ = nullptr;
    bool needed_ = false;
    State step_ = State::Asking;
    bool takingBack_ = false; // what `step_` is about
    QString answer_;
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, QVariantList, points_,
                               &PermissionAdapter::pointsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, QString, message_,
                               &PermissionAdapter::messageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, bool, offered_,
                               &PermissionAdapter::offeredChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, bool, possible_,
                               &PermissionAdapter::possibleChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, bool, granted_,
                               &PermissionAdapter::grantedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, bool, canAsk_, &PermissionAdapter::canAskChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PermissionAdapter, QString, hint_, &PermissionAdapter::hintChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(PermissionAdapter, State, state_, State::Asking,
                                         &PermissionAdapter::stateChanged)
};

} // namespace vornic
