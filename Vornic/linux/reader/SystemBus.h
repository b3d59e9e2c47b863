#pragma once

#include <sys/types.h>

#include <memory>
#include <string>

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

    /// The seat where the user's session is the active one and its screen is not locked; empty
    /// where there is none.
    std::string seatOf(uid_t user) const;

    /// Whether the process, which is this user's, may hear keys without being asked anything.
    bool allows(pid_t process, uid_t user) const;

  private:
    struct Close {
        void operator()(sd_bus* bus) const;
    };
    bool answers(const char* session, const char* property, bool wanted) const;

    std::unique_ptr<sd_bus, Close> bus_;
    bool changed_ = false;
};

} // namespace vornic
