#include "Vornic/typing/KeySource.h"

#include <cstdlib>

namespace vornic {

namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

} // namespace

SessionEnvironment sessionEnvironment() {
    return {.x11Display = variable("DISPLAY"),
            .waylandDisplay = variable("WAYLAND_DISPLAY"),
            .sessionType = variable("XDG_SESSION_TYPE")};
}

KeySource chooseKeySource(const SessionEnvironment& session) {
    if (!session.waylandDisplay.empty() || session.sessionType == "wayland") {
        return {.kind = KeySourceKind::evdev, .problem = {}};
    }
    if (session.x11Display.empty()) {
        return {.kind = KeySourceKind::none,
                .problem = "There is no display to hear keys from: start Vornic inside "
                           "a graphical session."};
    }
    return {.kind = KeySourceKind::x11, .problem = {}};
}

} // namespace vornic
