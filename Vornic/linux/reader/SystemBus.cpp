#include "Vornic/linux/reader/SystemBus.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace {

constexpr const char* loginManager = "org.freedesktop.login1";
constexpr const char* action = "org.vornic.Vornic.hear-keys";
constexpr std::uint64_t longestMicros = 2'000'000;

struct Unref {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, Unref>;

void require(int result, const char* what) {
    if (result < 0) {
        throw std::runtime_error(what);
    }
}

int note(sd_bus_message* /*signal*/, void* changed, sd_bus_error* /*error*/) {
    *static_cast<bool*>(changed) = true;
    return 0;
}

} // namespace

void SystemBus::Close::operator()(sd_bus* bus) const {
    sd_bus_flush_close_unref(bus);
}

SystemBus::SystemBus() {
    sd_bus* bus = nullptr;
    require(sd_bus_open_system(&bus), "there is no system bus");
    bus_.reset(bus);
    require(sd_bus_set_method_call_timeout(bus, longestMicros), "the system bus waits too long");
    for (const char* const news :
         {"type='signal',sender='org.freedesktop.login1',"
          "path_namespace='/org/freedesktop/login1'",
          "type='signal',sender='org.freedesktop.PolicyKit1',member='Changed'",
          // Who has gone allows nothing any more, and cannot say so.
          "type='signal',member='NameOwnerChanged',arg0='org.freedesktop.login1'",
          "type='signal',member='NameOwnerChanged',arg0='org.freedesktop.PolicyKit1'"}) {
        require(sd_bus_add_match(bus, nullptr, news, note, &changed_), "no news from the bus");
    }
}

SystemBus::~SystemBus() = default;

int SystemBus::fileDescriptor() const {
    return sd_bus_get_fd(bus_.get());
}

bool SystemBus::process() {
    int more = 0;
    do {
        more = sd_bus_process(bus_.get(), nullptr);
        require(more, "the system bus is gone");
    } while (more > 0);
    return std::exchange(changed_, false);
}

bool SystemBus::good(int result) {
    missed_ = missed_ || result == -ETIMEDOUT;
    return result >= 0;
}

bool SystemBus::answers(const char* session, const char* property, bool wanted) {
    int value = 0;
    return good(sd_bus_get_property_trivial(bus_.get(), loginManager, session,
                                            "org.freedesktop.login1.Session", property, nullptr,
                                            'b', &value)) &&
           (value != 0) == wanted;
}

std::string SystemBus::seatOf(uid_t user) {
    sd_bus_message* answer = nullptr;
    const int got = sd_bus_call_method(bus_.get(), loginManager, "/org/freedesktop/login1",
                                       "org.freedesktop.login1.Manager", "ListSessions", nullptr,
                                       &answer, nullptr);
    const Message sessions(answer);
    if (!good(got) || sd_bus_message_enter_container(answer, 'a', "(susso)") < 0) {
        return {};
    }
    const char* id = nullptr;
    const char* name = nullptr;
    const char* seat = nullptr;
    const char* path = nullptr;
    std::uint32_t owner = 0;
    while (sd_bus_message_read(answer, "(susso)", &id, &owner, &name, &seat, &path) > 0) {
        if (owner == user && *seat != '\0' && answers(path, "Active", true) &&
            answers(path, "LockedHint", false)) {
            return seat;
        }
    }
    return {};
}

bool SystemBus::allows(pid_t process, uid_t user) {
    sd_bus_message* answer = nullptr;
    // Polkit itself looks when the process began. Nobody is asked for a password: no flags.
    const int got = sd_bus_call_method(
        bus_.get(), "org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
        "org.freedesktop.PolicyKit1.Authority", "CheckAuthorization", nullptr, &answer,
        "(sa{sv})sa{ss}us", "unix-process", 3, "pid", "u", static_cast<std::uint32_t>(process),
        "start-time", "t", std::uint64_t{0}, "uid", "i", static_cast<std::int32_t>(user), action, 0,
        std::uint32_t{0}, "");
    const Message result(answer);
    int authorised = 0;
    int challenge = 0;
    return good(got) && sd_bus_message_enter_container(answer, 'r', "bba{ss}") >= 0 &&
           sd_bus_message_read(answer, "bb", &authorised, &challenge) >= 0 && authorised != 0;
}

} // namespace vornic
