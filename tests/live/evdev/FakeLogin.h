#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <semaphore>

namespace vornic {

/// The login manager with one session, and polkit, on the session's bus: what the key reader asks.
/// They have a thread of their own, since the reader waits for their answers.
class FakeLogin final : public QThread {
  public:
    FakeLogin();
    ~FakeLogin() override;

    /// What they answer; `tell` says that it has become another.
    std::atomic<unsigned> user;
    std::atomic<bool> active{true};
    std::atomic<bool> locked{false};
    std::atomic<bool> allowed{true};
    /// How many of the next questions to polkit get no answer.
    std::atomic<int> mute{0};
    /// How often polkit was asked about the process with this number.
    std::atomic<unsigned> asked{0};
    std::atomic<unsigned> askedAbout{0};

    void tellSession();
    /// The login manager ends, and starts again.
    void leave();
    void comeBack();
    void tellPolicy();

  protected:
    void run() override;

  private:
    class Object;

    QDBusConnection bus_;
    std::binary_semaphore ready_{0};
};

} // namespace vornic
