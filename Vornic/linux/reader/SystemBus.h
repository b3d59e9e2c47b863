#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <utility>

struct sd_bus;

namespace vornic {

/// What the login manager and polkit say of a client. Both are asked and waited for, two seconds at
/// most; who gives no answer has said no. Thread: main.
class SystemBus {
  public:
    /// Throws where there is no system bus.
    SystemBus();
    ~SystemBus();
    SystemBus(const SystemBus&) = delete;
    SystemBus& operator=(const SystemBus&) = delete;

    /// Readable when something was said.
    int fileDescriptor() const;

    /// Takes in what was said; true when the questions below should be asked again. Throws when the
    /// bus is gone.
    bool process();

    /// Whether one of the questions below got no answer in time since this was asked last: whoever
    /// is slow to start will have one later.
    bool missedAnswer() { return std::exchange(missed_, false); }

    /// The seat where the user's session is the active one and its screen is not locked; empty
    /// where there is none.
    std::string seatOf(uid_t user);

    /// Whether the process, which is this user's, may hear keys without being asked anything.
    bool allows(pid_t process, uid_t user);

  private:
    struct Close {
        void operator()(sd_bus* bus) const;
    };
    bool answers(const char* session, const char* property, bool wanted);
    bool good(int result);

    std::unique_ptr<sd_bus, Close> bus_;
    bool changed_ = false;
    bool missed_ = false;
};

} // namespace vornic
