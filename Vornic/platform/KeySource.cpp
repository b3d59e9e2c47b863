#include "Vornic/platform/KeySource.h"

namespace vornic {

KeySource chooseKeySource(const SessionEnvironment& session) {
    if (!session.waylandDisplay.empty() || session.sessionType == "wayland") {
        return {KeySourceKind::none, "Vornic cannot hear the keys of a Wayland session yet: log in "
                                     "to an X11 session to use it."};
    }
    if (session.x11Display.empty()) {
        return {KeySourceKind::none, "There is no display to hear keys from: start Vornic inside "
                                     "an X11 session."};
    }
    return {KeySourceKind::x11, {}};
}

} // namespace vornic
